// A server in the place of the monitor's. A test decides when a pass comes, and when it goes.
import { createServer } from "node:http";
import { page, policy } from "./page.mjs";

export class StandIn {
  #port = 0;
  #server;
  #streams = new Set();
  readings;
  /** What was asked for, in order. */
  requests = [];

  static async started(readings, port = 0) {
    const standIn = new StandIn();
    standIn.#port = port;
    standIn.readings = readings;
    await standIn.start();
    return standIn;
  }

  get url() {
    return `http://127.0.0.1:${this.#port}/`;
  }

  /** On the port that it had before, if it ran before. */
  async start() {
    this.#server = createServer((request, response) => this.#respond(request, response));
    await new Promise((resolve, reject) => {
      this.#server.once("error", reject).listen(this.#port, "127.0.0.1", resolve);
    });
    this.#port = this.#server.address().port;
  }

  /** Ends all connections. */
  async stop() {
    const closed = new Promise((resolve) => this.#server.close(resolve));
    this.#server.closeAllConnections();
    this.#streams.clear();
    await closed;
  }

  /** The next pass, which differs from the one before by what `change` does to it. */
  pass(change = () => {}) {
    this.readings.pass += 1;
    this.readings.time = new Date(Date.parse(this.readings.time) + 1000).toISOString();
    change(this.readings);
    for (const stream of this.#streams) this.#send(stream);
  }

  #send(stream) {
    stream.write(`data: ${JSON.stringify(this.readings)}\n\n`);
  }

  #respond(request, response) {
    this.requests.push(request.url);
    if (request.url === "/") {
      response.writeHead(200, {
        "Content-Type": "text/html; charset=utf-8",
        "Content-Security-Policy": policy,
        "X-Content-Type-Options": "nosniff",
      });
      response.end(page);
    } else if (request.url === "/readings" && request.headers.accept === "text/event-stream") {
      response.writeHead(200, { "Content-Type": "text/event-stream", "Cache-Control": "no-store" });
      response.write(": the last pass\n\n");
      this.#streams.add(response);
      response.once("close", () => this.#streams.delete(response));
      this.#send(response);
    } else if (request.url === "/readings") {
      response.writeHead(200, { "Content-Type": "application/json" });
      response.end(JSON.stringify(this.readings));
    } else {
      response.writeHead(404).end();
    }
  }
}
