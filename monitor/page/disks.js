// The disks' traffic. Its history comes with each pass.

const kLeastRates = 100_000;  // bytes a second

class DiskChart {
  #root = cloned("disk-template");
  #name;

  /** @param {string} name */
  constructor(name) {
    this.#name = name;
    setText(part(this.#root, ".name"), name);
    element("disks", HTMLElement).append(this.#root);
  }

  /** @param {DiskTraffic} traffic @param {Readings} readings */
  show(traffic, { pass, disks }) {
    const rate = pass > 0 ? rateText(traffic.rate) : "–";
    setText(part(this.#root, ".rate"), rate);
    setText(part(this.#root, ".total"), `${bytesText(traffic.total)} in all`);
    part(this.#root, "path").setAttribute("d", barsPath(traffic.history, disks.scale));
    const most = Math.max(...traffic.history, 0);
    setText(part(this.#root, "title"), `${this.#name}: up to ${rateText(most)} in the last passes`);
  }
}

class DiskPanel {
  #tile = new Tile("Disks", "disks");
  #read = new DiskChart("Read");
  #write = new DiskChart("Write");
  #trend = new Trend();

  /** @param {Readings} readings @param {number} now */
  remember({ pass, disks }, now) {
    if (pass > 0) this.#trend.add(now, disks.read.rate + disks.write.rate);
    this.#trend.forgetBefore(now);
  }

  forget() {
    this.#trend = new Trend();
  }

  /** @param {Readings} readings @param {View} view */
  show(readings, view) {
    const { pass, disks: { read, write, scaleText } } = readings;
    const rate = pass > 0 ? rateText(read.rate + write.rate) : "–";
    this.#tile.show(rate, "", this.#trend, view, kLeastRates);
    setText(element("disk-scale", HTMLElement), scaleText ? `charts up to ${scaleText}` : "");
    this.#read.show(read, readings);
    this.#write.show(write, readings);
  }
}
