// What the page shows of a pass.
import assert from "node:assert/strict";
import { computer, fan, readingsOf, temperature } from "./computers.mjs";
import { pageTest } from "./setup.mjs";

pageTest("EachSensorIsShownWithItsNameAndValue", readingsOf("m3-max"), {}, async (tab, server) => {
  const { temperatures, fans } = server.readings;
  const wanted = temperatures.map(({ name, celsius }) => `${name} | ${celsius} °C`);
  assert.deepEqual((await tab.rows()).sort(), wanted.sort());
  assert.deepEqual(await tab.rows("#fans"), fans.map(({ name, rpm }) => `${name} | ${rpm} rpm`));
});

pageTest("TheComputerIsNamed", readingsOf("m3-max"), {}, async (tab) => {
  assert.equal(await tab.text("h1"), "M3 Max");
  assert.deepEqual(await tab.texts("#simulated"), ["simulated"]);
  assert.equal((await tab.text("#facts")).replaceAll("\u00a0", " "),
    "Apple M3 Max · 16 cores · Hazel's Notebook · up 3 d 4 h · memory 12 GB of 36 GB");
  assert.equal(await tab.page.title(), "67 °C · M3 Max");
});

pageTest("WhatIsNotKnownIsLeftOut", computer({ machine: "" }), {}, async (tab) => {
  assert.equal(await tab.text("h1"), "This computer");
  assert.deepEqual(await tab.texts("#simulated"), []);
  assert.equal(await tab.text("#facts"), "");
});

const inTwoGroups = computer({
  temperatures: [
    temperature("Palm Rest", 30, { group: "Air and board" }),
    temperature("CPU Core 1", 61),
    temperature("CPU Core 2", 64),
    temperature("Flux Capacitor", 40, { group: "Time" }),
  ],
});

pageTest("GroupsComeInTheirOrderWithTheHottestInTheHeading", inTwoGroups, {}, async (tab) => {
  const lines = (await tab.texts("#temperatures h2")).map((text) => text.replaceAll(/\s+/g, " "));
  assert.deepEqual(lines, [
    "CPU hottest 64 °C", "Air and board hottest 30 °C", "Other hottest 40 °C",
  ]);
  assert.deepEqual(await tab.texts(".tile .name"), ["CPU", "Air and board", "Other", "Disks"]);
});

pageTest("TheNextPassReplacesTheValues", inTwoGroups, {}, async (tab, server) => {
  server.pass((readings) => {
    readings.temperatures[1].celsius = 71;
    readings.temperatures.pop();
    readings.fans.push(fan("Left", 1200));
  });
  await tab.untilText("#fan-rows .value", "1200 rpm");
  assert.deepEqual(await tab.rows(),
    ["CPU Core 1 | 71 °C", "CPU Core 2 | 64 °C", "Palm Rest | 30 °C"]);
  assert.equal(await tab.page.title(), "71 °C · Desk");
});

const twins = computer({
  temperatures: [temperature("Exhaust", 40, { id: "a" }), temperature("Exhaust", 50, { id: "b" })],
});

pageTest("TwoSensorsOfOneNameAreTwoRows", twins, {}, async (tab, server) => {
  assert.deepEqual(await tab.rows(), ["Exhaust | 40 °C", "Exhaust | 50 °C"]);
  server.pass((readings) => { readings.temperatures[1].celsius = 51; });
  await tab.untilText("#group-cpu li:last-child .value", "51 °C");
  assert.deepEqual(await tab.rows(), ["Exhaust | 40 °C", "Exhaust | 51 °C"]);
});

pageTest("AReadersPlaceSurvivesAPass", twins, {}, async (tab, server) => {
  await tab.page.evaluate(() =>
    getSelection().selectAllChildren(document.querySelector("#group-cpu li:last-child .text")));
  server.pass((readings) => { readings.temperatures[0].celsius = 41; });
  await tab.untilText("#group-cpu li:first-child .value", "41 °C");
  assert.equal(await tab.page.evaluate(() => getSelection().toString()), "Exhaust");
});

const nameLikeMarkup = computer({ temperatures: [temperature("<b onclick=1>&amp; \u202ex", 40)] });

pageTest("ANameIsShownAsItIs", nameLikeMarkup, {}, async (tab) => {
  assert.deepEqual(await tab.rows(), ["<b onclick=1>&amp; \u202ex | 40 °C"]);
});

const withFailed = computer({
  temperatures: [temperature("CPU Core 1", 61), temperature("CPU Core 2", 90, { read: false })],
  fans: [fan("Left", 900, { read: false })],
});

pageTest("ASensorThatIsNoLongerReadSaysSo", withFailed, {}, async (tab) => {
  assert.deepEqual(await tab.rows(),
    ["CPU Core 1 | 61 °C", "CPU Core 2 | no longer read | 90 °C"]);
  assert.deepEqual(await tab.rows("#fans"), ["Left | no longer read | 900 rpm"]);
  // Its figure runs down, so it is not the hottest, and not warm.
  assert.equal(await tab.text("#group-cpu .beside .value"), "61 °C");
  assert.equal(await tab.page.title(), "61 °C · Desk");
});

const warmAndHot = computer({
  temperatures: [
    temperature("Cool", 79), temperature("Warm", 80, { group: "GPU" }), temperature("Below", 94),
    temperature("Hot", 95, { group: "Power" }),
  ],
});

pageTest("WarmAndHotAreWordsToo", warmAndHot, {}, async (tab) => {
  assert.deepEqual(await tab.rows(), [
    "Cool | 79 °C", "Below | warm | 94 °C", "Warm | warm | 80 °C", "Hot | hot | 95 °C",
  ]);
  assert.deepEqual(await tab.texts(".tile .note"), ["warm", "warm", "hot", ""]);
  assert.deepEqual(await tab.texts(".group h2 .label"),
    ["warm, hottest", "warm, hottest", "hot, hottest"]);
});

pageTest("AnEmptyComputerIsAComputer", computer(), {}, async (tab) => {
  assert.match(await tab.text("#temperatures"), /reports no temperatures\. A virtual machine/);
  assert.match(await tab.text("#fans"), /reports no fans/);
  assert.deepEqual(await tab.rows("body"), []);
  assert.equal(await tab.page.title(), "Desk");
  assert.equal(await tab.text("#state"), "Live");
});

const moving = computer({ fans: [fan("Left", 0), fan("Right", 1)] });

pageTest("AFanThatStandsIsStopped", moving, {}, async (tab) => {
  assert.deepEqual(await tab.rows("#fans"), ["Left | stopped", "Right | 1 rpm"]);
});

const busyDisks = computer({
  disks: {
    read: {
      rate: 2_300_000, total: 2_320_000_000_000, history: [...Array(73).fill(-1), 0, 2_500_000],
    },
    write: { rate: 1000, total: 999_600, history: [...Array(74).fill(-1), 9_000_000] },
    scale: 5_000_000,
    scaleText: "5 MB/s",
  },
});

pageTest("DisksHaveRatesTotalsAndCharts", busyDisks, {}, async (tab) => {
  assert.deepEqual(await tab.texts(".disk .rate"), ["2.3 MB/s", "0 KB/s"]);
  assert.deepEqual(await tab.texts(".disk .total"), ["2.32 TB in all", "1 MB in all"]);
  assert.equal(await tab.text("#disk-scale"), "charts up to 5 MB/s");
  // Nothing for what is not there yet, a thin line for no traffic, no bar above the chart.
  const bars = await tab.page.$$eval(".disk path", (paths) =>
    paths.map((path) => path.getAttribute("d")));
  assert.deepEqual(bars, ["M292 48v-1.0h3V48ZM296 48v-23.5h3V48Z", "M296 48v-47.0h3V48Z"]);
});

pageTest("TheFirstPassHasNoRates", computer({ pass: 0 }), {}, async (tab) => {
  assert.deepEqual(await tab.texts(".disk .rate"), ["–", "–"]);
});
