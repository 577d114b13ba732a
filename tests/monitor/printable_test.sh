#!/bin/bash
# A machine file whose texts steer terminals, hide and reorder, through every output of the monitor.
# Usage: printable_test.sh MONITOR

monitor=$1
# shellcheck source=tests/monitor/outside.sh
. "$(dirname "$0")/outside.sh"

# ESC, CSI, DEL, an override, an isolate, a separator of lines, and a blank of no width
nasty='\u001b[2J\u009b1m\u007f\u202e\u2066\u2028\u200b'
shown='?\[2J?1m?????'
unprintable='[\x00-\x09\x0b-\x1f\x7f-\x9f\x{200b}-\x{200f}\x{2028}-\x{202e}\x{2060}-\x{206f}\x{feff}]'
cat >nasty.json <<END
{"name": "name$nasty", "hostName": "host$nasty", "processor": {"cpu_type": "processor${nasty#\\u001b}"},
 "names": [["Xa00", "sensor$nasty"]],
 "ticks": [{
  "smc": {"keys": {"Xa00": {"type": "sp78", "value": 40}, "FNum": {"type": "ui8 ", "value": 1},
                   "F0ID": {"type": "{fds", "bytes": "0000000066616e1b5b324a7f0d0b2020"},
                   "hex:1b5b324a": {"type": "\u001b[2J", "bytes": "00"}}},
  "hid": {"temperature": [{"product": "product$nasty", "value": 40}]}},
  {"drivesRaise": "reason$nasty"}]}
END

# run STATUS ARGUMENT...: as expect, and checks both of its outputs.
run() {
  expect "$@"
  grep -aPn "$unprintable" out err >found && fail "[${*:2}] $(cat -v found)"
}
# has FILE TEXT...: fails unless the file has each text, followed by what is shown for the rest.
has() {
  local file=$1 text
  shift
  for text in "$@"; do
    grep -q -- "$text$shown" "$file" || fail "$file lacks $text: $(cat -v "$file")"
  done
}

run 0 -m nasty.json -i 0
has out name host sensor
grep -q "processor${shown#?}" out || fail "no processor: $(cat -v out)"
grep -q 'fan?\[2J???' out || fail "no fan: $(cat -v out)"
has err reason
run 0 -m nasty.json -i 0 --watch -n 2
has out name
run 0 -m nasty.json --list
has out name sensor product
grep -q ' ?\[2J  SMC ?\[2J ' out || fail "no key: $(cat -v out)"
run 0 -m nasty.json -i 0 --record -
jq -e --arg nasty "$(printf '%b' "$nasty")" '.name == "name" + $nasty' out >jq.out ||
  fail "the recording has another name: $(cat -v out)"
run 0 -m nasty.json -i 0 --record copy.json
has out name
run 0 -m nasty.json -i 0 -n 2 --json
jq -es --arg nasty "$(printf '%b' "$nasty")" '.[1].record |
  .hostName == "host" + $nasty and (.sensors | has("sensor" + $nasty))' out >jq.out ||
  fail "a line has other texts: $(cat -v out)"
has err reason

# Messages
plain=$(printf '%b' "$nasty")
run 2 -m "nowhere$plain"
has err nowhere
run 2 "argument$plain"
has err argument
run 2 --ticks "ticks$plain"
has err ticks
run 1 -m nasty.json -i 0 --record "$work/nowhere$plain/file"
has err nowhere
printf '{"member%s": 1}' "$nasty" >refused.json
run 2 -m refused.json
grep -q '/member' err || fail "no place: $(cat -v err)"

finish
