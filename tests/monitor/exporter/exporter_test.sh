#!/bin/bash
# The built monitor as an exporter, from outside.
# Usage: exporter_test.sh MONITOR

monitor=$(realpath "$1")
root=$(cd "$(dirname "$0")/../../.." && pwd)
page=$root/docs/metrics.md
# shellcheck source=tests/monitor/exporter/outside.sh
. "$(dirname "$0")/outside.sh"

get() { curl -sS --max-time 30 "$url$1"; }
serves() { get metrics >page.out && grep -q "$1" page.out; }

# Standard output stays empty, and standard error has the one line.
start 0 --machine M1 --interval 0.05
grep -qx 'listening on http://127\.0\.0\.1:[1-9][0-9]*/' err || fail "it says: $(cat err)"
await serves '^halvermonte_passes_total [1-9][0-9]' # passes go on
get record | jq -e '.record | length == 103' >jq.out || fail "not a record: $(get record | head -c 200)"
get readings | jq -e '.machine == "M1" and .simulated and (.temperatures | length > 5)' >jq.out ||
  fail "not readings: $(get readings | head -c 200)"
[ "$(get health)" = ok ] || fail "not healthy: $(get health)"
get '' >page.out
grep -qi '^<!doctype html>' page.out || fail "no page"
stop
[ -s out ] && fail "standard output: $(head -c 200 out)"
[ "$(wc -l <err)" = 1 ] || fail "standard error: $(cat err)"

# Whoever starts it finds the address in the first line, also if there are no sensors.
mkdir empty
start 0 --sys empty --proc empty
[ "$(wc -l <err)" = 1 ] || fail "standard error without sensors: $(cat err)"
stop

# Beyond loopback it warns.
start 0.0.0.0:0 --machine M1
grep -q '^halvermonte-monitor: warning: whoever reaches the port can read ' err || fail "it says: $(cat err)"
[ "$(wc -l <err)" = 2 ] || fail "it says: $(cat err)"
stop

# A port that is taken
start 0 --machine M1
port=${url##*:}
timeout 60 "$monitor" --machine M1 --listen "${port%/}" >out2 2>err2
status=$?
[ $status = 1 ] || fail "a port that is taken: exit status $status"
[ "$(wc -l <err2)" = 1 ] || fail "a port that is taken: $(cat err2)"
grep -q '^halvermonte-monitor: --listen: .*in use' err2 || fail "a port that is taken: $(cat err2)"
stop

# Every machine's metrics are well-formed.
"$monitor" --machine list | sed 's/   *.*//' >machines
while read -r machine; do
  start 0 --machine "$machine"
  get metrics >scrape
  promtool check metrics <scrape >promtool.out 2>&1 || fail "$machine: $(cat promtool.out)"
  stop
done <machines

# The kernel numbers its chips in another order at each start. The metrics are the same.
for tree in "$root"/tests/linux/trees/*.tree; do
  # hwmon0 becomes hwmon19, hwmon1 hwmon18 and so on.
  awk '{
    renumbered = ""
    while (match($0, /hwmon[0-9]+/)) {
      renumbered = renumbered substr($0, 1, RSTART - 1) "hwmon" (19 - substr($0, RSTART + 5, RLENGTH - 5))
      $0 = substr($0, RSTART + RLENGTH)
    }
    print renumbered $0
  }' "$tree" >renumbered.tree
  cmp -s "$tree" renumbered.tree && fail "$tree has no number"
  for order in "$tree" renumbered.tree; do
    rm -rf computer
    "$root/scripts/lay-out-tree" "$order" computer
    start 0 --machine host --sys computer/sys --proc computer/proc
    get metrics | grep -E '^(hw|system)_' >"of-$(basename "$order")"
    stop
  done
  diff "of-$(basename "$tree")" of-renumbered.tree >diff.out || fail "$tree: renumbered chips have other metrics: $(cat diff.out)"
  grep -q 'hw_id="[^"]' of-renumbered.tree || fail "$tree has no readings"
done

# A sensor that is no longer read
cat >failing.json <<'END'
{"name": "Failing", "ticks": [
  {"smc": {"keys": {"TC0P": {"type": "sp78", "value": 80}}},
   "drives": [{"Bytes (Read)": 1000, "Bytes (Write)": 2000}]},
  {"smc": {"keys": {"TC0P": null, "FNum": {"type": "ui8 ", "value": 1}, "F0Ac": {"type": "fpe2", "value": 900}}}}]}
END
start 0 --machine failing.json --interval 0.05
await serves '^halvermonte_sensor_read{hw_id="[a-z0-9-]*",hw_name="[^"]*"} 0'
serves '^hw_temperature_celsius{' && fail "the sensor has a reading still"

# The page lists every metric with its type and its labels, and no other. The scrape has a sample of
# each, with the temperatures of another machine.
get metrics >scrape
stop
start 0 --machine M1
get metrics >>scrape
stop
awk '/^# TYPE / { type[$3] = $4 }
  /^[a-z]/ {
    labels = ""; rest = $0; name = $0
    sub(/[{ ].*/, "", name)
    while (match(rest, /[{,][a-z_]+="/)) {
      labels = labels (labels ? ", " : "") "`" substr(rest, RSTART + 1, RLENGTH - 3) "`"
      rest = substr(rest, RSTART + RLENGTH)
    }
    print "| `" name "` | " type[name] " | " (labels ? labels " |" : "|")
  }' scrape | sort -u >served
sed -n '/^## Metrics/,/^## /s/^\(| `[^|]*|[^|]*|[^|]*|\).*/\1/p' "$page" | sort -u >listed
diff listed served >diff.out || fail "$page differs from a scrape: $(cat diff.out)"
[ "$(wc -l <listed)" -ge 9 ] || fail "the page lists only $(wc -l <listed) metrics"

finish
