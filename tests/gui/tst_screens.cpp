// Every screen of the program opened on the screen this test runs on (CTest runs it on a 480x640
// screen and on a 1280x900 one at scale 2): each window fits, and no button outside a scroll area
// is cut off. A PNG of each goes to the screenshots folder, named after the screen.
#include "gui_helper.h"
#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QScreen>
#include <QScrollArea>
#include <QtTest>

#include "app/AboutDialog.h"
#include "forms/EditListDialog.h"
#include "forms/FuelDialog.h"
#include "forms/MaintenanceDialog.h"
#include "forms/TripDialog.h"
#include "settings/PickLists.h"

using namespace Qt::StringLiterals;

namespace {

// Buttons a scroll area does not hold, cut off by their window's edge.
QStringList cutOffButtons(QWidget *window)
{
    QStringList cut;
    const QRect inside = window->rect();
    for (QAbstractButton *button : window->findChildren<QAbstractButton *>()) {
        if (!button->isVisibleTo(window))
            continue;
        bool scrolled = false;
        for (QWidget *w = button->parentWidget(); w && w != window; w = w->parentWidget())
            scrolled = scrolled || qobject_cast<QScrollArea *>(w);
        const QRect rect(button->mapTo(window, QPoint(0, 0)), button->size());
        if (!scrolled && !inside.contains(rect))
            cut.append(button->text().isEmpty() ? button->objectName() : button->text());
    }
    return cut;
}

// Combo boxes and date fields whose edit field reaches their bottom edge, hiding the frame there.
QStringList clippedFields(QWidget *window)
{
    QStringList clipped;
    for (QWidget *owner : window->findChildren<QWidget *>()) {
        if (!qobject_cast<QComboBox *>(owner) && !qobject_cast<QAbstractSpinBox *>(owner))
            continue;
        auto *edit = owner->findChild<QLineEdit *>(QString(), Qt::FindDirectChildrenOnly);
        if (edit && owner->isVisibleTo(window) && edit->geometry().bottom() >= owner->height() - 1)
            clipped.append(owner->objectName());
    }
    return clipped;
}

} // namespace

class TestScreens : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyScreenFits();

private:
    void check(QWidget *window, const QString &name);

    QString m_tag;
    QStringList m_problems;
};

void TestScreens::initTestCase()
{
    const QSize screen = QGuiApplication::primaryScreen()->size();
    m_tag = u"%1x%2"_s.arg(screen.width()).arg(screen.height());
    if (QGuiApplication::primaryScreen()->devicePixelRatio() != 1.0)
        m_tag += u"-scale%1"_s.arg(QGuiApplication::primaryScreen()->devicePixelRatio());
}

void TestScreens::check(QWidget *window, const QString &name)
{
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window));
    QCoreApplication::processEvents();
    const QRect available = window->screen()->availableGeometry();
    if (window->width() > available.width() || window->height() > available.height())
        m_problems.append(u"%1 is %2x%3 on a %4x%5 screen"_s.arg(name)
                              .arg(window->width())
                              .arg(window->height())
                              .arg(available.width())
                              .arg(available.height()));
    const QStringList cut = cutOffButtons(window);
    if (!cut.isEmpty())
        m_problems.append(name + u" cuts off: "_s + cut.join(u", "_s));
    const QStringList clipped = clippedFields(window);
    if (!clipped.isEmpty())
        m_problems.append(name + u" clips the bottom edge of: "_s + clipped.join(u", "_s));
    QVERIFY(window->grab().save(screenshotFolder() + u"/screen-"_s + m_tag + u'-' + name + u".png"_s));
    window->hide();
}

void TestScreens::everyScreenFits()
{
    Sandbox box(1709251200);
    box.session = std::make_unique<VehicleSession>(box.context);
    VehicleSession &session = *box.session;
    session.start(false, u"My Car"_s);
    MainWindow &window = box.startWindow();
    RecordingReporter &reporter = box.reporter;
    const AppContext &context = box.context;
    check(&window, u"main"_s);

    const QString lists = PickLists::listsPath(context.paths);
    CVCItem fuel = session.newEntry(CVCItem::Fuel);
    FuelDialog fuelDialog(session.formContext(), fuel, lists, reporter, &window);
    check(&fuelDialog, u"fuel"_s);
    CVCItem repair = session.newEntry(CVCItem::Maintenance);
    MaintenanceDialog repairDialog(session.formContext(), repair, lists, reporter, &window);
    check(&repairDialog, u"maintenance"_s);
    CVCItem trip = session.newEntry(CVCItem::Trip);
    TripDialog tripDialog(session.formContext(), trip, context.paths, session.installPath(), reporter,
                          &window);
    check(&tripDialog, u"trips"_s);
    EditListDialog editList(PickLists::purposeList(), lists, reporter, &window);
    check(&editList, u"edit-list"_s);
    AboutDialog about(session.dataFolder(), &window);
    check(&about, u"about"_s);
    HelpDialog helpDialog(u"fuel"_s, &window);
    check(&helpDialog, u"help"_s);

    QFileDialog open(&window, u"Vehicle Restore"_s, box.dir.path(), u"Backups (*.bak);;All files (*)"_s);
    open.setOption(QFileDialog::DontUseNativeDialog);
    DialogFileChooser::fitToScreen(open);
    check(&open, u"file-dialog"_s);

    QCOMPARE(m_problems, QStringList());
}

QTEST_MAIN(TestScreens)
#include "tst_screens.moc"
