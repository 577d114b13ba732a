// Paths of the small charts, in the units of their view boxes.

const kTrendWidth = 300, kTrendHeight = 24;
const kBarWidth = 4, kBarsHeight = 48;

/**
 * The line of a trend that ends at `now`, and the area below it. A silence longer than `gap`
 * interrupts both. The chart spans at least `leastSpan`, so that small changes look small.
 * @param {Trend} trend @param {number} now @param {number} gap @param {number} leastSpan
 */
function trendPaths(trend, now, gap, leastSpan) {
  const { lowest, highest } = trend;
  const span = Math.max(highest - lowest, leastSpan);
  const bottom = (lowest + highest - span) / 2;
  const x = (/** @type {number} */ time) =>
    ((1 - (now - time) / kTrendKept) * kTrendWidth).toFixed(1);
  const y = (/** @type {number} */ value) =>
    ((1 - (value - bottom) / span) * (kTrendHeight - 4) + 2).toFixed(1);
  let line = "", area = "";
  for (const stretch of stretches(trend.points, gap)) {
    const corners = stretch.map((point) => `${x(point.to)} ${y(point.highest)}`).join("L");
    const [from, to] = [x(stretch[0].from), x(stretch[stretch.length - 1].to)];
    const start = `${from} ${y(stretch[0].highest)}`;
    line += `M${start}L${corners}`;
    area += `M${from} ${kTrendHeight}L${start}L${corners}L${to} ${kTrendHeight}Z`;
  }
  return { line, area };
}

/** @param {Trend["points"]} points @param {number} gap */
function stretches(points, gap) {
  /** @type {Trend["points"][]} */
  const found = [];
  points.forEach((point, i) => {
    if (i > 0 && point.from - points[i - 1].to <= gap) found[found.length - 1].push(point);
    else found.push([point]);
  });
  return found;
}

/**
 * A bar for each value. No traffic is a thin line; a value that is not there yet, -1, is nothing.
 * @param {number[]} values @param {number} scale
 */
function barsPath(values, scale) {
  return values.map((value, i) => {
    if (value < 0) return "";
    const share = scale > 0 ? Math.min(value / scale, 1) : 0;
    const height = Math.max(share * (kBarsHeight - 1), 1).toFixed(1);
    return `M${i * kBarWidth} ${kBarsHeight}v-${height}h${kBarWidth - 1}V${kBarsHeight}Z`;
  }).join("");
}
