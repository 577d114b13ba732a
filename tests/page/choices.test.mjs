// What the reader chooses.
import assert from "node:assert/strict";
import { computer, fan, temperature } from "./computers.mjs";
import { pageTest } from "./setup.mjs";

const mixed = computer({
  temperatures: [
    temperature("Core 10", 50),
    temperature("Core 2", 55),
    temperature("Core 9", 40, { short: true }),
    temperature("Heatsink", 60, { group: "GPU" }),
  ],
  fans: [fan("Left", 1200)],
});

const choose = (tab, name, value) => tab.page.select(`[name=${name}]`, value);
const ground = (tab) => tab.page.$eval("body", (body) => getComputedStyle(body).backgroundColor);
const kDark = "rgb(13, 18, 21)", kLight = "rgb(241, 243, 242)";

pageTest("TheFilterTakesNamesAndGroups", mixed, {}, async (tab) => {
  assert.equal(await tab.text("#filter-count"), "5 sensors");
  for (const [filter, rows, count] of [
    ["CORE 1", ["Core 10 | 50 °C"], "1 of 5"],
    ["gpu", ["Heatsink | 60 °C"], "1 of 5"],
    [" fans ", ["Left | 1200 rpm"], "1 of 5"],
    ["ea", ["Heatsink | 60 °C"], "1 of 5"],
    ["e", await tab.rows("body"), "5 of 5"],
  ]) {
    await tab.page.$eval("[name=filter]", (input) => { input.value = ""; });
    await tab.page.type("[name=filter]", filter);
    assert.deepEqual(await tab.rows("body"), rows);
    assert.equal(await tab.text("#filter-count"), count);
  }
});

pageTest("AFilterThatFindsNothingSaysSo", mixed, {}, async (tab) => {
  await tab.page.type("[name=filter]", "Zz");
  assert.deepEqual(await tab.texts("#nothing-found"), ["No sensor here is called “zz”."]);
  assert.deepEqual(await tab.texts("h2"), ["Disks\ncharts up to 50 KB/s"]);
  await tab.page.keyboard.press("Enter");  // must not leave the page
  await tab.page.keyboard.press("Escape");
  assert.equal((await tab.rows("body")).length, 5);
  assert.deepEqual(await tab.texts("#nothing-found"), []);
});

pageTest("TheFilterHoldsForTheNextPass", mixed, {}, async (tab, server) => {
  await tab.page.type("[name=filter]", "core 2");
  server.pass((readings) => { readings.temperatures[1].celsius = 56; });
  await tab.untilText(".sensor .value", "56 °C");
  assert.deepEqual(await tab.rows(), ["Core 2 | 56 °C"]);
});

pageTest("TheShortListComesFirstAndIsMarked", mixed, {}, async (tab) => {
  assert.deepEqual(await tab.rows("#group-cpu"),
    ["Core 9 | 40 °C", "Core 10 | 50 °C", "Core 2 | 55 °C"]);
  const marked = await tab.page.$$eval(".sensor:has(.short:not([hidden])) .text", (names) =>
    names.map((name) => name.innerText));
  assert.deepEqual(marked, ["Core 9"]);
});

pageTest("ByNameNumbersAreOrderedAsNumbers", mixed, {}, async (tab) => {
  await choose(tab, "order", "name");
  assert.deepEqual(await tab.rows("#group-cpu"),
    ["Core 2 | 55 °C", "Core 9 | 40 °C", "Core 10 | 50 °C"]);
});

pageTest("TheOrderByHeatHoldsForTenSeconds", mixed, { heldTime: true }, async (tab, server) => {
  await choose(tab, "order", "heat");
  assert.deepEqual(await tab.rows("#group-cpu"),
    ["Core 2 | 55 °C", "Core 10 | 50 °C", "Core 9 | 40 °C"]);
  await tab.advance(9000);
  server.pass((readings) => { readings.temperatures[2].celsius = 70; });
  await tab.untilText("#group-cpu li:last-child .value", "70 °C");
  await tab.advance(1000);
  server.pass();
  await tab.untilText("#group-cpu li:first-child .value", "70 °C");
  assert.deepEqual(await tab.rows("#group-cpu"),
    ["Core 9 | 70 °C", "Core 2 | 55 °C", "Core 10 | 50 °C"]);
});

pageTest("ANewSensorIsOrderedByHeatAtOnce", mixed, { heldTime: true }, async (tab, server) => {
  await choose(tab, "order", "heat");
  server.pass((readings) => readings.temperatures.push(temperature("Core 11", 52)));
  await tab.until(() => document.querySelectorAll("#group-cpu li").length === 4);
  assert.equal((await tab.rows("#group-cpu"))[1], "Core 11 | 52 °C");
});

pageTest("FahrenheitIsShownEverywhere", mixed, {}, async (tab, server) => {
  await tab.page.click("[value=fahrenheit]");
  assert.equal((await tab.rows("#group-gpu"))[0], "Heatsink | 140 °F");
  server.pass((readings) => { readings.temperatures[3].celsius = 63; });
  await tab.untilText("#group-gpu .beside .value", "145 °F");
  assert.equal(await tab.page.title(), "145 °F · Desk");
  assert.equal(await tab.page.$eval("#group-gpu title", (title) => title.textContent),
    "140 °F to 145 °F in the last five minutes");
  assert.equal(await tab.text("#heat-legend"), "▲ warm, from 176 °F; ▲▲ hot, from 203 °F");
  assert.doesNotMatch(await tab.text("#temperatures"), /°C/);
});

pageTest("TheKeyboardReachesEverything", mixed, {}, async (tab) => {
  const reached = [];
  for (let i = 0; i < 9; ++i) {
    await tab.page.keyboard.press("Tab");
    reached.push(await tab.page.evaluate(() => {
      const { name, hash, value } = document.activeElement;
      return name ? `${name} ${value}`.trim() : hash;
    }));
  }
  assert.deepEqual(reached, ["#main", "#group-cpu", "#group-gpu", "#fans", "#disks", "filter",
    "order listed", "unit celsius", "theme system"]);
  await tab.page.keyboard.down("Shift");
  await tab.page.keyboard.press("Tab");
  await tab.page.keyboard.up("Shift");
  await tab.page.keyboard.press("ArrowRight");
  assert.equal((await tab.rows("#group-gpu"))[0], "Heatsink | 140 °F");
});

pageTest("TheThemeFollowsTheSystem", mixed, { theme: "light" }, async (tab) => {
  assert.equal(await ground(tab), kLight);
  await tab.page.emulateMediaFeatures([{ name: "prefers-color-scheme", value: "dark" }]);
  assert.equal(await ground(tab), kDark);
});

pageTest("AChosenThemeIsNotTheSystems", mixed, { theme: "light" }, async (tab) => {
  await choose(tab, "theme", "dark");
  assert.equal(await ground(tab), kDark);
  await choose(tab, "theme", "light");
  await tab.page.emulateMediaFeatures([{ name: "prefers-color-scheme", value: "dark" }]);
  assert.equal(await ground(tab), kLight);
});

pageTest("ChoicesAreRememberedButNotTheFilter", mixed, {}, async (tab) => {
  await tab.page.type("[name=filter]", "heat");
  await tab.page.click("[value=fahrenheit]");
  await choose(tab, "theme", "light");
  await choose(tab, "order", "name");
  await tab.page.reload();
  await tab.until(() => !document.getElementById("main").hidden);
  assert.deepEqual(await tab.rows("#group-cpu"),
    ["Core 2 | 131 °F", "Core 9 | 104 °F", "Core 10 | 122 °F"]);
  assert.equal(await ground(tab), kLight);
});

const refuseStorage = () => Object.defineProperty(globalThis, "localStorage", {
  get() { throw new DOMException("refused", "SecurityError"); },
});

pageTest("ChoicesWorkWithoutStorage", mixed, { prepare: refuseStorage }, async (tab) => {
  await tab.page.click("[value=fahrenheit]");
  assert.equal((await tab.rows("#group-gpu"))[0], "Heatsink | 140 °F");
});

const rememberNonsense = () => {
  localStorage.setItem("halvermonte.unit", "kelvin");
  localStorage.setItem("halvermonte.order", "\"]");
};

pageTest("NonsenseInTheStorageIsPassedOver", mixed, { prepare: rememberNonsense }, async (tab) => {
  assert.equal((await tab.rows("#group-gpu"))[0], "Heatsink | 60 °C");
});
