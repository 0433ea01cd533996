#!/usr/bin/env bash
# Opens the sample summary report (written by tst_summary_report into the build folder) in
# headless Chromium: prints it to PDF and takes a screenshot, then checks the page count and that
# the totals worked out by hand are in the printed text. Meant for CI, where Debian's chromium
# and poppler-utils are installed when missing.
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
page="$build/report/sample-Report.htm"
[ -f "$page" ] || { echo "missing $page: run the tests (tst_summary_report) first" >&2; exit 1; }

if ! command -v chromium >/dev/null || ! command -v pdftotext >/dev/null; then
    sudo_cmd=()
    [ "$(id -u)" -ne 0 ] && sudo_cmd=(sudo)
    export DEBIAN_FRONTEND=noninteractive
    "${sudo_cmd[@]}" apt-get update -qq
    "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends chromium poppler-utils
fi

url="file://$(realpath "$page")"
pdf="$build/report/sample-Report.pdf"
mkdir -p "$build/screenshots"
profile=$(mktemp -d)
trap 'rm -rf "$profile"' EXIT
# No network here: keep Chromium from reaching out at start-up.
flags=(--headless --no-sandbox --disable-gpu --no-first-run --hide-scrollbars --disable-quic
       --disable-background-networking --disable-component-update --disable-sync
       --user-data-dir="$profile")
chromium "${flags[@]}" --no-pdf-header-footer --print-to-pdf="$pdf" "$url" 2>/dev/null
chromium "${flags[@]}" --window-size=900,2400 --screenshot="$build/screenshots/summary-report.png" "$url" 2>/dev/null

pages=$(pdfinfo "$pdf" | awk '/^Pages:/ {print $2}')
if [ "$pages" -lt 2 ] || [ "$pages" -gt 5 ]; then
    echo "unexpected page count $pages" >&2
    exit 1
fi
text=$(pdftotext -layout "$pdf" -)
# The hand-worked year: fuel 84.50, maintenance 105.49, running 189.99, claims 108.75 + 15.00.
for total in '$84.50' '$105.49' '$189.99' '$108.75' '$123.75' 'Oil Change & filter'; do
    grep -qF -- "$total" <<<"$text" || { echo "the printed report lacks $total" >&2; exit 1; }
done
echo "report: $pages pages, totals found; screenshot $build/screenshots/summary-report.png"
