#!/bin/bash
# The built monitor from outside: exit statuses, streams, pipes and terminals.
# Usage: cli_test.sh MONITOR VERSION

monitor=$1 version=$2
quoted=$(printf %q "$monitor")
trees=$(cd "$(dirname "$0")/../linux/trees" && pwd)
page=$(cd "$(dirname "$0")/../../docs" && pwd)/record-json.md
# shellcheck source=tests/monitor/outside.sh
. "$(dirname "$0")/outside.sh"

lines() { wc -l <"$1"; }
# has FILE LINES [PATTERN]: fails unless the file has that number of lines and one has the pattern.
has() {
  [ "$(lines "$1")" = "$2" ] || fail "$1 has $(lines "$1") lines, expected $2: $(head -c 300 "$1")"
  [ $# -lt 3 ] || grep -q -- "$3" "$1" || fail "$1 lacks '$3': $(head -c 300 "$1")"
}

cat >machine.json <<'END'
{"name": "Sample", "hostName": "desk", "processor": {"cpu_type": "Some Processor"},
 "ticks": [
  {"time": 1767323045.25,
   "smc": {"keys": {"TC0P": {"type": "sp78", "value": 100},
                    "FNum": {"type": "ui8 ", "value": 1},
                    "F0Ac": {"type": "fpe2", "value": 0}}},
   "drives": [{"Bytes (Read)": 1000, "Bytes (Write)": 2000}]},
  {"drives": [{"Bytes (Read)": 5001000, "Bytes (Write)": 2000}]},
  {"smc": {"service": "refused"}}]}
END

# Help and version
expect 0 --help
has err 0
has out "$(lines out)" '^usage: halvermonte-monitor'
expect 0 --version
has err 0
has out 4 "^halvermonte-monitor $version\$"
expect 0 --machine list
has err 0
grep -q '^M1 ' out || fail "the list lacks M1"

# Wrong use: one line, nothing on standard output
for arguments in '--bogus' 'extra' '--ticks 0' '--ticks -1' '--ticks x' '--interval -1' \
  '--interval nan' '--interval soon' '--format xml' '--json --format text' '--machine' \
  '--machine M1 --sys /sys' '--record a --watch' '--record a --list' '--machine list --json' \
  '--record - --json' '--color' '--with-host-name' '--watch=3' '--live --json' \
  '--live --list' '--live --record a'; do
  # shellcheck disable=SC2086
  expect 2 $arguments
  has out 0
  has err 1 '^halvermonte-monitor: .*(see --help)$'
done

# Machines that do not exist or cannot be read
echo 'not a machine' >broken.json
expect 2 --machine no-such-machine
has out 0
has err 1 '^halvermonte-monitor: .*no-such-machine'
expect 2 --sys /nonexistent
has out 0
has err 1 '^halvermonte-monitor: --sys /nonexistent: No such file or directory$'
expect 2 --proc broken.json
has err 1 '^halvermonte-monitor: --proc broken.json: Not a directory$'
expect 2 --machine broken.json
has out 0
has err 1 '^halvermonte-monitor: broken.json: '
expect 2 --machine "two
lines"
has err 1
expect 2 --machine /dev/zero
has err 1 '^halvermonte-monitor: /dev/zero: expected at most 64 MB$'
expect 0 --machine - --json --interval 0 <machine.json
has out 1
expect 0 --machine <(cat machine.json) --json --interval 0
has out 1

# The live view needs a terminal
for term in xterm dumb; do
  TERM=$term expect 1 --live --machine M1
  has out 0
  has err 1 '^halvermonte-monitor: --live: '
done

# Text
expect 0 --machine machine.json --interval 0
has err 0
head -1 out | grep -q '^Sample, simulated$' || fail "the title is $(head -1 out)"
grep -q '100 °C' out || fail "no temperature"
grep -q 'stopped' out || fail "no stopped fan"
grep -q ' 5 MB/s ' out || fail "no rate: $(grep read out)"
expect 0 --machine machine.json --interval 0 --fahrenheit
grep -q '212 °F' out || fail "no Fahrenheit"
expect 0 --machine machine.json --interval 0 --ticks 3
[ "$(grep -c '^Sample, simulated$' out)" = 3 ] || fail "--ticks 3 gave other than 3 reports"
has err 1 '^Error: IOServiceOpen() = e00002bc$'
locale=C expect 0 --machine machine.json --interval 0
LC_ALL=C grep -q '[^ -~]' out && fail "more than ASCII in the C locale"
grep -q $'\033' out && fail "colours without a terminal"
mkdir empty
expect 0 --sys empty --proc empty --interval 0
grep -q simulated out && fail "a folder was taken for a simulated machine"
[ "$(grep -c '^halvermonte-monitor: .*--machine list' err)" = 1 ] || fail "no hint for an empty computer"
[ "$(grep -c '^  none$' out)" = 3 ] || fail "an empty computer has something: $(cat out)"
expect 0 --sys empty --proc empty --json
jq -e '.record | .sensors == {} and .fans == {}' out >jq.out || fail "an empty computer's line"
expect 0 --machine machine.json --interval 0 --color always
grep -q $'\033' out || fail "no colours on request"

# JSON lines
expect 0 --machine machine.json --json --ticks 4 --interval 0
has out 4
has err 2 '^Error: IOServiceOpen() = e00002bc$'
jq -es 'map(.tick) == [0, 1, 2, 3] and (map(.record | length) | unique) == [103]' out >jq.out ||
  fail "lines or members are missing"
jq -es '.[0].record.appsUpdateTime == "2026-01-02T03:04:05.250Z"' out >jq.out || fail "the date"
jq -es 'map(.record.diskIO_speedRead) == [0, 5000000, 0, 0]' out >jq.out ||
  fail "the first pass is not the first line: $(jq -c .record.diskIO_speedRead out)"
jq -es 'map(.record | .processorName == "" and .uptime == 0 and .summary_cpuCores == 1) | all' \
  out >jq.out || fail "a property of the host was filled on a machine from a file"
head -1 out | jq -r '.record | keys_unsorted[]' >members
# shellcheck disable=SC2016
sed -n 's/^| `\([a-zA-Z_]*\)` |.*/\1/p' "$page" | cmp -s - members ||
  fail "the page of members and the members differ"
cp out plain
expect 0 --machine machine.json --json --ticks 4 --interval 0 --fahrenheit
cmp -s out plain || fail "--fahrenheit changes the JSON"
expect 0 --machine machine.json --json --interval 1000000 # waits between passes alone
has out 1 '^{"tick":0,'

# Every sensor with its key, name, source and reading
expect 0 --machine machine.json --list
has err 0
head -1 out | grep -q '^Sample, simulated$' || fail "the list names no machine"
grep -q '^  CPU 1 Proximity .* 100 °C .* TC0P .* SMC sp78 .* 6400 ' out ||
  fail "the list lacks TC0P: $(cat out)"
grep -q '^  Fan 1 .* 0 rpm .* F0Ac .* SMC fpe2 .* 0000 ' out || fail "the list lacks the fan"
grep -q '^  Disks .* 1 KB read, 2 KB written .* drive 1 ' out || fail "the list lacks the drive"
expect 0 --machine machine.json --list --json
jq -e '.sensors[0].key == "F0Ac" and .drives[0].bytesRead == 1000' out >jq.out ||
  fail "the list as JSON: $(cat out)"
cp out list.json
expect 0 --machine machine.json --list --format json
cmp -s out list.json || fail "--list --format json and --list --json differ"
cat >proximity.json <<'END'
{"name": "Proximity", "ticks": [{"smc": {"keys": {"TP0P": {"type": "sp78", "value": 40}}}}]}
END
expect 0 --machine proximity.json --list
grep -q ' TP0P .*no: PCH Proximity is not sampled$' out || fail "a key that no pass reads: $(cat out)"
"$trees/../../../scripts/lay-out-tree" "$trees/mac.tree" mac || fail "mac.tree is not laid out"
expect 0 --machine host --sys mac/sys --proc mac/proc --list
grep -q '^  Airflow 1 .* 32 °C .* TA0P .*applesmc.768/temp1_input "TA0P" .* 32000 ' out &&
  grep -q ' TW0P .*-127000 .*; no reading: outside its range$' out &&
  grep -q '^  Right .* 1309 rpm .* F0Ac .*fan1_input "Right Side" .* 1309 ' out &&
  grep -q '^  Disks .* 1 MB read, 2.1 MB written .*block pci0000:00/ata1/block/sda/stat ' out ||
  fail "the list of a tree: $(cat out)"
expect 0 --sys empty --proc empty --list
has err 1 '^halvermonte-monitor: no sensors'

# A recording gives the same lines
expect 0 --machine machine.json --json --ticks 4 --interval 0 --record recording.json
cmp -s out plain || fail "recording changes the lines"
expect 0 --machine recording.json --json --ticks 4 --interval 0
cmp -s out plain || fail "the recording gives other lines"
expect 0 --machine machine.json --ticks 2 --interval 0 --record recording.json
has out 1 '^recording.json: 2 ticks of Sample, simulated$'
expect 0 --machine host --interval 0 --record host.json
jq -e 'has("hostName") | not' host.json >jq.out || fail "a recording of this computer has its name"
expect 0 --machine host --interval 0 --record host.json --with-host-name
jq -e 'has("hostName")' host.json >jq.out || fail "--with-host-name records no name"

# A comma for the decimal point
if localedef -i de_DE -f UTF-8 "$work/de_DE.UTF-8" >localedef.out 2>&1; then
  export LOCPATH=$work
  locale=de_DE.UTF-8 expect 0 --machine machine.json --json --ticks 4 --interval 0.0
  cmp -s out plain || fail "the locale changes the JSON"
  locale=de_DE.UTF-8 expect 0 --machine machine.json --interval 0
  grep -q '100 °C' out || fail "no Unicode in a UTF-8 locale"
  unset LOCPATH
else
  fail "no locale with a comma could be made: $(cat localedef.out)"
fi

# This computer: what a host fills
expect 0 --machine host --json
jq -e '.record.uptime > 0 and .record.summary_memoryTotal > 1 and .record.uptimeText != ""' \
  out >jq.out || fail "this computer's own properties are missing"

# Readers that leave, and disks that are full
for arguments in '--json --ticks 100000' '--ticks 100000' '--json --watch'; do
  # shellcheck disable=SC2086
  timeout 60 "$monitor" --machine M1 --interval 0 $arguments 2>err | head -1 >out
  status=${PIPESTATUS[0]}
  [ "$status" = 0 ] || fail "[$arguments | head -1] exit status $status"
  has out 1
  has err 0
done
for arguments in '--help' '--version' '--machine list' '--machine M1 --json' '--machine M1 -i 0'; do
  # shellcheck disable=SC2086
  timeout 60 "$monitor" $arguments >/dev/full 2>err
  status=$?
  [ $status = 1 ] || fail "[$arguments >/dev/full] exit status $status"
  has err 1 'No space left on device'
done
timeout 60 "$monitor" --version >&- 2>err
[ $? = 1 ] || fail "a closed standard output is a success"
timeout 60 "$monitor" --machine machine.json --json --ticks 3 --interval 0 2>&- >out
cmp -s out <(head -3 plain) || fail "a closed standard error lets messages into the output"

# --watch goes on until it is asked to stop
for signal in INT TERM; do
  for format in text json; do
    : >out # what is waited for below is this run's
    env --default-signal=INT "$monitor" --machine M1 --watch --format $format --interval 0.05 >out 2>err &
    process=$!
    for _ in $(seq 200); do
      [ "$(lines out)" -gt 150 ] || { [ $format = json ] && [ "$(lines out)" -gt 2 ]; } && break
      sleep 0.05
    done
    kill -$signal $process
    wait $process
    status=$?
    [ $status = 0 ] || fail "--watch --format $format ended by $signal: exit status $status"
    has err 0
  done
  jq -e .tick out >jq.out || fail "a line of --watch --json is incomplete"
done

# at_terminal COMMAND: runs it at a terminal without a keyboard, with what that gets in typescript.
at_terminal() { timeout 60 script -qec "$1" typescript >script.out </dev/null; }

# Colours at a terminal
export TERM=xterm
bold=$(printf '\033[1m')
at_terminal "$quoted --machine M1 -n 1 -i 0"
grep -q 'M1, simulated' typescript || fail "no title at the terminal"
grep -qF "$bold" typescript || fail "no colours at the terminal"
NO_COLOR=1 at_terminal "$quoted -m M1 -n 1 -i 0"
grep -qF "$bold" typescript && fail "colours in spite of NO_COLOR"
NO_COLOR=1 at_terminal "$quoted -m M1 -n 1 -i 0 --color always"
grep -qF "$bold" typescript || fail "NO_COLOR wins over --color"
at_terminal "$quoted -m M1 -n 1 -i 0 --color=never"
grep -qF "$bold" typescript && fail "colours in spite of --color=never"
TERM=dumb at_terminal "$quoted -m M1 --watch -n 1 -i 0"
grep -q $'\033' typescript && fail "a dumb terminal was steered"
grep -q '^M1, simulated' typescript || fail "no reports at a dumb terminal: $(cat typescript)"
TERM=dumb at_terminal "$quoted -m M1 --live"
grep -q '^halvermonte-monitor: --live: ' typescript ||
  fail "a live view at a dumb terminal: $(cat typescript)"

finish
