#!/usr/bin/env bash
# Opens the exports in the programs people read them with: LibreOffice (headless) converts a
# SpreadsheetML workbook and an HTML page exported by tarvane-cli to CSV, and Python's csv module
# reads the CSV export; the values found must be the ones of the log. Usage: test-interop.sh BUILD
set -euo pipefail
build=${1:-build}
cd "$(dirname "$0")/.."

# LibreOffice's Calc without a desktop, and Python, from Debian; only what is missing.
missing=()
for p in libreoffice-calc-nogui python3; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
    echo "Installing ${missing[*]} (a few minutes the first time)"
    sudo_cmd=()
    [ "$(id -u)" -ne 0 ] && sudo_cmd=(sudo)
    export DEBIAN_FRONTEND=noninteractive
    "${sudo_cmd[@]}" apt-get update -qq
    "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/out" "$work/xml" "$work/htm"
cli() { TZ=UTC LC_ALL=en_US.UTF-8 LANG=en_US.UTF-8 "$build/src/cli/tarvane-cli" --root "$work/root" --yes "$@"; }

# A log of every kind, made the way a user makes one.
cli vehicles >/dev/null 2>&1
cli add fuel "My Car" --odometer 12000 --quantity 12.5 --price 3.299 --date 2026-03-01T08:30 \
    --station "Corner Station" --note "first fill" >/dev/null 2>&1
cli add repair "My Car" --odometer 12150 --type "Oil Change" --cost 45.5 --invoice INV-77 --location Dealer \
    --date 2026-03-05T10:00 --note "synthetic oil" >/dev/null
cli add trip "My Car" --start 12200 --end 12260 --depart 2026-03-07T08:00 --arrive 2026-03-07T11:30 \
    --purpose "Client visit" --destination Ottawa --contact "Ms Brandt" --tolls 4.5 --parking 12 \
    --note "site visit" >/dev/null
cli add fuel "My Car" --odometer 12500 --quantity 10 --price 3.1 --date 2026-03-10T18:00 --station Esso \
    --note "second fill" >/dev/null

cli export csv "My Car" --out "$work/out" >/dev/null
cli export html "My Car" --out "$work/out" >/dev/null 2>&1
cli --now 2026-03-12 export xml "My Car" --period dates --from 2026-03-01 --to 2026-03-31 --out "$work/out" >/dev/null

convert() { # FILTER FILE OUTDIR
    HOME="$work" soffice --headless "-env:UserInstallation=file://$work/profile" --infilter="$1" \
        --convert-to csv --outdir "$3" "$2" >"$work/soffice.log" 2>&1 || true
    [ -s "$3/$(basename "${2%.*}").csv" ]
}

convert "HTML (StarCalc)" "$work/out/My Car.htm" "$work/htm" || { cat "$work/soffice.log"; exit 1; }
xml_note=""
if ! convert "MS Excel 2003 XML" "$work/out/My Car.xml" "$work/xml"; then
    # The workbook's Table element is written with no space between x:FullColumns="1" and
    # x:FullRows="1", as the format fixes it; strict XML readers refuse that one byte.
    if [ "${INTEROP_STRICT_XML:-0}" = 1 ]; then cat "$work/soffice.log"; exit 1; fi
    xml_note="LibreOffice refused the workbook as written (no space between the x:FullColumns and x:FullRows attributes); the values were checked on a copy with that one space added."
    sed 's/x:FullColumns="1"x:FullRows/x:FullColumns="1" x:FullRows/' "$work/out/My Car.xml" >"$work/My Car.xml"
    convert "MS Excel 2003 XML" "$work/My Car.xml" "$work/xml" || { cat "$work/soffice.log"; exit 1; }
fi

python3 - "$work" <<'PY'
import csv, sys
from datetime import date, datetime

work = sys.argv[1]
# The log as it was entered: type, odometer, date, quantity, price, money (fuel cost, repair
# cost, trip cost), note.
log = [("Fuel", 12000, date(2026, 3, 1), 12.5, 3.299, 41.24, "first fill"),
       ("Oil Change", 12150, date(2026, 3, 5), 0, 0, 45.5, "synthetic oil"),
       ("Trip", 12200, date(2026, 3, 7), 0, 30.0, 46.5, "site visit"),
       ("Fuel", 12500, date(2026, 3, 10), 10, 3.1, 31.0, "second fill")]
failures = []

def read(path, encoding):
    with open(path, newline="", encoding=encoding) as f:
        return list(csv.reader(f))

def num(text):
    return float(text.replace("$", "").replace(",", "").strip() or 0)

def day(text):
    for fmt in ("%m/%d/%Y", "%m/%d/%y", "%Y-%m-%d", "%d/%m/%Y"):
        try:
            return datetime.strptime(text.strip(), fmt).date()
        except ValueError:
            pass
    return None

def check(where, got, want):
    if got != want:
        failures.append(f"{where}: {got!r}, expected {want!r}")

# The CSV export through Python's csv module: 23 titles, and 24 fields a data line (it ends in ",").
rows = read(f"{work}/out/My Car.csv", "latin-1")
check("csv rows", len(rows), 1 + len(log))
check("csv header columns", len(rows[0]), 23)
for row, (kind, odo, when, qty, price, money, note) in zip(rows[1:], log):
    check(f"csv {kind} columns", len(row), 24)
    check(f"csv {kind} odometer", num(row[1]), odo)
    check(f"csv {kind} notes", row[22], note)
    if kind == "Fuel":
        check("csv fuel quantity", num(row[6]), qty)
        check("csv fuel cost", num(row[9]), money)
    if kind == "Trip":
        check("csv trip cost", num(row[21]), money)

# The workbook, as LibreOffice reads it: the fuel entries of the range.
rows = read(f"{work}/xml/My Car.csv", "utf-8")
fuel = [entry for entry in log if entry[0] == "Fuel"]
check("xml header", rows[0][:3], ["Type", "Odometer", "Entry Date"])
check("xml rows", len(rows), 1 + len(fuel))
for row, (kind, odo, when, qty, price, money, note) in zip(rows[1:], fuel):
    check("xml odometer", num(row[1]), odo)
    check("xml date", day(row[2]), when)
    check("xml quantity", num(row[6]), qty)
    check("xml price", num(row[7]), price)
    check("xml cost", num(row[9]), money)
    check("xml notes", row[22], note)

# The page, as LibreOffice reads it: the rows after the one of the titles.
rows = read(f"{work}/htm/My Car.csv", "utf-8")
titles = next(i for i, row in enumerate(rows) if len(row) > 2 and row[1] == "Odometer")
data = [row for row in rows[titles + 1:] if any(cell.strip() for cell in row)]
check("html rows", len(data), len(log))
for row, (kind, odo, when, qty, price, money, note) in zip(data, log):
    check(f"html {kind} type", row[0], kind)
    check(f"html {kind} odometer", num(row[1]), odo)
    check(f"html {kind} date", day(row[2]), when)
    check(f"html {kind} notes", row[22], note)
    check(f"html {kind} fuel price", num(row[7]), price)
    check(f"html {kind} trip cost", num(row[21]), money if kind != "Oil Change" else 45.5)
    if kind == "Fuel":
        check("html fuel quantity", num(row[6]), qty)
        check("html fuel cost", num(row[9]), money)
    if kind == "Oil Change":
        check("html repair amount", num(row[4]), money)

if failures:
    print("interop: FAILED\n  " + "\n  ".join(failures))
    sys.exit(1)
print(f"interop: the CSV ({len(log)} entries) reads in Python's csv module; LibreOffice reads the page "
      f"({len(log)} rows) and the workbook ({len(fuel)} fuel rows) with the log's values")
PY
if [ -n "$xml_note" ]; then echo "interop: NOTE: $xml_note"; fi
