#!/usr/bin/env bash
# Validates the iCalendar files of `tarvane-cli due --ics` with a real parser (Python's icalendar,
# Debian's python3-icalendar, installed here when missing). The golden file is the one the CLI
# test compares the program's output with byte for byte; the specific checks pin its content.
set -euo pipefail
cd "$(dirname "$0")/.."

# Debian's own interpreter: the package installs into its dist-packages, not into another Python
# that may come first on PATH.
py=/usr/bin/python3
if ! "$py" -c 'import icalendar' 2>/dev/null; then
    sudo_cmd=()
    [ "$(id -u)" -ne 0 ] && sudo_cmd=(sudo)
    export DEBIAN_FRONTEND=noninteractive
    "${sudo_cmd[@]}" apt-get update -qq
    "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends python3-icalendar
fi

golden=tests/data/calc/due-calendar/expected.ics
"$py" scripts/check-calendar.py "$golden"
"$py" - "$golden" <<'PY'
import sys
sys.path.insert(0, 'scripts')
import importlib
check = importlib.import_module('check-calendar').check
calendar, events = check(sys.argv[1])
by_uid = {str(e['UID']): e for e in events}
assert sorted(by_uid) == ['MYCAR0001-LastR%d@tarvane' % n for n in (0, 2, 4, 5, 6)], sorted(by_uid)
oil = by_uid['MYCAR0001-LastR0@tarvane']
assert str(oil['SUMMARY']) == 'Lube, Oil and Filter Change due (My Car)', oil['SUMMARY']
assert str(oil['DESCRIPTION']).split('\n') == [
    'Vehicle: My Car (VIN MYCAR0001)', 'Due date: 2024-04-15', 'Due reading: 12000 Miles',
    'Last done: 9000 Miles on 2024-01-16', 'Interval: 90 days, 3000 Miles'], oil['DESCRIPTION']
cabin = by_uid['MYCAR0001-LastR5@tarvane']
assert str(cabin['SUMMARY']) == 'Cabin filter, Größe M; front due (My Car)', cabin['SUMMARY']
print('calendar: the golden file reads back as written')
PY
