// The page as the monitor itself serves it. MONITOR names the program; without it, MONITOR_URL is the
// address of a monitor that runs already and is left running.
import assert from "node:assert/strict";
import { after, before, test } from "node:test";
import { Tab, launched } from "./browser.mjs";
import { graveFaults } from "./grave_faults.mjs";
import { page, policy } from "./page.mjs";
import { Program } from "./program.mjs";

const { MONITOR, MONITOR_URL } = process.env;
if (!MONITOR && !MONITOR_URL) throw new Error("set MONITOR to a program, or MONITOR_URL to an address");

const program = MONITOR ? new Program(MONITOR) : null;
let browser, tab, url;
before(async () => {
  await program?.start();
  url = program?.url ?? MONITOR_URL;
  browser = await launched();
  tab = await Tab.opened(browser, url);
});
after(async () => {
  await browser?.close();
  await program?.stop();
});

test("ThePageIsTheOneInTheTree", async () => {
  const response = await fetch(url);
  assert.equal(response.headers.get("content-security-policy"), policy);
  assert.match(response.headers.get("content-type"), /^text\/html; *charset=utf-8$/i);
  assert.equal(await response.text(), page);
});

test("ThePageShowsTheReadings", async () => {
  await tab.until(async () => {
    const { pass, temperatures, fans } = await (await fetch("/readings")).json();
    if (!document.getElementById("state-detail").innerText.startsWith(`pass ${pass},`)) return false;
    const wanted = [
      ...temperatures.map(({ name, celsius }) => `${name} ${celsius} °C`),
      ...fans.map(({ name, rpm }) => `${name} ${rpm || "stopped"}${rpm ? " rpm" : ""}`),
    ];
    const shown = Array.from(document.querySelectorAll(".sensor"), (row) =>
      `${row.querySelector(".text").textContent} ${row.querySelector(".value").textContent}`);
    return wanted.length > 0 && wanted.sort().join("\n") === shown.sort().join("\n");
  });
});

test("ThePageFollowsThePasses", async () => {
  const passes = await tab.passes();
  await tab.until((before) => globalThis.passes > before + 2, passes);
  assert.equal(await tab.text("#state"), "Live");
});

test("ThePolicyHoldsAndAxeFindsNoGraveFault", async () => {
  assert.deepEqual(await graveFaults(tab), []);
  assert.deepEqual(await tab.takeFaults(), []);
});

if (program) {
  test("ThePageSurvivesARestart", async () => {
    assert.equal(await program.stop(), 0);
    await tab.untilText("#state", "Connection lost, trying again");
    await program.start();
    await tab.untilText("#state", "Live");
  });
}
