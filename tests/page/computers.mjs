// Readings of computers, as the server sends them.
import { readFileSync } from "node:fs";

/** Those of a file in readings/. */
export function readingsOf(name) {
  return JSON.parse(readFileSync(new URL(`readings/${name}.json`, import.meta.url), "utf8"));
}

/** A computer that has nothing but what is given. */
export function computer(given = {}) {
  const idle = { rate: 0, total: 0, history: Array(75).fill(-1) };
  return {
    machine: "Desk", simulated: false, processor: "", cores: 1, host: "", uptime: "",
    memoryUsed: "", memoryTotal: "",
    pass: 1, time: "2026-01-01T00:00:01Z", interval: 1, cost: 0.0012, exception: null,
    temperatures: [], fans: [],
    disks: { read: { ...idle }, write: { ...idle }, scale: 50_000, scaleText: "50 KB/s" },
    ...given,
  };
}

export function temperature(name, celsius, given = {}) {
  return { id: idOf(name), name, group: "CPU", celsius, short: false, read: true, ...given };
}

export function fan(name, rpm, given = {}) {
  return { id: idOf(name), name, rpm, read: true, ...given };
}

function idOf(name) {
  return name.toLowerCase().replaceAll(" ", "-");
}
