// What the server sends, once a pass.

/**
 * @typedef {object} Temperature
 * @property {string} id  no other temperature has it
 * @property {string} name  others may have the same
 * @property {string} group
 * @property {number} celsius  a whole number
 * @property {boolean} short  the machine's short list has it
 * @property {boolean} read  false if the sensor no longer reports, and its figure is running down
 *
 * @typedef {object} Fan
 * @property {string} id
 * @property {string} name
 * @property {number} rpm
 * @property {boolean} read
 *
 * @typedef {object} DiskTraffic
 * @property {number} rate  bytes a second
 * @property {number} total  bytes
 * @property {number[]} history  rates, oldest first; -1 if there is none yet
 *
 * @typedef {object} Readings
 * @property {string} machine
 * @property {boolean} simulated
 * @property {string} processor
 * @property {number} cores
 * @property {string} host
 * @property {string} uptime
 * @property {string} memoryUsed
 * @property {string} memoryTotal
 * @property {number} pass  0 is the first, which has no rates
 * @property {string} time
 * @property {number} interval  seconds
 * @property {number} cost  seconds
 * @property {string | null} exception  why the pass ended early
 * @property {Temperature[]} temperatures
 * @property {Fan[]} fans
 * @property {{read: DiskTraffic, write: DiskTraffic, scale: number, scaleText: string}} disks
 */

const kGroups = ["CPU", "GPU", "Memory", "Drives", "Power", "Air and board", "Other"];

/** @param {Temperature} temperature */
function groupOf(temperature) {
  return kGroups.includes(temperature.group) ? temperature.group : "Other";
}

/** The hottest of those that are read. @param {Temperature[]} temperatures */
function hottest(temperatures) {
  const read = temperatures.filter((temperature) => temperature.read);
  return read.length ? Math.max(...read.map((temperature) => temperature.celsius)) : null;
}
