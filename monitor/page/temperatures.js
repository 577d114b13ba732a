// The temperatures in their groups.

const kFullBar = 110, kLeastDegrees = 10;  // degrees Celsius

class TemperatureGroup {
  #section = cloned("group-template");
  #list = new SensorList(part(this.#section, "ul"));
  #tile;
  #trend = new Trend();

  /** @param {string} name */
  constructor(name) {
    const id = `group-${name.toLowerCase().replaceAll(" ", "-")}`;
    this.#section.id = id;
    this.#section.setAttribute("aria-labelledby", `${id}-heading`);
    part(this.#section, "h2").id = `${id}-heading`;
    setText(part(this.#section, ".name"), name);
    this.#tile = new Tile(name, id);
    element("temperatures", HTMLElement).append(this.#section);
  }

  /** @param {Temperature[]} members @param {number} now */
  remember(members, now) {
    const most = hottest(members);
    if (most !== null) this.#trend.add(now, most);
    this.#trend.forgetBefore(now);
  }

  forget() {
    this.#trend = new Trend();
  }

  /**
   * @param {Temperature[]} members
   * @param {Sensor[]} shown  those that the filter lets through
   * @param {View} view
   */
  show(members, shown, view) {
    const most = hottest(members);
    const value = most === null ? "–" : temperatureText(most, view.unit);
    const heat = most === null ? "" : heatOf(most);
    this.#tile.root.hidden = !members.length;
    this.#tile.show(value, heat, this.#trend, view, kLeastDegrees);
    this.#section.hidden = !shown.length;
    const beside = part(this.#section, ".beside");
    beside.setAttribute("data-heat", heat);
    setText(part(beside, ".label"), heat ? `${heat}, hottest` : "hottest");
    setText(part(beside, ".value"), value);
    this.#list.show(shown, view);
  }
}

class TemperaturePanel {
  #groups = new Map(kGroups.map((name) => [name, new TemperatureGroup(name)]));
  #trends = new Trends();
  #ordering = new Ordering();

  /** @param {Readings} readings @param {number} now */
  remember({ temperatures }, now) {
    for (const { id, read, celsius } of temperatures) {
      if (read) this.#trends.of(id).add(now, celsius);
    }
    this.#trends.forgetBefore(now);
    for (const [name, group] of this.#groups) group.remember(membersOf(name, temperatures), now);
  }

  forget() {
    this.#trends = new Trends();
    for (const group of this.#groups.values()) group.forget();
  }

  /**
   * Returns how many it shows.
   * @param {Readings} readings @param {View} view @param {string} order
   */
  show({ temperatures }, view, order) {
    element("no-temperatures", HTMLElement).hidden = temperatures.length > 0;
    setText(element("heat-legend", HTMLElement), heatLegend(view.unit));
    const ordered = this.#ordering.ordered(temperatures, order, view.now);
    let count = 0;
    for (const [name, group] of this.#groups) {
      const members = membersOf(name, ordered);
      const shown = members.filter((one) => matches(view.filter, one.name, name));
      group.show(members, shown.map((one) => this.#sensor(one, view)), view);
      count += shown.length;
    }
    return count;
  }

  /** @param {Temperature} temperature @param {View} view @returns {Sensor} */
  #sensor({ id, name, short, read, celsius }, view) {
    const inWords = (/** @type {number} */ degrees) => temperatureText(degrees, view.unit);
    return {
      id, name, short, read,
      value: inWords(celsius), heat: heatOf(celsius), level: celsius / kFullBar,
      trend: this.#trends.of(id), leastSpan: kLeastDegrees, inWords,
    };
  }
}

/** @param {string} group @param {Temperature[]} temperatures */
function membersOf(group, temperatures) {
  return temperatures.filter((temperature) => groupOf(temperature) === group);
}

/** @param {string} filter @param {string[]} texts */
function matches(filter, ...texts) {
  return texts.join(" ").toLowerCase().includes(filter);
}
