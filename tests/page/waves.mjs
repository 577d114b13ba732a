// Readings that go up and down.

/** Returns a change for each next pass: every reading swings about what it was, in its own time. */
export function waves(readings) {
  const { temperatures, fans } = structuredClone(readings);
  return (now) => {
    const swing = (i, period) =>
      Math.sin(now.pass / (period + i % 7) + i) + Math.sin(now.pass / (3 + i % 5)) / 4;
    now.temperatures.forEach((temperature, i) => {
      temperature.celsius = temperatures[i].celsius + Math.round(4 * swing(i, 19));
    });
    now.fans.forEach((fan, i) => {
      fan.rpm = fans[i].rpm + Math.round(120 * swing(i, 41));
    });
    for (const [i, traffic] of [now.disks.read, now.disks.write].entries()) {
      traffic.rate = Math.round(Math.max(0, swing(i, 9) + 0.5) * 2_500_000);
      traffic.total += traffic.rate;
      traffic.history = [...traffic.history.slice(1), traffic.rate];
    }
  };
}
