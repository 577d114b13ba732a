#!/usr/bin/env bash
# link_names_test.sh NM LIBRARY: in the library, no function of the portable platform is defined or
# called under the name that the system's own has.
set -euo pipefail
names=$("$1" "$2" | awk 'NF > 1 {print $NF}' | sort -u)
grep -qx halvermonte_CFRelease <<<"$names" || { echo "$2 has no link name of the portable platform" >&2; exit 1; }
if grep -E '^(k?CF[A-Z]|IO[A-Z]|sysctl|mach_|bootstrap_port)' <<<"$names"; then
  echo "$2 has names that are the system's" >&2
  exit 1
fi
