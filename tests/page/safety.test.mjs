// What the page asks for, and what its policy lets it do.
import assert from "node:assert/strict";
import { test } from "node:test";
import { readingsOf } from "./computers.mjs";
import { page, policy } from "./page.mjs";
import { pageTest } from "./setup.mjs";

test("ThePageIsSmall", () => {
  assert.ok(Buffer.byteLength(page) < 60_000, `${Buffer.byteLength(page)} bytes`);
});

test("ThePageNamesNoOtherPlace", () => {
  const withoutNamespace = page.replaceAll("http://www.w3.org/2000/svg", "");
  assert.deepEqual(withoutNamespace.match(/\w+:\/\/|@import|\burl\(/g), null);
});

test("ThePolicyLetsOnlyThisPagesScriptAndStyleIn", () => {
  const rules = Object.fromEntries(policy.split("; ").map((rule) => {
    const [name, ...sources] = rule.split(" ");
    return [name, sources.join(" ")];
  }));
  assert.match(rules["script-src"], /^'sha256-[\w+/]{43}='$/);
  assert.match(rules["style-src"], /^'sha256-[\w+/]{43}='$/);
  delete rules["script-src"];
  delete rules["style-src"];
  assert.deepEqual(rules, {
    "default-src": "'none'", "connect-src": "'self'", "img-src": "data:", "base-uri": "'none'",
    "form-action": "'none'", "frame-ancestors": "'none'", "require-trusted-types-for": "'script'",
  });
});

pageTest("OnlyThePageAndTheReadingsAreAskedFor", readingsOf("m3-max"), {}, async (tab, server) => {
  server.pass((readings) => { readings.temperatures[0].celsius = 99; });
  await tab.untilText(".sensor .value", "99 °C");
  assert.deepEqual(server.requests, ["/", "/readings"]);
});

pageTest("TheBrowserRefusesWhatIsNotThePages", readingsOf("m3-max"), {}, async (tab) => {
  await tab.page.evaluate(() => {
    const style = document.createElement("style");
    style.textContent = "* { color: red }";
    document.head.append(style);
    document.body.setAttribute("style", "color: red");
    fetch("http://127.0.0.1:9/").catch(() => {});
  });
  await tab.until(() => globalThis.violations.length === 3);
  const directives = (await tab.takeFaults()).map((fault) => fault.split(" ")[0]);
  assert.deepEqual(directives.sort(), ["connect-src", "style-src-attr", "style-src-elem"]);
});
