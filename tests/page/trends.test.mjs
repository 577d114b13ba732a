// The small charts of the last minutes.
import assert from "node:assert/strict";
import { computer, temperature } from "./computers.mjs";
import { pageTest } from "./setup.mjs";

const oneCore = computer({ temperatures: [temperature("CPU Core 1", 50)] });

/** One pass after the other, each after a time. */
async function passes(tab, server, steps) {
  for (const [milliseconds, celsius, read = true] of steps) {
    await tab.advance(milliseconds);
    server.pass((readings) => Object.assign(readings.temperatures[0], { celsius, read }));
    await tab.until((pass) =>
      document.getElementById("state-detail").innerText.startsWith(`pass ${pass},`),
    server.readings.pass);
    await tab.untilText("#group-cpu li .value", `${celsius} °C`);
  }
}

/** The corners of each stretch of the chart's line. */
async function stretches(tab) {
  const line = await tab.page.$eval(".sensor .line", (path) => path.getAttribute("d"));
  return line.split("M").slice(1).map((stretch) =>
    stretch.split("L").map((corner) => corner.split(" ").map(Number)));
}

pageTest("TheLineEndsAtTheNewestPass", oneCore, { heldTime: true }, async (tab, server) => {
  await passes(tab, server, [[3000, 60], [3000, 70]]);
  // Five minutes are 300 wide. The first point is drawn twice: where it begins, and where it ends.
  assert.deepEqual(await stretches(tab), [[[294, 22], [294, 22], [297, 12], [300, 2]]]);
  assert.equal(await tab.page.$eval(".sensor title", (title) => title.textContent),
    "50 °C to 70 °C in the last five minutes");
});

pageTest("SmallChangesLookSmall", oneCore, { heldTime: true }, async (tab, server) => {
  await passes(tab, server, [[3000, 51]]);
  assert.deepEqual(await stretches(tab), [[[297, 13], [297, 13], [300, 11]]]);
});

pageTest("APeakBetweenTwoPointsIsKept", oneCore, { heldTime: true }, async (tab, server) => {
  await passes(tab, server, [[1000, 70], [1000, 50]]);
  assert.deepEqual(await stretches(tab), [[[298, 2], [300, 2]]]);
});

pageTest("ASilenceIsAGap", oneCore, { heldTime: true }, async (tab, server) => {
  await passes(tab, server, [[3000, 50], [3001, 50], [3000, 50]]);
  const places = (await stretches(tab)).map((stretch) => stretch.map(([x]) => x));
  assert.deepEqual(places, [[291, 291, 294], [297, 297, 300]]);
});

pageTest("ASensorThatIsNoLongerReadHasAGap", oneCore, { heldTime: true }, async (tab, server) => {
  await passes(tab, server, [[3000, 49, false], [3000, 48, false], [3000, 50]]);
  assert.deepEqual((await stretches(tab)).map((stretch) => stretch.length), [2, 2]);
});

pageTest("FiveMinutesAreKept", oneCore, { heldTime: true }, async (tab, server) => {
  await passes(tab, server, [[290_000, 60], [10_000, 61], [1, 62]]);
  assert.deepEqual((await stretches(tab)).map(([[x]]) => x), [290, 300]);
});

pageTest("AnotherComputerStartsAnew", oneCore, { heldTime: true }, async (tab, server) => {
  await passes(tab, server, [[3000, 60]]);
  server.readings.machine = "Another";
  await passes(tab, server, [[3000, 61]]);
  assert.equal(await tab.text("h1"), "Another");
  assert.deepEqual((await stretches(tab)).map((stretch) => stretch.length), [2]);
});

pageTest("AClockThatIsSetBackStartsAnew", oneCore, { heldTime: true }, async (tab, server) => {
  await passes(tab, server, [[3000, 60]]);
  await tab.page.evaluate(() => {
    const { now } = Date;
    Date.now = () => now() - 3_600_000;
  });
  await passes(tab, server, [[3000, 61], [3000, 62]]);
  const places = (await stretches(tab)).map((stretch) => stretch.map(([x]) => x));
  assert.deepEqual(places, [[297, 297, 300]]);
});
