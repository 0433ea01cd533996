#!/usr/bin/python3
"""Reads calendar files written by `tarvane-cli due --ics` with the icalendar package and checks
what a calendar program relies on: CRLF lines of at most 75 octets, one all-day event per due
date with a unique UID, an alarm a week before and the due reading in the description."""
import datetime
import sys

import icalendar


def check(path):
    raw = open(path, 'rb').read()
    lines = raw.split(b'\r\n')
    assert lines[-1] == b'', 'the file must end with CRLF'
    for n, line in enumerate(lines[:-1], 1):
        assert b'\n' not in line and b'\r' not in line, f'line {n}: bare line break'
        assert len(line) <= 75, f'line {n}: {len(line)} octets'
        line.decode('utf-8')

    calendar = icalendar.Calendar.from_ical(raw)
    assert calendar['VERSION'] == '2.0'
    assert calendar['PRODID']
    events = calendar.walk('VEVENT')
    assert events, 'no events'
    uids = set()
    for event in events:
        uid = str(event['UID'])
        assert uid not in uids, f'UID {uid} twice'
        uids.add(uid)
        start = event.decoded('DTSTART')
        end = event.decoded('DTEND')
        assert type(start) is datetime.date, f'{uid}: not an all-day event'
        assert end - start == datetime.timedelta(days=1), f'{uid}: not one day long'
        assert isinstance(event.decoded('DTSTAMP'), datetime.datetime)
        assert 'Due date: ' + start.isoformat() in str(event['DESCRIPTION']), f'{uid}: description'
        assert 'Due reading: ' in str(event['DESCRIPTION'])
        alarms = event.walk('VALARM')
        assert len(alarms) == 1, f'{uid}: one alarm expected'
        assert alarms[0]['ACTION'] == 'DISPLAY'
        assert alarms[0].decoded('TRIGGER') == datetime.timedelta(days=-7), f'{uid}: alarm not a week before'
    return calendar, events


def main(paths):
    for path in paths:
        calendar, events = check(path)
        print(f'{path}: {len(events)} events')
    return 0


if __name__ == '__main__':
    sys.exit(main(sys.argv[1:]))
