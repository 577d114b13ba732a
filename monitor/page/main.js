// The page: draws each pass, and watches that passes come.

const kLookEvery = 500;  // milliseconds

const temperatures = new TemperaturePanel();
const fans = new FanPanel();
const disks = new DiskPanel();
const choices = new Choices(draw);
const connection = new Connection(receive, showWhetherLive);
let machine = "";
let isDrawingDue = false;

function receive() {
  const { readings, arrived } = connection;
  if (!readings) return;
  if (readings.machine !== machine) {
    for (const panel of [temperatures, fans, disks]) panel.forget();
    machine = readings.machine;
  }
  for (const panel of [temperatures, fans, disks]) panel.remember(readings, arrived);
  showWhetherLive();
  drawSoon();
}

// Passes may come faster than the screen changes, and none is drawn in a hidden tab.
function drawSoon() {
  if (isDrawingDue) return;
  isDrawingDue = true;
  requestAnimationFrame(() => {
    isDrawingDue = false;
    draw();
  });
}

function draw() {
  const { readings, arrived, patience } = connection;
  if (!readings) return;
  const { filter, order, unit } = choices;
  const view = { now: arrived, gap: patience, unit, filter };
  showComputer(readings);
  const shown = temperatures.show(readings, view, order) + fans.show(readings, view);
  disks.show(readings, view);
  showCount(shown, readings.temperatures.length + readings.fans.length, filter);
  element("main", HTMLElement).hidden = false;
  showWhetherLive();
}

/** @param {number} shown @param {number} all @param {string} filter */
function showCount(shown, all, filter) {
  const count = filter ? `${shown} of ${all}` : counted(all, "sensor");
  setText(element("filter-count", HTMLElement), count);
  const nothingFound = element("nothing-found", HTMLElement);
  nothingFound.hidden = !filter || shown > 0;
  setText(nothingFound, `No sensor here is called “${filter}”.`);
}

function showWhetherLive() {
  showState(connection);
  showTitle(connection, choices.unit);
}

setInterval(() => {
  connection.check();
  showWhetherLive();
}, kLookEvery);
