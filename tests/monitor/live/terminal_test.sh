#!/bin/bash
# The built monitor's live view at a terminal, with real keys: start, keys, sizes, suspension and ends.
# Usage: terminal_test.sh MONITOR

monitor=$(printf %q "$1")
# shellcheck source=tests/monitor/outside.sh
. "$(dirname "$0")/../outside.sh"
unset TMUX
# A terminal of its own, with a shell that controls jobs.
terminal() { tmux -u -S "$work/socket" "$@"; }
trap 'terminal kill-server 2>"$work/err"; rm -rf "$work"' EXIT

fail() {
  echo "FAIL: $*; the screen is:" >&2
  screen >&2
  failures=$((failures + 1))
}
screen() { terminal capture-pane -p; }
keys() { terminal send-keys "$@"; }
# await WHAT COMMAND...: polls until the command succeeds.
await() {
  local what=$1
  shift
  for _ in $(seq 400); do
    "$@" && return
    sleep 0.05
  done
  fail "$what"
}
has() { screen | grep -q -- "$1"; }
lacks() { ! has "$1"; }
row_has() { screen | sed -n "$1p" | grep -q -- "$2"; }
# type COMMAND: a line for the shell.
type() { keys -l "$1" && keys Enter; }
# state: what the terminal is set to.
state() { terminal display-message -p '#{alternate_on} #{cursor_flag} #{mouse_any_flag} #{keypad_flag}'; }
modes() {
  rm -f modes
  type 'stty -g >modes.new; mv modes.new modes'
  await "the shell answers" test -e modes
}
is_back() { [ "$(state)" = '0 1 0 0' ]; }

mkfifo slow.json
terminal -f /dev/null new-session -d -x 80 -y 24 "TERM=screen PS1='ready> ' exec bash --norc --noprofile -i"
await "there is a shell" has 'ready>'
modes
cp modes former

# gives_back WHAT: the shell has its terminal as it was.
gives_back() {
  await "$1: the screen is given back" is_back
  await "$1: the shell is back" has 'ready> *$'
  modes
  cmp -s modes former || fail "$1: the modes of the terminal have changed: $(cat modes)"
}
# start ARGUMENT...
start() {
  type "clear"
  type "$monitor --live $*; echo \"status: \$?\""
}

# The first frame is there before the machine is, and q ends a start that hangs
start --machine slow.json
await "a frame without a machine" has 'waiting for the first pass'
keys q
await "q ends a start that hangs" has 'status: 0'
gives_back "a start that hangs"

# Keys, on a machine that does not move on
start --machine M1 --interval 1000
await "the first pass" has 'Hottest:'
await "the title" row_has 1 '^simulated: M1 '
await "the sensors of the CPU are folded" has '▸ CPU (11): '
keys Down Enter
await "Enter unfolds a section" has '^   CPU Core 1 '
await "the heading is selected" has '^>▾ CPU (11): '
keys Down
await "a sensor has details" has 'minimum .*, maximum .*, average .* since the start'
await "a sensor has an origin" has '^ key Te05\|^ HID service'
keys End
await "End goes to the last row" has '^>  write '
keys Escape
await "Escape selects none" lacks '^>'
keys -l $'\033OH' # as another terminal sends it
await "Home goes to the first row" has '^>▾ CPU (11)'
keys End
keys Home Escape
await "Home goes to the first row" has '▾ CPU (11)'
keys -l $'\033[Ma!!'
await "the wheel scrolls" lacks '▾ CPU (11)'
keys -l $'\033[M`!!'
await "the wheel scrolls back" has '▾ CPU (11)'
keys / B a t t x BSpace
await "typing filters" has '^/Batt_'
await "only what has the text is there" lacks 'CPU Efficiency'
await "what has the text is shown" has 'Battery'
keys Enter
await "the filter stays" has 'only "Batt"'
keys Escape
await "Escape clears the filter" has 'GPU'
keys f
await "f changes the unit" has '°F'
keys s p
await "p pauses" row_has 1 'paused'
keys '?'
await "? shows help" has 'sort by name or by heat'
keys '?'
await "? hides help" lacks 'sort by name or by heat'

# Sizes
terminal resize-window -x 40 -y 8
await "a small window" row_has 8 '^? help'
await "a small window has the hottest" row_has 2 '^ Hottest: '
terminal resize-window -x 200 -y 60
await "a large window" row_has 60 '^? help'
terminal resize-window -x 80 -y 24
await "the first size again" row_has 24 '^? help'

# Ctrl-Z and back
keys C-z
await "Ctrl-Z stops it" has 'Stopped'
gives_back "Ctrl-Z"
type 'fg; echo "status: $?"'
await "fg brings it back" row_has 1 '^simulated: M1 '
await "the screen is drawn again" row_has 24 '^? help'
keys q
await "q ends it" has 'status: 0'
gives_back "q"

# Signals
for signal in INT TERM HUP QUIT; do
  start --machine M1
  await "a pass before SIG$signal" has 'Hottest:'
  kill -$signal "$(pgrep -P "$(terminal display-message -p '#{pane_pid}')")"
  await "the end by SIG$signal" has 'status: 0'
  gives_back "SIG$signal"
done
start --machine M1
await "a pass before Ctrl-C" has 'Hottest:'
keys C-c
await "the end by Ctrl-C" has 'status: 0'
gives_back "Ctrl-C"

# An engine that ends the process does so by abort()
for name in screen xterm-256color vt100; do
  type "clear; TERM=$name"
  start --machine M1
  await "a pass before SIGABRT" has 'Hottest:'
  kill -ABRT "$(pgrep -P "$(terminal display-message -p '#{pane_pid}')")"
  await "the end by SIGABRT" has 'status: 134'
  gives_back "SIGABRT at $name"
done
type 'TERM=screen'

# As many passes as are asked for; and what is wrong with the machine is said after the screen
start --machine M1 --ticks 2 --interval 0.01
await "--ticks ends it" has 'status: 0'
gives_back "--ticks"
start --machine no-such-machine
await "a machine that is not there" has 'status: 2'
await "the complaint about the machine" has 'halvermonte-monitor: --machine: '
gives_back "a machine that is not there"

# --watch is the same at a terminal, also without colours, and in the C locale in ASCII
type "clear; NO_COLOR=1 LC_ALL=C $monitor --watch --machine M1"
await "--watch is live at a terminal" has '^ Hottest: '
await "a chart in ASCII" has '=====.*||-'
screen | LC_ALL=C grep -q '[^ -~]' && fail "more than ASCII in the C locale"
terminal capture-pane -pe | grep -q $'\033\[[0-9;]*[34][0-8]' && fail "colours in spite of NO_COLOR"
keys q
gives_back "--watch"
type "clear; TERM=no-such-terminal $monitor --live; echo \"status: \$?\""
await "an unknown terminal" has 'status: 1'
await "the complaint about the terminal" has 'halvermonte-monitor: --live: the terminal "no-such-terminal" is not known'

finish
