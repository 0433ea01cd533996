#include "CliRunner_helper.h"

#include <QDateTime>
#include <QDirIterator>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTest>
#include <QTextStream>

#include "CliApp.h"
#include "log/CVCItemJson.h"
#include "log/LogArchive.h"

using namespace Qt::StringLiterals;

CliResult CliRunner::run(const QStringList &arguments)
{
    CliResult result;
    QTextStream out(&result.out);
    QTextStream err(&result.err);
    CliApp app(out, err);
    app.setStores(&options, &preferences);
    result.exitCode = app.run(QStringList { u"tarvane-cli"_s, u"--root"_s, m_root } + arguments);
    out.flush();
    err.flush();
    return result;
}

CliResult CliRunner::runLine(const QString &line)
{
    return run(QProcess::splitCommand(line));
}

void CliRunner::prepare(const EntryList &log, bool makeCurrent)
{
    QCOMPARE(run({ u"vehicles"_s }).exitCode, 0);
    if (makeCurrent)
        options.setValue(u"Options"_s, u"Name"_s, u"My Car"_s);
    QVERIFY(LogArchive().write(dataFolder() + u"MYCAR0001.vcb"_s, log));
}

QString CliRunner::dataFolder() const
{
    return m_root + u"/My Documents/Tarvane Files/"_s;
}

namespace CliFiles {

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

QMap<QString, QByteArray> snapshot(const QString &folder)
{
    QMap<QString, QByteArray> files;
    QDirIterator it(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        files.insert(path, readAll(path));
    }
    return files;
}

void put(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QCOMPARE(file.write(bytes), bytes.size());
}

QList<double> odometers(const QString &path)
{
    EntryList list;
    if (!LogArchive().read(path, list))
        return { -1 };
    QList<double> values;
    for (const CVCItem &item : list)
        values.append(item.odometer);
    return values;
}

CVCItem record(const QByteArray &fields)
{
    return cvcItemFromJson(
        QJsonDocument::fromJson('{' + QByteArray(fields).replace('\'', '"') + '}').object());
}

quint32 utc(const char *iso)
{
    return quint32(QDateTime::fromString(QString::fromLatin1(iso), Qt::ISODate).toSecsSinceEpoch());
}

quint32 at(int year, int month, int day)
{
    return quint32(QDateTime(QDate(year, month, day), QTime(12, 0), Qt::UTC).toSecsSinceEpoch());
}

} // namespace CliFiles
