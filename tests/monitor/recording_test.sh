#!/bin/bash
# Recordings of the built monitor from outside: where they go, and what stays if they fail.
# Usage: recording_test.sh MONITOR

monitor=$1
# shellcheck source=tests/monitor/outside.sh
. "$(dirname "$0")/outside.sh"

# record STATUS ARGUMENT...: records the M1.
record() { expect "$1" --machine M1 --interval 0 --ticks 2 --record "${@:2}"; }
# is_recording FILE: fails unless the file is the machine file of two ticks.
is_recording() {
  jq -es 'length == 1 and (.[0].ticks | length) == 2' "$1" >jq.out || fail "$1: $(head -c 300 "$1")"
}
# says LINE: fails unless that is all that standard error has.
says() { [ "$(cat err)" = "halvermonte-monitor: $1" ] || fail "standard error: $(cat err)"; }

record 0 file.json
[ "$(cat out)" = 'file.json: 2 ticks of M1, simulated' ] || fail "the last line: $(cat out)"
is_recording file.json
cp file.json former.json

# Standard output by each of its names, a pipe and another descriptor
for name in - /dev/stdout /dev/fd/1; do
  record 0 "$name"
  cmp -s out file.json || fail "--record $name: $(head -c 300 out)"
  [ -s err ] && fail "--record $name: $(cat err)"
done
record 0 /dev/fd/7 7>other.json
is_recording other.json
record 0 >(cat >piped.json)
wait $! # the reader
is_recording piped.json
"$monitor" --machine M1 --interval 0 --record - | "$monitor" --machine - --interval 0 >out ||
  fail "a recording cannot be shown at once"

# What cannot be written leaves everything as it was
record 1 no/such/folder.json
says 'no/such/folder.json: No such file or directory'
record 1 /dev/full
says '/dev/full: No space left on device'
mkdir folder
record 1 folder
says 'folder: Is a directory'
(
  ulimit -f 1 # no file longer than a kilobyte
  trap '' XFSZ
  record 1 file.json
  says 'file.json: File too large'
  exit $failures
) || failures=$((failures + 1))
cmp -s file.json former.json || fail "a recording that failed took the former one"
[ -z "$(find . -name '.halvermonte*')" ] || fail "left behind: $(find . -name '.halvermonte*')"

# A recording that is interrupted has the ticks so far
replays() {
  "$monitor" --machine "$1" --json --ticks "$(wc -l <out)" --interval 0 | cmp -s - out ||
    fail "the recording of an interrupted run has not what its lines have: $(head -c 300 "$1")"
}
: >out
env --default-signal=INT "$monitor" --machine M1 --json --ticks 100000 --interval 0.05 --record part.json >out 2>err &
process=$!
for _ in $(seq 200); do
  [ "$(wc -l <out)" -gt 2 ] && break
  sleep 0.05
done
kill -INT $process
wait $process || fail "an interrupted recording: exit status $?"
replays part.json
"$monitor" --machine M1 --json --ticks 100000 --interval 0 --record part.json | head -2 >out
jq -e '.ticks | length >= 2' part.json >jq.out || fail "a closed pipe took the recording"
replays part.json

finish
