#!/usr/bin/env node
// serve [--listen ADDRESS:PORT] [--interval SECONDS]: the page with readings that change, for work on
// the page. Other options of the monitor are passed over. It reads the page's files once.
import { readingsOf } from "./computers.mjs";
import { StandIn } from "./stand_in.mjs";
import { waves } from "./waves.mjs";

function option(name, otherwise) {
  const place = process.argv.indexOf(name);
  return place < 0 ? otherwise : process.argv[place + 1];
}

const readings = readingsOf("m3-max");
const [, port] = option("--listen", "127.0.0.1:0").split(":");
readings.interval = Number(option("--interval", "1"));
const change = waves(readings);
const server = await StandIn.started(readings, Number(port));
console.log(`listening on ${server.url}`);
setInterval(() => server.pass(change), readings.interval * 1000);
process.on("SIGTERM", async () => {
  await server.stop();
  process.exit(0);
});
