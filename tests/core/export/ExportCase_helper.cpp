#include "ExportCase_helper.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include "export/ExportSelection.h"
#include "log/CVCItemJson.h"

using namespace Qt::StringLiterals;

quint32 caseTime(const QString &iso)
{
    QDateTime time = QDateTime::fromString(iso, Qt::ISODate);
    time.setTimeSpec(Qt::UTC);
    return quint32(time.toSecsSinceEpoch());
}

static QJsonObject readJson(const QString &path, QString *error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = u"cannot read "_s + path;
        return {};
    }
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &parseError);
    if (!document.isObject())
        *error = path + u": "_s + parseError.errorString();
    return document.object();
}

bool ExportCase::load(const QString &caseFolder, QString *error)
{
    folder = caseFolder;
    json = readJson(folder + u"/case.json"_s, error);
    if (!error->isEmpty())
        return false;
    QJsonArray records = json.value(u"entries"_s).toArray();
    if (json.contains(u"log"_s)) {
        records = readJson(folder + u"/../"_s + json.value(u"log"_s).toString(), error)
                      .value(u"entries"_s)
                      .toArray();
        if (!error->isEmpty())
            return false;
    }
    for (const QJsonValue &value : std::as_const(records)) {
        QJsonObject record = value.toObject();
        for (const QString &key : { u"entryDate"_s, u"departTime"_s, u"arriveTime"_s }) {
            if (record.value(key).isString())
                record.insert(key, qint64(caseTime(record.value(key).toString())));
        }
        entries.push_back(cvcItemFromJson(record));
    }
    clock.set(caseTime(json.value(u"now"_s).toString()));
    from = QDate::fromString(json.value(u"from"_s).toString(), Qt::ISODate);
    to = QDate::fromString(json.value(u"to"_s).toString(), Qt::ISODate);
    data.vehicleName = json.value(u"vehicleName"_s).toString();
    data.tripRate = json.value(u"tripRate"_s).toDouble();
    data.lastOdometer = json.value(u"lastOdometer"_s).toDouble();
    data.typeFilter = DataViewFilter::Type(json.value(u"typeFilter"_s).toInt(DataViewFilter::AllTypes));
    data.periodFilter
        = DataViewFilter::Period(json.value(u"periodFilter"_s).toInt(DataViewFilter::AllPeriods));
    data.locale = &locale;
    data.clock = &clock;
    return true;
}

Exporter::Format ExportCase::format() const
{
    const QString name = json.value(u"format"_s).toString();
    return name == u"html"_s ? Exporter::Format::Html
        : name == u"xml"_s   ? Exporter::Format::Xml
                             : Exporter::Format::Csv;
}

QString ExportCase::expectedFile() const
{
    static const char *const names[] = { "/expected.csv", "/expected.htm", "/expected.xml" };
    return folder + QString::fromLatin1(names[int(format())]);
}

void ExportCase::select()
{
    DataViewFilter filter;
    filter.type = data.typeFilter;
    filter.period = data.periodFilter;
    filter.startDate = from;
    filter.endDate = to;
    data.entries = ExportSelection::forFormat(format(), entries, filter, clock.now());
}
