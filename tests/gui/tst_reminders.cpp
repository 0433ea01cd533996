#include "gui_helper.h"
#include <QAction>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QtTest>

#include "log/LogArchive.h"
#include "reminders/ReminderDialog.h"
#include "widgets/TileCounter.h"

using namespace Qt::StringLiterals;

namespace {

// 2024-03-01 00:00:00 UTC.
constexpr quint32 Now = 1709251200;

// Runs check on the next modal dialog, then closes it.
void onNextModal(std::function<void(QDialog *)> check)
{
    QTimer::singleShot(0, [check] {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        check(dialog);
        dialog->reject();
    });
}

} // namespace

// The calendar case of the CLI tests: "My Car" with services in every state, and a log whose
// tire rotation at the last reading (12346) is newer than the settings file.
struct CalendarSandbox : Sandbox
{
    CalendarSandbox()
        : Sandbox(Now)
    {
        const QString folder = data();
        QDir().mkpath(folder);
        QFile::copy(u":/install/Lists.ini"_s, folder + u"Lists.ini"_s);
        QFile::copy(QStringLiteral(TARVANE_TEST_DATA "/calc/due-calendar/Velcora.ini"),
                    folder + u"Velcora.ini"_s);
        QFile::setPermissions(folder + u"Velcora.ini"_s, QFile::ReadOwner | QFile::WriteOwner);
        LogArchive().write(
            folder + u"MYCAR0001.vcb"_s,
            { TestFiles::record("'odometer': 12000, 'entryDate': 1704067200, 'typeText': 'Fuel'"),
              TestFiles::record("'iconIndex': 4, 'entryType': 1, 'odometer': 12346, "
                                "'entryDate': 1708387200, 'typeText': 'Rotate Tires'") });
        options.setValue(u"Options"_s, u"Name"_s, u"My Car"_s);
        startSession().saveAfterStartup();
        reporter.clear();
    }
};

class TestReminders : public QObject
{
    Q_OBJECT

private slots:
    void fixedScreen();
    void customScreen();
    void saveToCalendar();
    void settingsFileFails();
    void mainWindowOpensReminders();
};

void TestReminders::fixedScreen()
{
    CalendarSandbox box;
    ReminderDialog dialog(ReminderDialog::Screen::Fixed, *box.session, box.chooser);
    QCOMPARE(dialog.windowTitle(), u"Reminders"_s);
    QCOMPARE(dialog.currentReadingCounter()->tiles(), whole("0012346"));
    QStringList labels;
    for (QLabel *label : dialog.rowLabels())
        labels << label->text();
    QCOMPARE(labels,
             (QStringList { u"Lube, Oil and Filter Change"_s, u"Coolant Flush"_s, u"Transmission Service"_s,
                            u"Engine Tune-Up"_s, u"Tire Rotate & Balance"_s }));
    QList<QList<int>> dates;
    QList<QList<int>> readings;
    for (int i = 0; i < 5; ++i) {
        dates << dialog.dateCounters().at(i)->tiles();
        readings << dialog.readingCounters().at(i)->tiles();
    }
    // Apr 15th, no date, Feb 1st, Jan 31st (1970: never done), Aug 18th (from the log's rotation).
    QCOMPARE(dates,
             (QList<QList<int>> { { 252, 275 }, { 248, 292 }, { 250, 261 }, { 249, 291 }, { 256, 278 } }));
    QCOMPARE(readings,
             (QList<QList<int>> { whole("0012000", true), whole("0030000"), whole("0000000"),
                                  whole("0000000"), whole("0018346") }));
    for (const QString &caption : { u"REMINDER"_s, u"DATE"_s, u"MILEAGE"_s }) {
        const QList<QLabel *> found = dialog.findChildren<QLabel *>();
        QVERIFY2(std::any_of(found.begin(), found.end(), [&](QLabel *l) { return l->text() == caption; }),
                 qPrintable(caption));
    }
    QCOMPARE(dialog.findChild<QLabel *>(u"overdueNote"_s)->text(),
             u"Odometers that appear RED are overdue"_s);
    for (const QString &caption : { u"OK"_s, u"Cancel"_s, u"CUSTOM"_s, u"Save to Calendar…"_s }) {
        QVERIFY2(dialog.button(caption), qPrintable(caption));
        QVERIFY(dialog.button(caption)->minimumHeight() >= 32);
    }
    QVERIFY(box.reporter.messages().isEmpty());
    QVERIFY(dialog.sizeHint().width() <= 480 && dialog.sizeHint().height() <= 640);
    shoot(&dialog, u"reminders"_s);
    dialog.resize(480, 640);
    shoot(&dialog, u"reminders-480x640"_s);
}

void TestReminders::customScreen()
{
    CalendarSandbox box;
    ReminderDialog dialog(ReminderDialog::Screen::Fixed, *box.session, box.chooser);
    dialog.show();
    bool seen = false;
    onNextModal([&](QDialog *modal) {
        auto *custom = qobject_cast<ReminderDialog *>(modal);
        QVERIFY(custom);
        seen = true;
        QCOMPARE(custom->windowTitle(), u"Custom Reminders"_s);
        QVERIFY(!custom->currentReadingCounter());
        QStringList labels;
        QList<QList<int>> tiles;
        for (int i = 0; i < 5; ++i) {
            labels << custom->rowLabels().at(i)->text();
            tiles << custom->dateCounters().at(i)->tiles() << custom->readingCounters().at(i)->tiles();
        }
        QCOMPARE(labels,
                 (QStringList { u"Cabin filter, Größe M; front"_s, u"Wax"_s, u"REMINDER 3  NOT SET"_s,
                                u"REMINDER 4  NOT SET"_s, u"REMINDER 5  NOT SET"_s }));
        const QList<int> noDate { 248, 292 };
        QCOMPARE(tiles,
                 (QList<QList<int>> { { 249, 291 },
                                      whole("0025000"),
                                      { 249, 271 },
                                      whole("0011000", true),
                                      noDate,
                                      whole("0000000"),
                                      noDate,
                                      whole("0000000"),
                                      noDate,
                                      whole("0000000") }));
        QVERIFY(custom->button(u"Close"_s));
        QVERIFY(!custom->button(u"CUSTOM"_s));
        QVERIFY(custom->button(u"Save to Calendar…"_s));
        shoot(custom, u"reminders-custom"_s);
        custom->resize(480, 640);
        shoot(custom, u"reminders-custom-480x640"_s);
    });
    QTest::mouseClick(dialog.button(u"CUSTOM"_s), Qt::LeftButton);
    QVERIFY(seen);
}

void TestReminders::saveToCalendar()
{
    CalendarSandbox box;
    ReminderDialog dialog(ReminderDialog::Screen::Fixed, *box.session, box.chooser);
    const QString file = box.dir.filePath(u"car.ics"_s);

    box.chooser.enqueueCancel();
    dialog.saveToCalendar();
    QVERIFY(!QFile::exists(file));

    box.chooser.enqueue(file);
    QTest::mouseClick(dialog.button(u"Save to Calendar…"_s), Qt::LeftButton);
    QCOMPARE(box.chooser.requests(),
             QStringList(2, u"save "_s + box.context.paths.myDocuments() + u" My Car.ics"_s));
    QCOMPARE(box.reporter.texts(), QStringList { u"Saved 5 due dates to "_s + file });
    // The file the command line writes for the same moment.
    QCOMPARE(readAll(file), readAll(QStringLiteral(TARVANE_TEST_DATA "/calc/due-calendar/expected.ics")));

    // A folder that does not exist: the message, and nothing written.
    box.reporter.clear();
    const QString bad = box.dir.filePath(u"none/car.ics"_s);
    box.chooser.enqueue(bad);
    dialog.saveToCalendar();
    QCOMPARE(box.reporter.messages().size(), 1);
    QCOMPARE(box.reporter.messages().first().kind, Reporter::Kind::Error);
    QVERIFY(box.reporter.texts().first().startsWith(u"Unable to write the calendar file "_s + bad));
    QVERIFY(!QFile::exists(bad));
}

void TestReminders::settingsFileFails()
{
    CalendarSandbox box;
    const QString ini = box.context.paths.dataFolder() + u"Velcora.ini"_s;
    QVERIFY(QFile::remove(ini));
    ReminderDialog dialog(ReminderDialog::Screen::Custom, *box.session, box.chooser);
    QCOMPARE(
        box.reporter.texts(),
        QStringList {
            u"ERROR 601:Cannot load ini file.\nPlease check your documentation\nfor possible causes."_s });
    // Empty values: as if never done. Wax falls due at its interval, below the reading: red; the
    // cabin filter's 365 days count from 1970 (Jan 1st 1971).
    QCOMPARE(dialog.readingCounters().at(1)->tiles(), whole("0005000", true));
    QCOMPARE(dialog.readingCounters().at(0)->tiles(), whole("0015000"));
    QCOMPARE(dialog.dateCounters().at(0)->tiles(), (QList<int> { 249, 261 }));
    QVERIFY(!QFile::exists(ini));
}

void TestReminders::mainWindowOpensReminders()
{
    CalendarSandbox box;
    MainWindow &window = box.startWindow();
    auto *button = window.findChild<QPushButton *>(u"remindersButton"_s);
    QVERIFY(button);
    QCOMPARE(button->text(), u"REMINDERS"_s);
    auto *action = window.findChild<QAction *>(u"remindersAction"_s);
    QVERIFY(action);
    QCOMPARE(action->text().remove(u'&'), u"Reminders"_s);
    window.show();

    int opened = 0;
    const auto check = [&](QDialog *dialog) {
        QCOMPARE(dialog->windowTitle(), u"Reminders"_s);
        ++opened;
    };
    onNextModal(check);
    QTest::mouseClick(button, Qt::LeftButton);
    onNextModal(check);
    action->trigger();
    QCOMPARE(opened, 2);
    shoot(&window, u"main-with-reminders-button"_s);
}

QTEST_MAIN(TestReminders)
#include "tst_reminders.moc"
