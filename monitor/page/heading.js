// Which computer this is, and whether its passes come.

const kSigns = { connecting: "○", live: "●", early: "▲", stopped: "▲", lost: "▲" };

/** @param {Readings} readings */
function showComputer(readings) {
  setText(element("machine", HTMLElement), readings.machine || "This computer");
  element("simulated", HTMLElement).hidden = !readings.simulated;
  setText(element("facts", HTMLElement), facts(readings).filter(Boolean).join(" · "));
}

/** @param {Readings} readings */
function facts({ machine, processor, cores, host, uptime, memoryUsed, memoryTotal }) {
  return [
    processor === machine ? "" : processor,
    cores > 1 ? counted(cores, "core") : "",  // 1 also stands for an unknown number.
    host,
    uptime && `up ${unbroken(uptime)}`,
    memoryTotal && `memory ${unbroken(memoryUsed)} of ${unbroken(memoryTotal)}`,
  ];
}

/** @param {string} text */
function unbroken(text) {
  return text.replaceAll(" ", "\u00a0");
}

/** @param {Connection} connection */
function showState({ state, readings, arrived }) {
  element("state-bar", HTMLElement).dataset.state = state;
  setText(element("state-sign", HTMLElement), kSigns[state]);
  // The status is read aloud when it changes, so what changes with each pass stands beside it.
  setText(element("state", HTMLElement), stateText(state, readings));
  const isOld = state === "lost" || state === "stopped";
  document.documentElement.classList.toggle("old", isOld);
  setText(element("state-detail", HTMLElement),
    readings ? (isOld ? oldText(arrived) : passText(readings)) : "");
}

/** @param {Connection["state"]} state @param {Readings | null} readings */
function stateText(state, readings) {
  switch (state) {
    case "connecting": return "Connecting";
    case "live": return "Live";
    case "early": return `The pass ended early: ${readings?.exception}`;
    case "stopped": return "Passes have stopped";
    case "lost": return "Connection lost, trying again";
  }
}

/** @param {number} arrived */
function oldText(arrived) {
  return `last values ${ageText(Date.now() - arrived)} ago`;
}

/** @param {Readings} readings */
function passText({ pass, interval, cost }) {
  return `pass ${pass}, every ${interval} s, took ${(cost * 1000).toFixed(1)} ms`;
}

/** @param {Connection} connection @param {string} unit */
function showTitle({ state, readings }, unit) {
  const machine = readings?.machine || "Halvermonte monitor";
  const most = readings && hottest(readings.temperatures);
  let first = most === null ? "" : temperatureText(most, unit);
  if (state === "lost") first = "Connection lost";
  if (state === "stopped") first = "Passes stopped";
  document.title = first ? `${first} · ${machine}` : machine;
}
