// Writes the pictures of the page that the documents show: five minutes of readings that change.
import { fileURLToPath } from "node:url";
import { Tab, launched } from "./browser.mjs";
import { readingsOf } from "./computers.mjs";
import { StandIn } from "./stand_in.mjs";
import { waves } from "./waves.mjs";

const kPictures = [
  { name: "dark", width: 1120, height: 700, theme: "dark" },
  { name: "light", width: 1120, height: 700, theme: "light" },
  { name: "telephone", width: 360, height: 740, theme: "dark", scale: 1.5 },
];
const kPasses = 166, kSecondsBetween = 2;

/** A processor at work, and a sensor that has failed. */
function busyComputer() {
  const readings = readingsOf("m3-max");
  for (const temperature of readings.temperatures) {
    if (temperature.group === "CPU") temperature.celsius += 18;
    if (temperature.name === "GPU Cluster 4") temperature.celsius += 38;
    if (temperature.name === "M1 SOC Sensor 2") temperature.read = false;
  }
  return readings;
}

async function playFiveMinutes(tab, server) {
  const change = waves(server.readings);
  for (let i = 0; i < kPasses; ++i) {
    await tab.advance(kSecondsBetween * 1000);
    server.pass(change);
    await tab.until((pass) =>
      document.getElementById("state-detail").innerText.startsWith(`pass ${pass},`),
    server.readings.pass);
  }
}

async function takePicture(tab, { name, width, height, theme, scale = 1 }) {
  const path = fileURLToPath(new URL(`../../docs/pictures/page-${name}.png`, import.meta.url));
  await tab.page.setViewport({ width, height, deviceScaleFactor: scale });
  await tab.page.emulateMediaFeatures([
    { name: "prefers-color-scheme", value: theme },
    { name: "prefers-reduced-motion", value: "reduce" },
  ]);
  await tab.page.screenshot({ path });
}

const server = await StandIn.started(busyComputer());
const browser = await launched();
const tab = await Tab.opened(browser, server.url, { heldTime: true });
await playFiveMinutes(tab, server);
for (const picture of kPictures) await takePicture(tab, picture);
await browser.close();
await server.stop();
