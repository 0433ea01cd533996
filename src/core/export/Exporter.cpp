#include "Exporter.h"

#include <QSaveFile>

#include "CsvExport.h"
#include "ExportStream.h"
#include "HtmlExport.h"
#include "XmlExport.h"
#include "log/VehicleLog.h"
#include "platform/Reporter.h"

using namespace Qt::StringLiterals;

QString ExportData::effectiveName() const
{
    return vehicleName.isEmpty() ? u"UnKnown"_s : vehicleName;
}

bool Exporter::write(const QString &fileName)
{
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly)) {
        m_error = u"Unable to create %1: %2"_s.arg(fileName, file.errorString());
        return false;
    }
    if (!write(&file)) {
        file.cancelWriting();
        return false;
    }
    if (!file.commit()) {
        m_error = u"Unable to write %1: %2"_s.arg(fileName, file.errorString());
        return false;
    }
    return true;
}

bool Exporter::confirm(Reporter &) const
{
    return true;
}

QString Exporter::filePath(const QString &folder) const
{
    return folder + m_data.effectiveName() + suffix();
}

bool Exporter::finish(ExportStream &stream)
{
    if (stream.finish())
        return true;
    m_error = u"Unable to write the %1 export: %2"_s.arg(name(), stream.deviceError());
    return false;
}

std::unique_ptr<Exporter> createExporter(Exporter::Format format, const ExportData &data)
{
    switch (format) {
    case Exporter::Format::Csv:
        return std::make_unique<CsvExport>(data);
    case Exporter::Format::Html:
        return std::make_unique<HtmlExport>(data);
    case Exporter::Format::Xml:
        return std::make_unique<XmlExport>(data);
    }
    return nullptr;
}

bool ExportRun::toFolder(Exporter &exporter, const QString &folder, Reporter &reporter)
{
    if (folder.isEmpty()) {
        reporter.error(pathNotSetMessage());
        return false;
    }
    const QString name = exporter.baseName();
    // The name comes from the user's vehicle list; it must not reach outside the chosen folder.
    if (!VehicleLog::isSafeVin(name)) {
        reporter.error(
            u"The vehicle name \"%1\" cannot be used as a file name.\nExport Aborted!"_s.arg(name));
        return false;
    }
    QString base = folder;
    if (!base.endsWith(u'/') && !base.endsWith(u'\\'))
        base += u'/';
    const QString path = exporter.filePath(base);
    if (!exporter.write(path)) {
        reporter.error(exporter.createErrorMessage());
        return false;
    }
    reporter.info(exporter.successMessage(path));
    return true;
}
