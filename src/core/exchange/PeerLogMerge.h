#pragma once

#include <vector>

#include "PeerImporter.h"
#include "log/CVCItem.h"

// The vehicle the entries go into: its units decide how they are stored.
struct PeerTarget
{
    int distanceUnit = 0;
    int liquidUnit = 0;
    int economyUnit = 0;
    double startOdometer = 0.0;
    double costPerMile = 0.0; // a trip's mileage cost, as the trip form works it out
};

struct PeerMergeResult
{
    EntryList entries; // the whole log after the merge
    std::vector<size_t> addedAt; // where the added entries are in it, in order
    int added = 0;
    int duplicates = 0; // already in the log
    int unusable = 0; // no odometer of at least 1
    QStringList warnings;
};

// Turns imported entries into log records the way the entry forms make them and merges them
// into a log.
namespace PeerLogMerge {

// One record: units converted to the vehicle's, the fuel form's unit text, the maintenance
// form's icon for a reminder name, a trip as the trip form saves it. Economy is left 0 for merge() to work
// out.
CVCItem toRecord(const PeerEntry &entry, const PeerTarget &target);

// Inserts the records by odometer (after every entry of the log at or below their reading).
// A record equal to one already in the log in kind, odometer, date, name and amount is counted
// as a duplicate and left out; each log entry absorbs one such record, so equal entries of one
// visit are all kept. The new fill-ups' economy is then worked out as the fuel form would, from
// the last full fill-up before them in the merged list.
PeerMergeResult merge(const EntryList &log, const std::vector<PeerEntry> &entries, const PeerTarget &target);

} // namespace PeerLogMerge
