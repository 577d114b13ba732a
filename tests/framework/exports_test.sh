#!/usr/bin/env bash
# The framework and the shared library export the same plain functions and version symbols. The C interface
# (halvermonte_...) is the shared library's alone.
set -euo pipefail
cd "$(dirname "$0")/../.."
diff -u <(sed -n '/ halvermonte_/!s/^ \([^(]*\)@Base .*/\1/p' cmake/libhalvermonte0.symbols | LC_ALL=C sort) \
  <(sed -n '/OBJC_/!s/^_//p' framework/exports.txt | LC_ALL=C sort)
