#!/usr/bin/env bash
# Runs every libFuzzer target of a build for a few seconds each, starting from its seed corpus.
set -euo pipefail
build=$1
seconds=${2:-20}
shopt -s nullglob
found=0
for fuzzer in "$build"/tests/fuzz/fuzz_*; do
    [ -f "$fuzzer" ] && [ -x "$fuzzer" ] || continue
    found=1
    name=$(basename "$fuzzer")
    corpus=$(mktemp -d)
    seeds="tests/fuzz/corpus/${name#fuzz_}"
    [ -d "$seeds" ] && cp -r "$seeds"/. "$corpus"/
    echo "== $name for ${seconds}s"
    ASAN_OPTIONS=detect_leaks=0 "$fuzzer" -max_total_time="$seconds" -rss_limit_mb=2048 -max_len=65536 \
        "$corpus" 2>&1 | tail -n 3
    rm -rf "$corpus"
done
[ $found -eq 1 ] || { echo "no fuzzers built in $build" >&2; exit 1; }
