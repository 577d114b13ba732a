#!/usr/bin/env bash
# The framework and the shared library export the same plain functions and version symbols.
set -euo pipefail
cd "$(dirname "$0")/../.."
diff -u <(grep -v '::' cmake/exports.txt | LC_ALL=C sort) \
  <(sed -n '/OBJC_/!s/^_//p' framework/exports.txt | LC_ALL=C sort)
