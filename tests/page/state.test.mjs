// Whether the page says that the readings are live.
import assert from "node:assert/strict";
import { computer, temperature } from "./computers.mjs";
import { pageTest } from "./setup.mjs";

const oneCore = computer({ temperatures: [temperature("CPU Core 1", 50)] });
const slow = { ...oneCore, interval: 5 };
const withoutInterval = { ...oneCore, interval: 0 };
const held = { heldTime: true };

pageTest("PassesThatComeAreLive", oneCore, held, async (tab, server) => {
  assert.equal(await tab.text("#state"), "Live");
  assert.equal(await tab.text("#state-detail"), "pass 1, every 1 s, took 1.2 ms");
  for (let i = 0; i < 3; ++i) {
    await tab.advance(2500);
    server.pass();
    await tab.untilText("#state-detail", `pass ${server.readings.pass}, every 1 s, took 1.2 ms`);
    assert.equal(await tab.text("#state"), "Live");
  }
});

pageTest("PassesHaveStoppedAfterThreeIntervals", slow, held, async (tab, server) => {
  await tab.advance(15_000);
  assert.equal(await tab.text("#state"), "Live");
  await tab.advance(500);
  assert.equal(await tab.text("#state"), "Passes have stopped");
  assert.equal(await tab.text("#state-detail"), "last values 15 s ago");
  assert.equal(await tab.page.title(), "Passes stopped · Desk");
  await tab.advance(120_000);
  assert.equal(await tab.text("#state-detail"), "last values 2 min ago");
  server.pass();
  await tab.untilText("#state", "Live");
  assert.equal(await tab.page.title(), "50 °C · Desk");
});

pageTest("PassesWithoutAnIntervalHaveThreeSeconds", withoutInterval, held, async (tab) => {
  await tab.advance(3000);
  assert.equal(await tab.text("#state"), "Live");
  await tab.advance(500);
  assert.equal(await tab.text("#state"), "Passes have stopped");
});

pageTest("ALostConnectionIsSaidAtOnceAndComesBack", oneCore, held, async (tab, server) => {
  await server.stop();
  await tab.untilText("#state", "Connection lost, trying again");
  assert.equal(await tab.page.title(), "Connection lost · Desk");
  assert.deepEqual(await tab.rows(), ["CPU Core 1 | 50 °C"]);
  await tab.advance(1000);  // an attempt that finds no server
  await server.start();
  server.readings = { ...server.readings, pass: 0, time: "2026-01-02T00:00:00Z" };
  server.readings.temperatures[0].celsius = 51;
  // The attempt may still be under way, and the next one a second after it.
  await tab.advanceUntilPasses(2);
  await tab.untilText(".sensor .value", "51 °C");
  assert.equal(await tab.text("#state"), "Live");
  server.pass((readings) => { readings.temperatures[0].celsius = 52; });
  await tab.untilText(".sensor .value", "52 °C");
  assert.equal(await tab.text("#state"), "Live");
});

pageTest("TheSamePassAgainIsNotNew", oneCore, held, async (tab, server) => {
  await tab.advance(4000);
  assert.equal(await tab.text("#state"), "Passes have stopped");
  await server.stop();
  await tab.untilText("#state", "Connection lost, trying again");
  await server.start();
  await tab.advanceUntilPasses(2);
  assert.equal(await tab.text("#state"), "Passes have stopped");
  assert.equal(await tab.page.title(), "Passes stopped · Desk");
});

pageTest("AConnectionThatIsSilentForLongIsMadeAnew", oneCore, held, async (tab, server) => {
  await tab.advance(30_000);
  assert.deepEqual(server.requests, ["/", "/readings"]);
  await tab.advance(500);
  await tab.until(() => globalThis.passes === 2);
  assert.deepEqual(server.requests, ["/", "/readings", "/readings"]);
});

pageTest("WhyAPassEndedEarlyIsShown", oneCore, held, async (tab, server) => {
  server.pass((readings) => { readings.exception = "no <counters>"; });
  await tab.untilText("#state", "The pass ended early: no <counters>");
  assert.deepEqual(await tab.rows(), ["CPU Core 1 | 50 °C"]);
  server.pass((readings) => { readings.exception = null; });
  await tab.untilText("#state", "Live");
});

pageTest("OnlyTheStateIsReadAloud", oneCore, held, async (tab, server) => {
  await tab.page.evaluate(() => {
    globalThis.changes = 0;
    const observer = new MutationObserver((records) => { globalThis.changes += records.length; });
    observer.observe(document.getElementById("state"),
      { childList: true, characterData: true, subtree: true });
  });
  await tab.advance(1000);
  server.pass((readings) => { readings.temperatures[0].celsius = 51; });
  await tab.untilText(".sensor .value", "51 °C");
  assert.equal(await tab.page.evaluate(() => globalThis.changes), 0);
  const live = await tab.page.$$eval("[aria-live], [role=status], [role=alert], [role=log], output",
    (found) => found.map(({ id }) => id));
  assert.deepEqual(live, ["state"]);
});

pageTest("TwoPagesAreServed", oneCore, {}, async (tab, server) => {
  const other = await tab.another();
  server.pass((readings) => { readings.temperatures[0].celsius = 51; });
  for (const one of [tab, other]) await one.untilText(".sensor .value", "51 °C");
  await other.close();
});
