#!/usr/bin/env bash
# hosts_test.sh HOST...: the host shows what is in a machine file, and why it cannot show another one.
set -euo pipefail
files=$(dirname "$0")/../capi

diff -u - <("$@" "$files/desk.machine") <<'END'
Airport Proximity: 41 °C
Netzwerk Süd: 55 °C
Samsung SSD 990 PRO: 39 °C
read 2500000 bytes/s, write 40000 bytes/s
END

if errors=$("$@" "$files/Check.h" 2>&1 >/dev/null); then
  echo "expected a failure of a file that is not a machine file" >&2
  exit 1
fi
diff -u - <(echo "$errors") <<<"$files/Check.h: line 1, column 1: expected well-formed JSON in UTF-8"
