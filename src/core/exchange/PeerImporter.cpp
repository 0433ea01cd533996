#include "PeerImporter.h"

#include "ACarImporter.h"
#include "DrivvoImporter.h"
#include "FuelioImporter.h"
#include "FuellyImporter.h"
#include "LubeLoggerImporter.h"
#include "RoadTripImporter.h"
#include "SpritmonitorImporter.h"
#include "calc/Units.h"

#include <algorithm>

using namespace Qt::StringLiterals;

QString PeerImporter::unitsText(int distanceUnit, int liquidUnit)
{
    if (distanceUnit < 0 || liquidUnit < 0)
        return {};
    return (distanceUnit == Units::Miles ? u"mi / "_s : u"km / "_s)
        + (liquidUnit == Units::Litres          ? u"litres"_s
               : liquidUnit == Units::UsGallons ? u"gal"_s
                                                : u"imp. gal"_s);
}

QString PeerImporter::describe(const QString &title, const std::vector<PeerEntry> &entries,
                               const QString &units)
{
    int fills = 0;
    int services = 0;
    int costs = 0;
    int trips = 0;
    for (const PeerEntry &entry : entries) {
        if (entry.kind == PeerEntry::FillUp)
            ++fills;
        else if (entry.kind == PeerEntry::Service)
            ++services;
        else if (entry.kind == PeerEntry::Trip)
            ++trips;
        else
            ++costs;
    }
    // Only the kinds the file has, as "1 service" or "2 services"; "no entries" for none.
    QStringList counts;
    const std::pair<int, const char16_t *> kinds[]
        = { { fills, u"fill-up" }, { services, u"service" }, { costs, u"cost" }, { trips, u"trip" } };
    for (const auto &[count, word] : kinds) {
        if (count > 0)
            counts.append(
                u"%1 %2%3"_s.arg(count).arg(QString::fromUtf16(word)).arg(count == 1 ? u""_s : u"s"_s));
    }
    QString text = title + u": "_s + (counts.isEmpty() ? u"no entries"_s : counts.join(u", "_s));
    if (!units.isEmpty())
        text += u", units "_s + units;
    return text;
}

void PeerImporter::skip(PeerImportResult &result, const QString &file, int line, const QString &reason)
{
    result.warnings.append(u"%1 line %2: %3"_s.arg(file).arg(line).arg(reason));
    ++result.skipped;
}

void PeerImporter::settled(PeerImportResult &result, const QString &file, PeerText::DateOrder order)
{
    const bool known = std::any_of(result.dateOrders.cbegin(), result.dateOrders.cend(),
                                   [&](const auto &one) { return one.first == file; });
    if (!known)
        result.dateOrders.append({ file, order });
}

PeerText::DateOrder PeerImporter::settleOrder(PeerImportResult &result, const QString &file,
                                              PeerText::DateOrder chosen, const QStringList &dates)
{
    const PeerText::DateOrder order
        = chosen == PeerText::DateOrder::Auto ? PeerText::inferDateOrder(dates) : chosen;
    if (!dates.isEmpty())
        settled(result, file, order);
    return order;
}

QString dateOrderText(const PeerImportResult &result)
{
    auto words = [](PeerText::DateOrder order) {
        switch (order) {
        case PeerText::DateOrder::Mdy:
            return u"month/day/year"_s;
        case PeerText::DateOrder::Dmy:
            return u"day/month/year"_s;
        case PeerText::DateOrder::Ymd:
            return u"year-month-day"_s;
        case PeerText::DateOrder::Auto:
            break;
        }
        return u"each date as it reads best"_s;
    };
    if (result.dateOrders.isEmpty())
        return QString();
    const bool same = std::all_of(result.dateOrders.cbegin(), result.dateOrders.cend(), [&](const auto &one) {
        return one.second == result.dateOrders.first().second;
    });
    if (same)
        return u"dates read as "_s + words(result.dateOrders.first().second);
    QStringList parts;
    for (const auto &[file, order] : result.dateOrders)
        parts.append(words(order) + u" in "_s + file);
    return u"dates read as "_s + parts.join(u", "_s);
}

void PeerImporter::add(PeerImportResult &result, const PeerEntry &entry)
{
    static const QStringList reminders
        = { u"Oil Change"_s, u"Coolant Flush"_s, u"Transmission Service"_s, u"Tune-Up"_s, u"Rotate Tires"_s };
    const QStringList names = entry.name.split(u", "_s);
    QStringList own;
    QStringList others;
    for (const QString &name : names)
        (reminders.contains(name) ? own : others).append(name);
    if (entry.kind != PeerEntry::Service || own.size() < 2) {
        result.entries.push_back(entry);
        return;
    }
    PeerEntry first = entry;
    first.name = (QStringList(own.first()) + others).join(u", "_s);
    result.entries.push_back(first);
    for (qsizetype i = 1; i < own.size(); ++i) {
        PeerEntry more = entry;
        more.name = own.at(i);
        more.total = 0.0;
        result.entries.push_back(more);
    }
}

std::vector<std::unique_ptr<PeerImporter>> allPeerImporters()
{
    std::vector<std::unique_ptr<PeerImporter>> importers;
    importers.push_back(std::make_unique<FuellyImporter>());
    importers.push_back(std::make_unique<FuelioImporter>());
    importers.push_back(std::make_unique<LubeLoggerImporter>());
    importers.push_back(std::make_unique<SpritmonitorImporter>());
    importers.push_back(std::make_unique<RoadTripImporter>());
    importers.push_back(std::make_unique<DrivvoImporter>());
    importers.push_back(std::make_unique<ACarImporter>());
    return importers;
}

const PeerImporter *detectPeerImporter(const std::vector<std::unique_ptr<PeerImporter>> &importers,
                                       const PeerFile &file)
{
    const QByteArray head = file.bytes.left(4096);
    const PeerImporter *best = nullptr;
    int bestScore = 0;
    for (const auto &importer : importers) {
        const int score = importer->detect(file.name, head);
        if (score > bestScore) {
            best = importer.get();
            bestScore = score;
        }
    }
    return best;
}
