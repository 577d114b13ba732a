#!/bin/bash
# The built monitor watches processes of this computer.
# Usage: process_test.sh MONITOR

monitor=$1
# shellcheck source=tests/monitor/outside.sh
. "$(dirname "$0")/outside.sh"
busy=
watching=
trap 'kill -KILL $busy $watching 2>"$work/kill.err"; rm -rf "$work"' EXIT

# complains PATTERN: fails unless there is one line on standard error, with the pattern, and no other.
complains() {
  [ "$(wc -l <err)" = 1 ] || fail "standard error has other than one line: $(cat err)"
  grep -q -- "$1" err || fail "standard error lacks '$1': $(cat err)"
  [ -s out ] && fail "output in spite of an error: $(head -c 300 out)"
}
# says FILTER: fails unless jq's filter holds for the list of lines.
says() { jq -es "$1" "${2:-out}" >jq.out || fail "not $1: $(jq -c .process "${2:-out}")"; }
# await FILTER: waits until it holds for a line of the monitor that is watching.
await() {
  for _ in $(seq 400); do
    jq -es "any(.[]; $1)" watched >jq.out 2>jq.err && return
    sleep 0.05
  done
  fail "no line with $1: $(tail -1 watched | head -c 300)"
}

while :; do :; done &
busy=$!

# A busy process
expect 0 --json --ticks 2 --interval 1 --pid $busy
says '.[0].process == {pid: '$busy', cpuPercent: null, hasEnded: false}'
says '.[1].process.cpuPercent | . > 0 and . < 110'
expect 0 --interval 1 --pid $busy
grep -q "process $busy: [0-9.]* % of one core" out || fail "no use in the report: $(head -3 out)"
expect 0 --json --ticks 2 --interval 1 --pid $busy --record recording.json
says '.[1].process.cpuPercent > 0'
grep -q '"ps ' recording.json && fail "the recording has a query for the process"

# The same process at rest, although it has used much
kill -STOP $busy
for _ in $(seq 400); do
  grep -q ') T ' /proc/$busy/stat && break
  sleep 0.05
done
expect 0 --json --ticks 2 --interval 1 --pid $busy
says '.[1].process.cpuPercent == 0'
kill -CONT $busy

# It ends, and the sensors go on
"$monitor" --json --watch --interval 0.5 --pid $busy >watched 2>err &
watching=$!
await '.process.cpuPercent > 0'
kill -KILL $busy
wait $busy 2>wait.err
await '.process == {pid: '$busy', cpuPercent: null, hasEnded: true} and has("record")'
kill -TERM $watching
wait $watching || fail "a process that ended is an error: $(cat err)"

# Processes that are not there
expect 1 --pid $busy
complains "^halvermonte-monitor: --pid $busy: there is no such process\$"
expect 1 --json --pid 2147483647
complains '^halvermonte-monitor: --pid 2147483647: there is no such process$'
expect 1 --machine M1 --pid 1
complains '^halvermonte-monitor: --pid 1: a simulated machine has no processes$'

finish
