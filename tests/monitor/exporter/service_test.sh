#!/bin/bash
# The systemd unit: systemd knows all of it, it is confined, and it starts the monitor as an exporter.
# Usage: service_test.sh MONITOR UNIT

monitor=$(realpath "$1")
unit=$(realpath "$2")
defaults=$(cd "$(dirname "$0")/../../../packaging/systemd" && pwd)/halvermonte-monitor.default
# shellcheck source=tests/monitor/exporter/outside.sh
. "$(dirname "$0")/outside.sh"

# It need not be installed to be checked.
sed "s|^ExecStart=[^ ]*|ExecStart=$monitor|" "$unit" >halvermonte-monitor.service
systemd-analyze verify --man=no "$work/halvermonte-monitor.service" >verify.out 2>&1
grep halvermonte-monitor.service verify.out && fail "systemd does not take the unit"
systemd-analyze security --offline=true --threshold=20 "$work/halvermonte-monitor.service" \
  >security.out 2>&1 || fail "the unit is too open: $(tail -1 security.out)"

# The command of the unit with its own variables, and with those of the defaults' file. The ports
# of both are the same, so one that is taken shows that the options are right.
command=$(sed -n 's/^ExecStart=//p' halvermonte-monitor.service)
sed -n 's/^Environment=\(LISTEN=.*\)/\1/p' halvermonte-monitor.service >unit.variables
sed -n 's/"//g; s/^LISTEN=/&/p' "$defaults" >default.variables
cmp unit.variables default.variables || fail "the defaults differ from the unit's"
LISTEN=127.0.0.1:0 ARGS='--machine M1'
eval "${command/\$\{LISTEN\}/\$LISTEN}" '2>err &'
exporter=$!
await grep -q . err
grep -q '^listening on http://127.0.0.1:' err || fail "the unit's command: $(cat err)"
stop

finish
