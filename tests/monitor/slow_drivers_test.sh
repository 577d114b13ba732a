#!/bin/bash
# The built monitor over drivers that take seconds, fail or never return: its passes stay on time.
# Usage: slow_drivers_test.sh MONITOR PRELOADED_LIBRARY

monitor=$1 library=$2
# shellcheck source=tests/monitor/outside.sh
. "$(dirname "$0")/outside.sh"
process=
trap 'kill -KILL $process 2>"$work/err"; rm -rf "$work"' EXIT

# add_chip NUMBER DRIVER DEVICE: a chip with one temperature of NUMBER * 10 degrees.
add_chip() {
  local device=$work/sys/devices/platform/$3
  mkdir -p "$device/hwmon/hwmon$1" "$work/sys/class/hwmon" "$work/proc"
  echo "$2" >"$device/hwmon/hwmon$1/name"
  echo "${1}0000" >"$device/hwmon/hwmon$1/temp1_input"
  ln -s "$device" "$device/hwmon/hwmon$1/device"
  ln -s "$device/hwmon/hwmon$1" "$work/sys/class/hwmon/hwmon$1"
}
add_chip 3 jc42 takes-two-seconds
add_chip 4 amdgpu takes-three-and-may-fail
add_chip 5 nvme never-returns
add_chip 6 k10temp works

# Starts the monitor with the arguments, its output in the descriptor 3 and its id in $process.
start() {
  began=${EPOCHREALTIME/./}
  exec 3< <(exec env LD_PRELOAD="$library" "$monitor" --machine host \
    --sys "$work/sys" --proc "$work/proc" --json --interval 1 "$@")
  process=$!
}
# milliseconds: since $began.
milliseconds() { echo $(((${EPOCHREALTIME/./} - began) / 1000)); }
# await_end MOST_MILLISECONDS WHAT: the output ends with the process.
await_end() {
  began=${EPOCHREALTIME/./}
  cat <&3 >/dev/null
  local took
  took=$(milliseconds)
  ((took <= $1)) || fail "$2 takes $took ms, of which $1 are allowed"
  exec 3<&-
  process=
}

# The limits are 1 s for the first report and 1.05 s from one to the next; a busy computer gets more.
passes=7
start --ticks $passes
for ((pass = 1; pass <= passes; ++pass)); do
  IFS= read -r -t 20 line <&3 || {
    fail "pass $pass does not end"
    exit 1
  }
  took=$(milliseconds)
  limit=1400
  ((took <= limit)) || fail "pass $pass takes $took ms, of which $limit are allowed"
  began=${EPOCHREALTIME/./}
  [[ $line == *'CPU 1 Package'* ]] || fail "pass $pass lacks the sensor that works"
  [[ $line != *'NVMe Drive'* ]] || fail "pass $pass has a sensor that never returns"
done
[[ $line == *'Memory Module'* ]] || fail "the last pass lacks the sensor that takes two seconds"
[[ $line == *'GPU Die'* ]] || fail "the last pass lacks the sensor that takes three"
await_end 500 "the end"

start --watch
IFS= read -r -t 20 line <&3 || fail "the first pass does not end"
kill -TERM $process
await_end 500 "the end by a signal"

finish
