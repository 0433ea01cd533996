#include "PeerImportPlan.h"

#include <QFileInfo>

#include "platform/Reporter.h"
#include "session/VehicleSession.h"

using namespace Qt::StringLiterals;
using F = DataViewColumns::Field;

PeerImportPlan::PeerImportPlan()
    : m_importers(allPeerImporters())
{ }

QStringList PeerImportPlan::dateOrderNames()
{
    return { u"Auto"_s, u"M/d/yyyy"_s, u"d/M/yyyy"_s, u"yyyy-MM-dd"_s };
}

PeerText::DateOrder PeerImportPlan::dateOrderAt(int index)
{
    switch (index) {
    case 1:
        return PeerText::DateOrder::Mdy;
    case 2:
        return PeerText::DateOrder::Dmy;
    case 3:
        return PeerText::DateOrder::Ymd;
    default:
        return PeerText::DateOrder::Auto;
    }
}

void PeerImportPlan::addFile(const QString &path)
{
    if (!path.isEmpty() && !m_files.contains(path))
        m_files.append(path);
}

void PeerImportPlan::clearFiles()
{
    m_files.clear();
    m_options.sourceVehicle.clear();
    m_run = PeerImportRun();
    m_merged = PeerMergeResult();
}

void PeerImportPlan::refresh(const EntryList &log, const PeerTarget &target)
{
    m_run = PeerImportRun();
    m_merged = PeerMergeResult();
    if (m_files.isEmpty())
        return;
    m_run = PeerImportFiles::read(m_importers, m_files, u"auto"_s, m_options);
    if (m_run.unrecognised)
        m_run.result.error = u"%1 is not an export of Fuelly, Fuelio, LubeLogger, Spritmonitor, Road Trip "
                             "MPG, Drivvo or aCar."_s.arg(QFileInfo(m_files.first()).fileName());
    if (!m_run.result.error.isEmpty())
        return;
    m_merged = PeerLogMerge::merge(log, m_run.result.entries, target);
}

QString PeerImportPlan::recognised() const
{
    if (m_files.isEmpty())
        return noFilesText();
    return m_run.result.error.isEmpty() ? m_run.result.description : m_run.result.error;
}

QString PeerImportPlan::dateOrderNote() const
{
    if (failed() || m_options.dateOrder != PeerText::DateOrder::Auto)
        return QString();
    return dateOrderText(m_run.result);
}

QStringList PeerImportPlan::vehicles() const
{
    return m_run.result.vehicles.size() > 1 ? m_run.result.vehicles : QStringList();
}

QString PeerImportPlan::summary(const QString &vehicleName) const
{
    if (failed())
        return QString();
    const int skipped = m_run.result.skipped + m_merged.unusable;
    // One pass over the text, so a "%1" in a vehicle's name stays as it is.
    return u"%1 %2 to add to %3; %4 already in the log; %5 %6 skipped."_s.arg(
        QString::number(m_merged.added), m_merged.added == 1 ? u"entry"_s : u"entries"_s, vehicleName,
        QString::number(m_merged.duplicates), QString::number(skipped), skipped == 1 ? u"row"_s : u"rows"_s);
}

QStringList PeerImportPlan::warnings() const
{
    return m_run.result.warnings + m_merged.warnings;
}

QList<DataViewColumns::Column> PeerImportPlan::previewColumns()
{
    return { { u"Date"_s, 80, F::Date },       { u"Odometer"_s, 70, F::Mileage },
             { u"Entry"_s, 110, F::TypeText }, { u"Quantity"_s, 60, F::Quantity },
             { u"Total"_s, 60, F::Total },     { u"Cost"_s, 60, F::Cost },
             { u"Economy"_s, 60, F::Economy }, { u"End"_s, 60, F::EndMileage },
             { u"Purpose"_s, 80, F::Purpose }, { u"Note"_s, 100, F::Note } };
}

QList<QStringList> PeerImportPlan::previewRows(const LocaleFormats &locale, int limit) const
{
    QList<QStringList> rows;
    const QList<DataViewColumns::Column> columns = previewColumns();
    for (size_t at : m_merged.addedAt) {
        if (rows.size() >= limit)
            break;
        rows.append(DataViewColumns::rowTexts(m_merged.entries[at], columns, locale));
    }
    return rows;
}

PeerTarget PeerImportPlan::targetOf(const VehicleSession &session)
{
    PeerTarget target;
    target.distanceUnit = session.vehicle().distanceUnit;
    target.liquidUnit = session.vehicle().liquidUnit;
    target.economyUnit = session.vehicle().economyUnit;
    target.startOdometer = session.vehicle().startOdometer;
    target.costPerMile = session.vehicle().costPerMile;
    return target;
}

bool PeerImportPlan::apply(VehicleSession &session, Reporter &reporter,
                           const std::function<void(int, int)> &progress)
{
    constexpr int Steps = 3;
    // The History screen saves its changes straight to the file: start from the file.
    session.reopen();
    if (!session.logLoaded()) {
        reporter.error(
            u"The log of %1 could not be read; nothing was imported."_s.arg(session.currentVehicleName()));
        return false;
    }
    // The files may have changed since the preview: what is saved is what they hold now.
    progress(0, Steps);
    refresh(session.entries(), targetOf(session));
    if (failed()) {
        reporter.error(recognised());
        return false;
    }
    progress(1, Steps);
    if (m_merged.added == 0)
        return true;
    progress(2, Steps);
    EntryList entries = m_merged.entries;
    if (!session.replaceEntries(std::move(entries)))
        return false;
    progress(Steps, Steps);
    return true;
}

QString PeerImportPlan::doneText(const QString &vehicleName) const
{
    return u"Added %1 %2 to %3; skipped %4 as duplicates, %5 as unusable."_s.arg(
        QString::number(m_merged.added), m_merged.added == 1 ? u"entry"_s : u"entries"_s, vehicleName,
        QString::number(m_merged.duplicates), QString::number(m_run.result.skipped + m_merged.unusable));
}
