#!/usr/bin/env bash
# Runs every libFuzzer target of a build, starting from its seed corpus: a few seconds each by
# default (CI), or with --long for the given time with two workers, printing each target's
# executions and coverage at the end. FUZZ_TARGETS="fuzz_ini ..." runs only the targets named.
set -euo pipefail
long=0
if [ "${1:-}" = "--long" ]; then
    long=1
    shift
fi
build=$(cd "$1" && pwd)
seconds=${2:-20}
shopt -s nullglob
found=0
for fuzzer in "$build"/tests/fuzz/fuzz_*; do
    [ -f "$fuzzer" ] && [ -x "$fuzzer" ] || continue
    name=$(basename "$fuzzer")
    if [ -n "${FUZZ_TARGETS:-}" ] && [[ " $FUZZ_TARGETS " != *" $name "* ]]; then
        continue
    fi
    found=1
    corpus=$(mktemp -d)
    seeds="tests/fuzz/corpus/${name#fuzz_}"
    [ -d "$seeds" ] && cp -r "$seeds"/. "$corpus"/
    echo "== $name for ${seconds}s"
    if [ $long -eq 0 ]; then
        ASAN_OPTIONS=detect_leaks=0 "$fuzzer" -max_total_time="$seconds" -rss_limit_mb=2048 -max_len=65536 \
            "$corpus" 2>&1 | tail -n 3
    else
        logs=$(mktemp -d)
        # Two workers share the corpus; each writes its own log, whose last status line holds
        # its executions ("#N") and coverage ("cov: C").
        (cd "$logs" && ASAN_OPTIONS=detect_leaks=0 "$fuzzer" -max_total_time="$seconds" -rss_limit_mb=2048 \
            -max_len=65536 -workers=2 -jobs=2 -print_final_stats=1 "$corpus" >/dev/null 2>&1) || true
        total=0
        for log in "$logs"/fuzz-*.log; do
            execs=$(grep -a 'stat::number_of_executed_units' "$log" | awk '{print $2}' | tail -n 1)
            cov=$(grep -aoE 'cov: [0-9]+' "$log" | tail -n 1 | awk '{print $2}')
            echo "   worker $(basename "$log" .log): ${execs:-0} executions, coverage ${cov:-?}"
            total=$((total + ${execs:-0}))
        done
        echo "   $name: $total executions in total"
        rm -rf "$logs"
    fi
    rm -rf "$corpus"
done
[ $found -eq 1 ] || { echo "no fuzzers built in $build" >&2; exit 1; }
