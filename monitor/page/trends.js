// What the readings were in the last minutes.

const kTrendKept = 5 * 60_000;  // milliseconds
// More points than this allows would share a pixel of a small chart.
const kTrendStep = 2500;

class Trend {
  /** @type {{from: number, to: number, lowest: number, highest: number}[]} */
  points = [];

  /** @param {number} time in milliseconds @param {number} value */
  add(time, value) {
    let last = this.points.at(-1);
    if (last && time < last.to) {  // The clock was set back.
      this.points = [];
      last = undefined;
    }
    if (last && time - last.from < kTrendStep) {
      last.to = time;
      last.lowest = Math.min(last.lowest, value);
      last.highest = Math.max(last.highest, value);
    } else {
      this.points.push({ from: time, to: time, lowest: value, highest: value });
    }
  }

  /** @param {number} now */
  forgetBefore(now) {
    const kept = this.points.findIndex((point) => point.to >= now - kTrendKept);
    this.points.splice(0, kept < 0 ? this.points.length : kept);
  }

  get lowest() {
    return Math.min(...this.points.map((point) => point.lowest));
  }

  get highest() {
    return Math.max(...this.points.map((point) => point.highest));
  }
}

/** Trends by the sensors' ids. */
class Trends {
  /** @type {Map<string, Trend>} */
  #byId = new Map();

  /** @param {string} id */
  of(id) {
    let trend = this.#byId.get(id);
    if (!trend) this.#byId.set(id, (trend = new Trend()));
    return trend;
  }

  /** @param {number} now */
  forgetBefore(now) {
    for (const [id, trend] of this.#byId) {
      trend.forgetBefore(now);
      if (!trend.points.length) this.#byId.delete(id);
    }
  }
}
