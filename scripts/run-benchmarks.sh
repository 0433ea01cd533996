#!/usr/bin/env bash
# Runs every benchmark of a release build.
set -euo pipefail
build=$1
shopt -s nullglob
for b in "$build"/bench/bench_*; do
    [ -f "$b" ] && [ -x "$b" ] || continue
    echo "== $(basename "$b")"
    "$b"
done
