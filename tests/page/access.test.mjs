// Whether everybody can read the page.
import assert from "node:assert/strict";
import { computer, fan, readingsOf, temperature } from "./computers.mjs";
import { graveFaults } from "./grave_faults.mjs";
import { pageTest } from "./setup.mjs";

async function checkInBothThemesAndWidths(tab) {
  for (const theme of ["light theme", "dark theme"]) {
    await tab.page.select("[name=theme]", theme.split(" ")[0]);
    for (const width of [1280, 320]) {
      await tab.page.setViewport({ width, height: 800 });
      assert.deepEqual(await graveFaults(tab), [], `${theme}, ${width} wide`);
    }
  }
}

const everything = readingsOf("m3-max");
everything.temperatures[0].celsius = 84;
everything.temperatures[2].celsius = 97;
everything.temperatures[4].read = false;
everything.fans[0].read = false;

pageTest("NoGraveFaultWithWarmHotAndFailedSensors", everything, {}, async (tab) => {
  await checkInBothThemesAndWidths(tab);
});

pageTest("NoGraveFaultOnAnEmptyComputer", computer(), {}, async (tab) => {
  await checkInBothThemesAndWidths(tab);
});

pageTest("NoGraveFaultWhileTheConnectionIsLost", everything, {}, async (tab, server) => {
  await server.stop();
  await tab.untilText("#state", "Connection lost, trying again");
  await checkInBothThemesAndWidths(tab);
});

const endedEarly = { ...everything, exception: "no counters" };

pageTest("NoGraveFaultWithAPassThatEndedEarly", endedEarly, {}, async (tab) => {
  await checkInBothThemesAndWidths(tab);
});

pageTest("NothingIsWiderThanATelephone", everything, { width: 320 }, async (tab, server) => {
  server.pass((readings) => {
    readings.host = "a-host-without-any-space-in-its-long-name.example.org";
    readings.temperatures[1].name = "Averylongnamewithoutanyspacethatnobodywouldgivetoasensor";
    readings.exception = "a reason that takes more than one line of a telephone to be told";
    Object.assign(readings.fans[0], { rpm: 12_345, read: true });
    readings.disks.read.rate = 999_900_000;
    readings.disks.write.rate = 0;
  });
  await tab.untilText("#fan-rows .value", "12345 rpm");
  const cut = await tab.page.$$eval(".tile", (tiles) =>
    tiles.filter((tile) => tile.scrollWidth > tile.clientWidth).map((tile) => tile.innerText));
  assert.deepEqual(cut, []);
  assert.equal(await tab.page.evaluate(() => document.documentElement.scrollWidth), 320);
  const wider = await tab.page.$$eval("main *:not(svg *, .unseen, .note, option)", (all) => all
    .filter((one) => one.checkVisibility() && one.getBoundingClientRect().right > 320)
    .map((one) => one.outerHTML));
  assert.deepEqual(wider, []);
});

const calm = computer({
  uptime: "9 min",
  temperatures: [temperature("CPU Core 1", 9), temperature("CPU Core 2", 50)],
  fans: [fan("Left", 0)],
});

for (const width of [1280, 320]) {
  pageTest(`NothingMovesWhenValuesChange${width}Wide`, calm, { width }, nothingMoves);
}

async function nothingMoves(tab, server) {
  const places = () => tab.page.$$eval(
    "header, #state-bar, .tile, .choices > *, .group, .sensor, .sensor .trend, .bars",
    (all) => all.filter((one) => one.checkVisibility()).map((one) => {
      const { x, y, width, height } = one.getBoundingClientRect();
      return [one.id || one.classList[0] || one.tagName, x, y, width, height].join(" ");
    }));
  const before = await places();
  assert.ok(before.length > 20);
  server.pass((readings) => {
    readings.pass = 1_000_000;
    readings.uptime = "10 d 23 h";
    readings.temperatures[0].celsius = 119;
    readings.temperatures[1].read = false;
    readings.fans[0].rpm = 12_345;
    readings.disks.read.rate = 999_900_000;
    readings.disks.read.total = 999_990_000_000_000;
  });
  await tab.untilText("#fan-rows .value", "12345 rpm");
  assert.deepEqual(await places(), before);
}

pageTest("ReducedMotionIsHonoured", calm, {}, async (tab) => {
  const times = () => tab.page.$$eval("*", (all) =>
    [...new Set(all.map((one) => getComputedStyle(one).transitionDuration))]);
  assert.notDeepEqual(await times(), ["0s"]);
  await tab.page.emulateMediaFeatures([{ name: "prefers-reduced-motion", value: "reduce" }]);
  assert.deepEqual(await times(), ["0s"]);
});

pageTest("ChartsHaveAnAccount", everything, {}, async (tab) => {
  const names = await tab.page.$$eval("svg[role=img]", (charts) =>
    charts.map((chart) => chart.querySelector("title").textContent));
  assert.equal(names.length, everything.temperatures.length + everything.fans.length + 2);
  assert.ok(names.includes("67 °C to 67 °C in the last five minutes"));
  assert.ok(names.includes("nothing in the last five minutes"));
  assert.ok(names.includes("Read: up to 5.3 MB/s in the last passes"));
});
