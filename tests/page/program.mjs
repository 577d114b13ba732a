// The monitor as a process.
import { spawn } from "node:child_process";
import { once } from "node:events";
import { createInterface } from "node:readline";

export class Program {
  #file;
  #process;
  url;

  constructor(file) {
    this.#file = file;
  }

  /** Returns when it has printed its address. The address stays the same when it starts again. */
  async start() {
    const listen = this.url ? new URL(this.url).host : "127.0.0.1:0";
    this.#process = spawn(this.#file, ["--machine", "M3 Max", "--interval", "0.2", "--listen", listen]);
    this.url = await this.#printedUrl();
  }

  /** Returns its exit status. */
  async stop() {
    const ended = once(this.#process, "exit");
    this.#process.kill("SIGTERM");
    const [status] = await ended;
    return status;
  }

  #printedUrl() {
    return new Promise((resolve, reject) => {
      const lines = [];
      for (const stream of [this.#process.stdout, this.#process.stderr]) {
        createInterface(stream).on("line", (line) => {
          lines.push(line);
          const url = line.match(/http:\/\/127\.0\.0\.1:\d+\/?/);
          if (url) resolve(new URL(url[0]).href);
        });
      }
      this.#process.once("error", reject);
      this.#process.once("close", (status) => {
        reject(new Error([`ended with ${status} before it printed an address`, ...lines].join("\n")));
      });
    });
  }
}
