# Common to the tests of the built monitor from outside, which source this: a folder that is removed at
# the end, failures, and runs of the monitor. Its path is in $monitor.
# shellcheck shell=bash
set -u

export LC_ALL=C.UTF-8
unset NO_COLOR
ulimit -c 0
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1

failures=0
fail() {
  echo "FAIL: $*" >&2
  failures=$((failures + 1))
}

# expect STATUS ARGUMENT...: runs the monitor with its output in the files out and err, and under the
# locale of the variable locale if that is set.
expect() {
  local status=$1
  shift
  LC_ALL=${locale:-$LC_ALL} timeout 60 "${monitor:?}" "$@" >out 2>err
  local got=$?
  [ $got = "$status" ] || fail "[$*] exit status $got, expected $status; err: $(cat -v err)"
}

# finish: ends the test.
finish() {
  [ $failures = 0 ] && echo "all passed"
  exit $((failures > 0))
}
