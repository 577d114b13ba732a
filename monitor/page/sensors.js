// Rows of sensors.

/**
 * How a pass is drawn.
 * @typedef {object} View
 * @property {number} now  when the newest pass came, in milliseconds
 * @property {number} gap  a silence that charts show, in milliseconds
 * @property {string} unit
 * @property {string} filter
 *
 * What a row shows.
 * @typedef {object} Sensor
 * @property {string} id
 * @property {string} name
 * @property {boolean} short
 * @property {boolean} read
 * @property {string} value
 * @property {string} heat  "", "warm" or "hot"
 * @property {number | null} level  the share of a full bar
 * @property {Trend} trend
 * @property {number} leastSpan  of the trend's chart
 * @property {(value: number) => string} inWords
 */

/** @param {string} template @returns {HTMLElement} */
function cloned(template) {
  const root = element(template, HTMLTemplateElement).content.firstElementChild?.cloneNode(true);
  if (!(root instanceof HTMLElement)) throw new Error(`${template} is empty`);
  return root;
}

/** @param {Element} root @param {string} selector */
function part(root, selector) {
  const found = root.querySelector(selector);
  if (!found) throw new Error(`nothing is ${selector}`);
  return found;
}

/**
 * Setting a text is a change to screen readers and to the layout, even if it is the same text.
 * @param {Element} where @param {string} text
 */
function setText(where, text) {
  if (where.textContent !== text) where.textContent = text;
}

/** Shows the rows in this order, and no others. @param {Element} list @param {Element[]} rows */
function setRows(list, rows) {
  const old = list.children;
  const isSame = old.length === rows.length && rows.every((row, i) => old[i] === row);
  if (!isSame) list.replaceChildren(...rows);
}

/** @param {Element} chart @param {Trend} trend @param {View} view @param {number} leastSpan */
function drawTrend(chart, trend, view, leastSpan) {
  const { line, area } = trendPaths(trend, view.now, view.gap, leastSpan);
  part(chart, ".line").setAttribute("d", line);
  part(chart, ".area").setAttribute("d", area);
}

class SensorRow {
  root = cloned("sensor-template");
  #name = part(this.root, ".text");
  #short = part(this.root, ".short");
  #note = part(this.root, ".note");
  #value = part(this.root, ".value");
  #chart = part(this.root, ".trend");
  #chartTitle = part(this.root, "title");
  #level = part(this.root, ".level");

  /** @param {Sensor} sensor @param {View} view */
  show(sensor, view) {
    const { trend, heat, read, level, inWords } = sensor;
    this.root.dataset.heat = read ? heat : "";
    this.root.classList.toggle("unread", !read);
    this.#short.toggleAttribute("hidden", !sensor.short);
    setText(this.#name, sensor.name);
    setText(this.#note, read ? heat : "no longer read");
    setText(this.#value, sensor.value);
    this.#level.toggleAttribute("hidden", level === null);
    const bar = this.#level.firstElementChild;
    const share = Math.min(Math.max(level ?? 0, 0), 1);
    if (bar instanceof HTMLElement) bar.style.width = `${share * 100}%`;
    drawTrend(this.#chart, trend, view, sensor.leastSpan);
    setText(this.#chartTitle, trend.points.length
      ? `${inWords(trend.lowest)} to ${inWords(trend.highest)} in the last five minutes`
      : "nothing in the last five minutes");
  }
}

/** A list of sensors, each with a row of its own for as long as it is there. */
class SensorList {
  /** @type {Map<string, SensorRow>} */
  #rows = new Map();

  /** @param {Element} list */
  constructor(list) {
    this.list = list;
  }

  /** @param {Sensor[]} sensors in the order in which they appear @param {View} view */
  show(sensors, view) {
    const ids = new Set(sensors.map((sensor) => sensor.id));
    for (const id of this.#rows.keys()) if (!ids.has(id)) this.#rows.delete(id);
    setRows(this.list, sensors.map((sensor) => {
      const row = this.#rows.get(sensor.id) ?? new SensorRow();
      this.#rows.set(sensor.id, row);
      row.show(sensor, view);
      return row.root;
    }));
  }
}

class Tile {
  root = cloned("tile-template");

  /** @param {string} name @param {string} target the id of what it leads to */
  constructor(name, target) {
    setText(part(this.root, ".name"), name);
    this.root.setAttribute("href", `#${target}`);
    element("overview", HTMLElement).append(this.root);
  }

  /**
   * @param {string} value @param {string} heat
   * @param {Trend} trend @param {View} view @param {number} leastSpan
   */
  show(value, heat, trend, view, leastSpan) {
    setText(part(this.root, ".note"), heat);
    setText(part(this.root, ".value"), value);
    this.root.dataset.heat = heat;
    drawTrend(part(this.root, ".trend"), trend, view, leastSpan);
  }
}
