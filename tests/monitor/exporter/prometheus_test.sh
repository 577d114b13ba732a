#!/bin/bash
# A Prometheus that scrapes the built monitor and has the rules that come with it.
# Usage: prometheus_test.sh MONITOR

monitor=$(realpath "$1")
root=$(cd "$(dirname "$0")/../../.." && pwd)
rules=$root/packaging/prometheus/halvermonte.rules.yml
# shellcheck source=tests/monitor/exporter/outside.sh
. "$(dirname "$0")/outside.sh"
prometheus=
trap '{ kill $exporter $prometheus; wait; } 2>"$work/kill.err"; rm -rf "$work"' EXIT

# finds EXPRESSION: whether Prometheus has a value for it.
finds() {
  curl -sS --max-time 10 --data-urlencode "query=$1" "http://127.0.0.1:$port/api/v1/query" \
    >answer 2>curl.err && jq -e '.status == "success" and (.data.result | length > 0)' answer >jq.out 2>jq.err
}

promtool test rules "${rules%.yml}.test.yml" >promtool.out 2>&1 || fail "$(cat promtool.out)"
sed -n '/^## Metrics/,/^## /s/^| `\([^`]*\)`.*/\1/p' "$root/docs/metrics.md" | sort -u >listed
[ -s listed ] || fail "the page lists no metric"

start 0 --machine 'Intel Tower' --interval 0.2
target=${url#http://} target=${target%/}
port=$(python3 -c 'import socket; s = socket.create_server(("127.0.0.1", 0)); print(s.getsockname()[1])')
cat >prometheus.yml <<END
global: {scrape_interval: 1s, evaluation_interval: 1s}
rule_files: ["$rules"]
scrape_configs:
  - job_name: halvermonte
    static_configs: [{targets: ["$target"]}]
END
prometheus --config.file=prometheus.yml --storage.tsdb.path=data \
  --web.listen-address="127.0.0.1:$port" >prometheus.log 2>&1 &
prometheus=$!

await finds 'up{job="halvermonte"} == 1'
while read -r metric; do
  [ "$metric" = halvermonte_sensor_read ] || await finds "$metric" # every sensor is read
done <listed
await finds 'count(hw_fan_speed_rpm) == 8'
await finds 'halvermonte_build_info{machine="Intel Tower", simulated="true"}'
await finds 'rate(halvermonte_passes_total[30s]) > 0'
await finds 'time() - halvermonte_last_pass_timestamp_seconds < 60'
curl -sS "http://127.0.0.1:$port/api/v1/rules" >rules.json
jq -e '[.data.groups[].rules[].health] | length == 4 and all(. != "err")' rules.json >jq.out ||
  fail "the rules do not run: $(cat rules.json)"

finish
