#!/usr/bin/env bash
# readme_test.sh SOURCE: the README's host is the example, word for word.
set -euo pipefail
sed -n '/^```cpp$/,/^```$/{/^```/!p}' "$1/README.md" | diff -u "$1/examples/cpp-host/main.cpp" -
