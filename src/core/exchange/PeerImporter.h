#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

#include "PeerText.h"

// One entry of another app's file, in that file's own units, before it becomes a log record.
struct PeerEntry
{
    enum Kind { FillUp, Service, Expense, Trip };
    Kind kind = FillUp;
    int line = 0; // where the row starts in its file
    QDateTime date; // local time
    double odometer = 0.0;
    int distanceUnit = -1; // Units::Miles / Kilometres; -1 in the vehicle's own unit
    double quantity = 0.0;
    int liquidUnit = -1; // Units::UsGallons / ImperialGallons / Litres; -1 in the vehicle's own
    double total = 0.0;
    bool partial = false;
    bool missed = false; // a fill-up before this one was not recorded
    QString name; // the service or expense
    QString notes;
    QString station;
    // Trips: the arrival, where to and why; odometer and date are the departure's.
    double endOdometer = 0.0;
    QDateTime arrival;
    QString purpose;
    QString contact;
    QString destination;
};

struct PeerFile
{
    QString name;
    QByteArray bytes;
};

struct PeerImportOptions
{
    PeerText::DateOrder dateOrder = PeerText::DateOrder::Auto;
    // The vehicle to take from a file that holds several; empty takes the only one.
    QString sourceVehicle;
};

// What an importer found: the entries, the units it saw, a one-line description and the rows it
// could not use ("line 7: no odometer").
struct PeerImportResult
{
    QString description; // "Fuelly export: 3 fill-ups, 2 services, 1 cost, units mi / gal"
    std::vector<PeerEntry> entries;
    QStringList warnings;
    QString error; // the whole file could not be read
    int skipped = 0;
    // The vehicles named in a file that holds several; with more than one and none chosen the
    // result is an error that asks for one.
    QStringList vehicles;
    bool vehicleNeeded = false; // the error asks for one of the vehicles
    // The order each file's dates were read in (the user's, the file's own or the one its dates
    // show), by file name in file order; a file without dates is left out.
    QList<std::pair<QString, PeerText::DateOrder>> dateOrders;
};

// The reader of one app's export files.
class PeerImporter
{
public:
    virtual ~PeerImporter() = default;
    // The --from name: "fuelly", "fuelio", "lubelogger".
    virtual QString id() const = 0;
    virtual QString title() const = 0;
    // 0 (not this app's) to 100 (certainly), from the first bytes and the file name.
    virtual int detect(const QString &fileName, const QByteArray &head) const = 0;
    virtual PeerImportResult read(const std::vector<PeerFile> &files,
                                  const PeerImportOptions &options) const = 0;

protected:
    // "<title>: 3 fill-ups, 1 service, 2 trips[, units mi / gal]": the kinds present, or "no entries".
    static QString describe(const QString &title, const std::vector<PeerEntry> &entries,
                            const QString &units);
    // "mi / gal", "km / litres", "km / imp. gal"; empty while either unit is unknown (-1).
    static QString unitsText(int distanceUnit, int liquidUnit);
    static void skip(PeerImportResult &result, const QString &file, int line, const QString &reason);
    // Records the order a file's dates were read in; its first section's order stands.
    static void settled(PeerImportResult &result, const QString &file, PeerText::DateOrder order);
    // The order for a column of dates: the user's choice, else the one the dates show; recorded
    // for the file when there are dates.
    static PeerText::DateOrder settleOrder(PeerImportResult &result, const QString &file,
                                           PeerText::DateOrder chosen, const QStringList &dates);
    // Adds an entry. A service that names several reminders ("Oil Change, Rotate Tires, Wipers")
    // becomes one entry per reminder, since a reminder only counts from entries whose name starts
    // with its own: the first keeps the cost and the other names, the others cost nothing.
    static void add(PeerImportResult &result, const PeerEntry &entry);
};

// "dates read as day/month/year", or "dates read as day/month/year in fuel.csv, month/day/year in
// service.csv" when the files differ; empty when no dates were read.
QString dateOrderText(const PeerImportResult &result);

// Every importer, in the order auto-detection asks them.
std::vector<std::unique_ptr<PeerImporter>> allPeerImporters();
// The importer with the best confidence for the first file, null when none is above 0.
const PeerImporter *detectPeerImporter(const std::vector<std::unique_ptr<PeerImporter>> &importers,
                                       const PeerFile &file);
