// Readings as words. The terminal's report uses the same words.

/** @param {number} celsius @param {string} unit */
function temperatureText(celsius, unit) {
  return unit === "fahrenheit" ? `${Math.round(celsius * 1.8 + 32)} °F` : `${celsius} °C`;
}

/** @param {number} rpm */
function fanText(rpm) {
  return rpm === 0 ? "stopped" : `${rpm} rpm`;
}

/** "12 KB", "1.5 MB", "2.32 TB": a thousand bytes are a KB. @param {number} bytes */
function bytesText(bytes) {
  const units = ["KB", "MB", "GB", "TB", "PB"];
  const digits = [0, 1, 2, 2, 2];
  let amount = bytes / 1000;
  let step = 0;
  while (step + 1 < units.length && Number(amount.toFixed(digits[step])) >= 1000) {
    amount /= 1000;
    ++step;
  }
  return `${Number(amount.toFixed(digits[step]))} ${units[step]}`;
}

/** Up to a thousand bytes a second are none. @param {number} rate */
function rateText(rate) {
  return rate <= 1000 ? "0 KB/s" : `${bytesText(rate)}/s`;
}

/** @param {number} count @param {string} noun */
function counted(count, noun) {
  return `${count} ${noun}${count === 1 ? "" : "s"}`;
}

/** "8 s", "5 min", "3 h". @param {number} milliseconds */
function ageText(milliseconds) {
  const seconds = Math.floor(milliseconds / 1000);
  if (seconds < 120) return `${seconds} s`;
  const minutes = Math.floor(seconds / 60);
  return minutes < 120 ? `${minutes} min` : `${Math.floor(minutes / 60)} h`;
}

const kWarm = 80, kHot = 95;  // degrees Celsius

/** @param {number} celsius */
function heatOf(celsius) {
  if (celsius >= kHot) return "hot";
  return celsius >= kWarm ? "warm" : "";
}

/** @param {string} unit */
function heatLegend(unit) {
  const [warm, hot] = [kWarm, kHot].map((celsius) => temperatureText(celsius, unit));
  return `▲ warm, from ${warm}; ▲▲ hot, from ${hot}`;
}
