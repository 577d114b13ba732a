// The order of temperatures.

// Rows that followed the heat at each pass would be hard to read.
const kRanksKept = 10_000;  // milliseconds

class Ordering {
  /** The heat by which the sensors are ordered. @type {Map<string, number>} */
  #ranks = new Map();
  #ranked = -Infinity;

  /** @param {Temperature[]} temperatures @param {string} order @param {number} now */
  ordered(temperatures, order, now) {
    if (order !== "heat") this.#ranked = -Infinity;
    if (order === "name") return temperatures.toSorted((a, b) => byName(a.name, b.name));
    if (order === "heat") return this.#byHeat(temperatures, now);
    return temperatures.toSorted((a, b) => Number(b.short) - Number(a.short));
  }

  /** @param {Temperature[]} temperatures @param {number} now */
  #byHeat(temperatures, now) {
    const isOld = Math.abs(now - this.#ranked) >= kRanksKept;
    if (isOld || !temperatures.every(({ id }) => this.#ranks.has(id))) {
      this.#ranks = new Map(temperatures.map(({ id, read, celsius }) =>
        [id, read ? celsius : -Infinity]));
      this.#ranked = now;
    }
    const rank = (/** @type {Temperature} */ { id }) => this.#ranks.get(id) ?? -Infinity;
    return temperatures.toSorted((a, b) => (rank(a) === rank(b) ? 0 : rank(b) - rank(a)));
  }
}

const byName = new Intl.Collator("en", { numeric: true }).compare;
