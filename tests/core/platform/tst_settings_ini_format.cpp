// The option and preference stores' own INI codec against files QSettings itself writes: what
// users already have must read back unchanged, and QSettings must read what we write.
#include "core/files_helper.h"
#include "platform/SettingsIniFormat.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class TestSettingsIniFormat : public QObject
{
    Q_OBJECT

private slots:
    void sameTextAsQSettings();
};

void TestSettingsIniFormat::sameTextAsQSettings()
{
    QTemporaryDir dir;
    const QString tricky = u" a,b;c=\"q\"\\ \t\n@x \u00fc \U0001F697 "_s;
    const QSettings::SettingsMap values { { u"Options/Path"_s, tricky },
                                          { u"Options/R5"_s, 3u },
                                          { u"My Section/Some Key"_s, u"@at"_s },
                                          { u"Today/Empty"_s, QString() } };
    const QString qtFile = dir.filePath(u"qt.ini"_s);
    {
        QSettings qt(qtFile, QSettings::IniFormat);
        for (auto it = values.cbegin(); it != values.cend(); ++it)
            qt.setValue(it.key(), it.value());
    }
    const QByteArray qtBytes = TestFiles::read(qtFile);
    const QSettings::SettingsMap parsed = SettingsIniFormat::parse(qtBytes);
    QCOMPARE(parsed.value(u"Options/Path"_s).toString(), tricky);
    QCOMPARE(parsed.value(u"Options/R5"_s).toString(), u"3"_s);
    QCOMPARE(parsed.value(u"My Section/Some Key"_s).toString(), u"@at"_s);
    QCOMPARE(parsed.value(u"Today/Empty"_s).toString(), QString());
    QCOMPARE(SettingsIniFormat::serialize(values), qtBytes);
}

QTEST_GUILESS_MAIN(TestSettingsIniFormat)
#include "tst_settings_ini_format.moc"
