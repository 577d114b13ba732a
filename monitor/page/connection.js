// The stream of passes, and whether it flows.

const kRetryAfter = 1000, kSilenceEndsAfter = 30_000;  // milliseconds
const kMissedPasses = 3;  // that many intervals without a pass, and the passes have stopped

class Connection {
  /** @type {Readings | null} */
  readings = null;
  /** When the newest pass came, by this page's clock. */
  arrived = 0;
  #isOpen = false;
  #wasOpen = false;
  #heard = 0;
  /** @type {EventSource | undefined} */
  #source;

  /**
   * @param {() => void} passed  called for each new pass
   * @param {() => void} changed  called when the connection opens or ends
   */
  constructor(passed, changed) {
    this.passed = passed;
    this.changed = changed;
    this.#connect();
  }

  /** The longest silence between two passes that is not remarkable, in milliseconds. */
  get patience() {
    return kMissedPasses * Math.max(this.readings?.interval ?? 1, 1) * 1000;
  }

  /** @returns {"connecting" | "lost" | "stopped" | "early" | "live"} */
  get state() {
    if (!this.#isOpen) return this.#wasOpen ? "lost" : "connecting";
    if (!this.readings) return "connecting";
    if (Date.now() - this.arrived > this.patience) return "stopped";
    return this.readings.exception === null ? "live" : "early";
  }

  /** To be called now and then: a connection that is silent for long may be dead. */
  check() {
    const silence = Date.now() - this.#heard;
    if (this.#isOpen && silence > Math.max(this.patience, kSilenceEndsAfter)) this.#connect();
  }

  #connect() {
    this.#source?.close();
    const source = new EventSource("/readings");
    this.#source = source;
    this.#heard = Date.now();
    source.onopen = () => {
      this.#isOpen = this.#wasOpen = true;
      this.changed();
    };
    source.onmessage = (event) => this.#receive(JSON.parse(event.data));
    source.onerror = () => {
      source.close();
      this.#isOpen = false;
      this.changed();
      setTimeout(() => this.#connect(), kRetryAfter);
    };
  }

  /** @param {Readings} readings */
  #receive(readings) {
    this.#heard = Date.now();
    // A connection begins with the last pass, which may be known here.
    const known = this.readings;
    if (known && known.pass === readings.pass && known.time === readings.time) return;
    this.readings = readings;
    this.arrived = this.#heard;
    this.passed();
  }
}
