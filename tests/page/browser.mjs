// A headless Chromium, and pages in it.
import puppeteer from "puppeteer-core";

const kPatience = 30_000;  // milliseconds

/** The caller closes it. */
export function launched() {
  return puppeteer.launch({
    executablePath: process.env.CHROMIUM ?? "/usr/bin/chromium",
    args: [
      "--no-sandbox",  // Containers run their commands as root, which Chromium's sandbox refuses.
      "--disable-dev-shm-usage",
      "--disable-gpu",
      "--host-resolver-rules=MAP * ~NOTFOUND, EXCLUDE 127.0.0.1",
    ],
  });
}

/** Runs in the page before its script: time passes only in `advance`, which fires the timers. */
function holdTime() {
  let now = 1_700_000_000_000;
  let timers = [];
  const add = (callback, delay = 0, every = 0) => {
    const timer = { at: now + delay, callback, every };
    timers.push(timer);
    return timer;
  };
  Date.now = () => now;
  globalThis.setTimeout = (callback, delay) => add(callback, delay);
  globalThis.setInterval = (callback, delay) => add(callback, delay, delay);
  globalThis.clearTimeout = globalThis.clearInterval = (timer) => {
    timers = timers.filter((other) => other !== timer);
  };
  globalThis.advance = (milliseconds) => {
    const end = now + milliseconds;
    for (;;) {
      const [next] = timers.filter(({ at }) => at <= end).sort((a, b) => a.at - b.at);
      if (!next) break;
      now = next.at;
      if (next.every) next.at += next.every;
      else clearTimeout(next);
      next.callback();
    }
    now = end;
  };
}

/** Runs in the page before its script. */
function countPasses() {
  globalThis.passes = 0;
  globalThis.EventSource = class extends EventSource {
    constructor(url) {
      super(url);
      this.addEventListener("message", () => { globalThis.passes += 1; });
    }
  };
}

/** Runs in the page before its script. */
function rememberViolations() {
  globalThis.violations = [];
  addEventListener("securitypolicyviolation", (event) => {
    globalThis.violations.push(`${event.violatedDirective} ${event.blockedURI} ${event.sample}`);
  });
}

/** A page of its own: what it stores, no other page sees. */
export class Tab {
  #browser;
  #context;
  #origin;
  /** Errors of the script, and requests to elsewhere. */
  #faults = [];
  page;

  /** With `heldTime`, time passes only in `advance`. `prepare` runs before the page's script. */
  static async opened(browser, url, options = {}) {
    const { width = 1280, height = 900, theme = "dark", heldTime = false, prepare } = options;
    const tab = new Tab();
    tab.#browser = browser;
    tab.#origin = new URL(url).origin;
    tab.#context = await browser.createBrowserContext();
    const page = await tab.#context.newPage();
    tab.page = page;
    page.on("pageerror", (error) => tab.#faults.push(String(error)));
    page.on("request", (request) => tab.#look(request));
    await page.setViewport({ width, height });
    await page.emulateMediaFeatures([{ name: "prefers-color-scheme", value: theme }]);
    await page.evaluateOnNewDocument(rememberViolations);
    await page.evaluateOnNewDocument(countPasses);
    if (heldTime) await page.evaluateOnNewDocument(holdTime);
    if (prepare) await page.evaluateOnNewDocument(prepare);
    await page.goto(url, { waitUntil: "domcontentloaded" });
    await tab.until(() => !document.getElementById("main").hidden);
    return tab;
  }

  /** All that was wrong with the page since this was last asked. */
  async takeFaults() {
    const violations = await this.page.evaluate(() => globalThis.violations.splice(0));
    return [...this.#faults.splice(0), ...violations];
  }

  close() {
    return this.#context.close();
  }

  /** The same page a second time. */
  another() {
    return Tab.opened(this.#browser, this.page.url());
  }

  /** Waits until the function, which runs in the page, returns true. */
  async until(condition, ...values) {
    try {
      await this.page.waitForFunction(condition, { timeout: kPatience }, ...values);
    } catch (error) {
      const instead = await this.text("body");
      throw new Error(`never came true: ${condition} ${values}\n${instead}`, { cause: error });
    }
  }

  /** Waits until the element has the text. */
  untilText(selector, text) {
    return this.until((where, wanted) => document.querySelector(where)?.innerText === wanted,
      selector, text);
  }

  /** How many passes the page has got, those that it knew before among them. */
  passes() {
    return this.page.evaluate(() => globalThis.passes);
  }

  /** Lets second after second pass until the page has got this many passes. */
  async advanceUntilPasses(wanted) {
    const end = performance.now() + kPatience;
    while (await this.passes() < wanted) {
      if (performance.now() > end) throw new Error(`the page never got ${wanted} passes`);
      await this.advance(1000);
    }
  }

  advance(milliseconds) {
    return this.page.evaluate((time) => globalThis.advance(time), milliseconds);
  }

  text(selector) {
    return this.page.$eval(selector, (found) => found.innerText);
  }

  /** The texts of those that are to be seen. */
  texts(selector) {
    return this.page.$$eval(selector, (found) =>
      found.filter((one) => one.checkVisibility()).map((one) => one.innerText));
  }

  /** The sensors that are to be seen in the part of the page, as "name | note | value". */
  rows(selector = "#temperatures") {
    return this.page.$$eval(`${selector} .sensor`, (rows) => rows
      .filter((row) => row.checkVisibility())
      .map((row) => [".text", ".note", ".value"]
        .map((name) => row.querySelector(name).textContent).filter(Boolean).join(" | ")));
  }

  #look(request) {
    const url = new URL(request.url());
    if (url.origin !== this.#origin && url.protocol !== "data:") {
      this.#faults.push(`request to ${url}`);
    }
  }
}
