// A test that looks at the page in a browser.
import assert from "node:assert/strict";
import { after, before, test } from "node:test";
import { Tab, launched } from "./browser.mjs";
import { StandIn } from "./stand_in.mjs";

let browser;
before(async () => { browser = await launched(); });
after(() => browser?.close());

/**
 * The page shows the readings when `body` begins. Whatever the test is about, it also fails if the
 * page throws, breaks its policy, or asks another server for something.
 */
export function pageTest(name, readings, options, body) {
  test(name, async () => {
    const server = await StandIn.started(structuredClone(readings));
    try {
      const tab = await Tab.opened(browser, server.url, options);
      try {
        await body(tab, server);
        assert.deepEqual(await tab.takeFaults(), []);
      } finally {
        await tab.close();
      }
    } finally {
      await server.stop();
    }
  });
}
