// The fans.

const kLeastSpeeds = 400;  // revolutions a minute

class FanPanel {
  #list = new SensorList(element("fan-rows", HTMLElement));
  #tile = new Tile("Fans", "fans");
  #trends = new Trends();
  #fastest = new Trend();

  /** @param {Readings} readings @param {number} now */
  remember({ fans }, now) {
    const read = fans.filter((fan) => fan.read);
    for (const { id, rpm } of read) this.#trends.of(id).add(now, rpm);
    if (read.length) this.#fastest.add(now, fastest(read));
    this.#trends.forgetBefore(now);
    this.#fastest.forgetBefore(now);
  }

  forget() {
    this.#trends = new Trends();
    this.#fastest = new Trend();
  }

  /** Returns how many it shows. @param {Readings} readings @param {View} view */
  show({ fans }, view) {
    const shown = fans.filter((fan) => matches(view.filter, fan.name, "fans"));
    const read = fans.filter((fan) => fan.read);
    element("no-fans", HTMLElement).hidden = fans.length > 0;
    element("fans", HTMLElement).hidden = view.filter !== "" && !shown.length;
    this.#list.show(shown.map((fan) => this.#sensor(fan)), view);
    this.#tile.root.hidden = !fans.length;
    const value = read.length ? fanText(fastest(read)) : "–";
    this.#tile.show(value, "", this.#fastest, view, kLeastSpeeds);
    return shown.length;
  }

  /** @param {Fan} fan @returns {Sensor} */
  #sensor({ id, name, read, rpm }) {
    return {
      id, name, short: false, read, value: fanText(rpm), heat: "", level: null,
      trend: this.#trends.of(id), leastSpan: kLeastSpeeds, inWords: fanText,
    };
  }
}

/** @param {Fan[]} fans */
function fastest(fans) {
  return Math.max(...fans.map((fan) => fan.rpm));
}
