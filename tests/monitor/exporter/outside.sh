# Common to the tests of the built monitor as an exporter, which source this: as tests/monitor/outside.sh,
# and an exporter that ends with the test.
# shellcheck shell=bash
# shellcheck source=tests/monitor/outside.sh
. "$(dirname "$0")/../outside.sh"
exporter=
trap '[ -z "$exporter" ] || kill -KILL $exporter 2>"$work/kill.err"; rm -rf "$work"' EXIT

# await COMMAND...: waits until it succeeds, or ends the test.
await() {
  for _ in $(seq 1200); do
    "$@" && return
    sleep 0.05
  done
  echo "FAIL: waited in vain for: $*; standard error: $(cat err)" >&2
  exit 1
}
# start ADDRESS ARGUMENT...: starts an exporter and waits until it listens; its address is then in url.
start() {
  : >err # what the one before has written must not be taken for this one's
  "${monitor:?}" --listen "$@" >out 2>err &
  exporter=$!
  await grep -q '^listening on ' err
  url=$(sed -n 's/^listening on //p' err)
}
# stop: ends the exporter and expects success.
stop() {
  kill $exporter
  wait $exporter
  local status=$?
  exporter=
  [ $status = 0 ] || fail "exit status $status after SIGTERM"
}
