// What axe finds wrong with a page.
import assert from "node:assert/strict";
import axe from "axe-core";

/** The faults of impact serious or critical, and the texts whose contrast cannot be told. */
export async function graveFaults(tab) {
  await tab.page.evaluate(axe.source);
  // A sign is not a text, so its contrast cannot be told.
  const { violations, incomplete, passes } = await tab.page.evaluate(() =>
    globalThis.axe.run({ exclude: ["#state-sign"] }));
  assert.ok(passes.some(({ id }) => id === "color-contrast"));
  const grave = violations.filter(({ impact }) => ["serious", "critical"].includes(impact));
  const unclear = incomplete.filter(({ id }) => id === "color-contrast");
  return [...grave, ...unclear].flatMap(({ id, nodes }) =>
    nodes.map(({ html, any }) => `${id}: ${html} ${any.map(({ message }) => message)}`));
}
