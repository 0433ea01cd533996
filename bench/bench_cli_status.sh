#!/usr/bin/env bash
# Process-level benchmark of opening a log: generates logs of several sizes in a sandbox, then
# runs "tarvane-cli status" and a raw read of the same file ("cat FILE > /dev/null") side by side,
# several times each, and prints the median wall and CPU times, the peak resident memory and the
# ratio of the two medians.
#
#   bench/bench_cli_status.sh [BUILD_DIR] [RUNS] [COUNTS...]
#   e.g. bench/bench_cli_status.sh build-release 7 2000 1000000
set -euo pipefail

build=${1:-build-release}
runs=${2:-5}
shift $(($# > 2 ? 2 : $#)) || true
counts=("$@")
[ ${#counts[@]} -gt 0 ] || counts=(2000 100000 1000000)

cli=$build/src/cli/tarvane-cli
gen=$build/bench/bench_log
for tool in "$cli" "$gen"; do
    [ -x "$tool" ] || { echo "missing $tool (build tarvane-cli and bench_log in $build)" >&2; exit 1; }
done

root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
# The first start creates the data folder with its sample vehicle "My Car" (VIN MYCAR0001).
"$cli" --root "$root" status "My Car" > /dev/null
log="$root/My Documents/Tarvane Files/MYCAR0001.vcb"

# One timed run: prints "wall user+sys maxrssKiB". The wall time comes from the shell's clock,
# as time(1) only counts it in hundredths.
measure() {
    local out start end
    start=$EPOCHREALTIME
    out=$(/usr/bin/time -f '%U %S %M' "$@" 2>&1 > /dev/null | tail -n 1)
    end=$EPOCHREALTIME
    awk -v s="$start" -v e="$end" '{ printf "%.4f %.3f %d\n", e - s, $1 + $2, $3 }' <<< "$out"
}

median() { sort -g | awk '{ v[NR] = $1 } END { print (NR % 2) ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2 }'; }

echo "runs per figure: $runs; load average: $(cut -d' ' -f1-3 /proc/loadavg); cores: $(nproc)"
printf '%9s %8s | %-28s | %-28s | %s\n' entries MB "status: wall / cpu / peak" "cat: wall / cpu / peak" \
    "wall ratio"
for count in "${counts[@]}"; do
    "$gen" "$log" "$count"
    size=$(stat -c %s "$log")
    cat "$log" > /dev/null # warm the page cache for both sides alike
    : > "$root/status" && : > "$root/cat"
    for ((i = 0; i < runs; ++i)); do
        measure "$cli" --root "$root" status "My Car" >> "$root/status"
        measure cat "$log" >> "$root/cat"
    done
    sw=$(cut -d' ' -f1 "$root/status" | median)
    sc=$(cut -d' ' -f2 "$root/status" | median)
    sm=$(cut -d' ' -f3 "$root/status" | median)
    cw=$(cut -d' ' -f1 "$root/cat" | median)
    cc=$(cut -d' ' -f2 "$root/cat" | median)
    cm=$(cut -d' ' -f3 "$root/cat" | median)
    ratio=$(awk -v a="$sw" -v b="$cw" 'BEGIN { if (b > 0) printf "%.1fx", a / b; else print "n/a" }')
    printf '%9d %8.1f | %6.3f s / %6.3f s / %4d MiB | %6.4f s / %6.3f s / %4d MiB | %s\n' "$count" \
        "$(awk -v s="$size" 'BEGIN { print s / 1e6 }')" "$sw" "$sc" $((sm / 1024)) "$cw" "$cc" $((cm / 1024)) \
        "$ratio"
done
