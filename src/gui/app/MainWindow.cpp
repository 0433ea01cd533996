#include "MainWindow.h"

#include "AboutDialog.h"
#include "Banner.h"
#include "FileChooser.h"
#include "HelpLauncher.h"
#include "VehicleSelector.h"
#include "calc/CounterTiles.h"
#include "dataview/HistoryDialog.h"
#include "forms/EntryFormRunner.h"
#include "log/VehicleBackup.h"
#include "platform/CFormat.h"
#include "reminders/ReminderDialog.h"
#include "session/VehicleSession.h"
#include "settings/IniFile.h"
#include "setup/SetupRunner.h"
#include "stats/StatisticsContext.h"
#include "storage/FullBackupDialog.h"
#include "widgets/FileChangeWatcher.h"
#include "widgets/IconArt.h"
#include "widgets/ScreenFit.h"
#include "widgets/TileCounter.h"

#include <QCloseEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QPushButton>
#include <QSignalBlocker>
#include <QToolBar>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
constexpr int MinimumControlHeight = 32;

// One framed gauge: a caption over a counter, with the unit under it.
QFrame *gauge(QWidget *parent, QLabel *caption, TileCounter *counter, QLabel *unit)
{
    auto *frame = new QFrame(parent);
    frame->setObjectName(u"gauge"_s);
    frame->setFrameShape(QFrame::StyledPanel);
    auto *layout = new QVBoxLayout(frame);
    layout->setContentsMargins(8, 6, 8, 6);
    layout->setSpacing(4);
    caption->setAlignment(Qt::AlignHCenter);
    QFont bold = caption->font();
    bold.setBold(true);
    caption->setFont(bold);
    unit->setAlignment(Qt::AlignHCenter);
    layout->addWidget(caption);
    // Counters differ in height; the stretches keep the unit lines of all gauges level.
    layout->addStretch(1);
    layout->addWidget(counter, 0, Qt::AlignHCenter);
    layout->addStretch(1);
    layout->addWidget(unit);
    return frame;
}

// blank gives the counter's drums when the session has no tiles at all, so "No Data" keeps the
// counter's shape.
void showCounter(TileCounter *counter, const CounterState &state, const QList<int> &blank)
{
    if (!state.noData) {
        counter->setTiles(state.tiles, state.text);
        return;
    }
    if (counter->tiles().isEmpty() || !state.tiles.isEmpty())
        counter->setTiles(state.tiles.isEmpty() ? blank : state.tiles);
    counter->setNoData();
}
} // namespace

MainWindow::MainWindow(VehicleSession &session, FileChooser &chooser, HelpLauncher &help, QWidget *parent)
    : QMainWindow(parent)
    , m_session(session)
    , m_chooser(chooser)
    , m_help(help)
{
    setWindowTitle(u"Tarvane"_s);
    m_watcher = new FileChangeWatcher(this, [this] { catchUp(); });
    buildActions();
    setCentralWidget(buildCentre());
    // A 480x640 window, or less on a smaller screen (the frame's title bar needs room too).
    ScreenFit::resize(this, QSize(480, 640));
    refresh();
}

QString MainWindow::preferenceSection()
{
    return u"MainWindow"_s;
}

void MainWindow::buildActions()
{
    m_helpAction = new QAction(IconArt::icon(IconArt::Picture::Info), u"&Help"_s, this);
    m_helpAction->setShortcut(QKeySequence::HelpContents);
    m_helpAction->setIconText(u"Help"_s);
    connect(m_helpAction, &QAction::triggered, this, &MainWindow::showHelp);

    m_aboutAction = new QAction(IconArt::icon(IconArt::Picture::Welcome), u"&About"_s, this);
    m_aboutAction->setShortcut(QKeySequence(u"Ctrl+Shift+A"_s));
    m_aboutAction->setIconText(u"About"_s);
    connect(m_aboutAction, &QAction::triggered, this, &MainWindow::showAbout);

    m_backupAction = new QAction(IconArt::icon(IconArt::Picture::Backup), u"Vehicle &Backup"_s, this);
    m_backupAction->setShortcut(QKeySequence(u"Ctrl+B"_s));
    m_backupAction->setIconText(u"Backup"_s);
    connect(m_backupAction, &QAction::triggered, this, &MainWindow::backupVehicle);

    m_restoreAction = new QAction(IconArt::icon(IconArt::Picture::Restore), u"Vehicle &Restore"_s, this);
    m_restoreAction->setShortcut(QKeySequence(u"Ctrl+R"_s));
    m_restoreAction->setIconText(u"Restore"_s);
    connect(m_restoreAction, &QAction::triggered, this, &MainWindow::restoreVehicle);

    m_fuelAction = new QAction(IconArt::entryIcon(0), u"&Fuel"_s, this);
    m_fuelAction->setShortcut(QKeySequence(u"Ctrl+F"_s));
    m_fuelAction->setIconText(u"Fuel"_s);
    connect(m_fuelAction, &QAction::triggered, this, [this] { addEntry(CVCItem::Fuel); });

    m_repairsAction = new QAction(IconArt::entryIcon(1), u"R&epairs"_s, this);
    m_repairsAction->setShortcut(QKeySequence(u"Ctrl+E"_s));
    m_repairsAction->setIconText(u"Repairs"_s);
    connect(m_repairsAction, &QAction::triggered, this, [this] { addEntry(CVCItem::Maintenance); });

    m_tripsAction = new QAction(IconArt::entryIcon(19), u"&Trips"_s, this);
    m_tripsAction->setShortcut(QKeySequence(u"Ctrl+T"_s));
    m_tripsAction->setIconText(u"Trips"_s);
    connect(m_tripsAction, &QAction::triggered, this, [this] { addEntry(CVCItem::Trip); });

    m_viewDataAction = new QAction(IconArt::icon(IconArt::Picture::Inspection), u"&View Data"_s, this);
    m_viewDataAction->setShortcut(QKeySequence(u"Ctrl+D"_s));
    m_viewDataAction->setIconText(u"View Data"_s);
    connect(m_viewDataAction, &QAction::triggered, this, &MainWindow::viewData);
    // Ctrl+Q quits from anywhere in the window; it has no line of its own in the TOOLS menu.
    m_quitAction = new QAction(u"&Quit"_s, this);
    m_quitAction->setShortcut(QKeySequence(u"Ctrl+Q"_s));
    m_quitAction->setShortcutContext(Qt::ApplicationShortcut);
    connect(m_quitAction, &QAction::triggered, this, &QWidget::close);
    addAction(m_quitAction);

    for (QAction *action : { m_helpAction, m_aboutAction, m_backupAction, m_restoreAction, m_fuelAction,
                             m_repairsAction, m_tripsAction, m_viewDataAction })
        action->setToolTip(action->text().remove(u'&') + u" ("_s
                           + action->shortcut().toString(QKeySequence::NativeText) + u')');
    buildMenu();
    buildToolBar();
}

// The TOOLS menu: every command. A new command is one action made in buildActions() and one
// line here.
void MainWindow::buildMenu()
{
    QMenu *tools = menuBar()->addMenu(u"&TOOLS"_s);
    tools->setObjectName(u"toolsMenu"_s);
    tools->addAction(m_fuelAction);
    tools->addAction(m_repairsAction);
    tools->addAction(m_tripsAction);
    QAction *reminders = tools->addAction(
        u"&Reminders"_s, this, [this] { ReminderDialog::showReminders(m_session, m_chooser, this); });
    reminders->setObjectName(u"remindersAction"_s);
    tools->addAction(m_viewDataAction);
    m_setupAction = tools->addAction(u"&Setup / Edit"_s, this, &MainWindow::showSetup);
    tools->addSeparator();
    tools->addAction(m_helpAction);
    tools->addAction(m_aboutAction);
    tools->addAction(u"&Statistics"_s, this, [this] { showStatisticsMenu(this, m_session); })
        ->setObjectName(u"statisticsAction"_s);
    tools->addSeparator();
    QMenu *storage = tools->addMenu(u"&Backup / Restore"_s);
    storage->addAction(m_backupAction);
    storage->addAction(m_restoreAction);
    storage->addSeparator();
    for (const FullBackup::Kind kind : { FullBackup::Kind::Backup, FullBackup::Kind::Restore })
        storage->addAction(kind == FullBackup::Kind::Backup ? u"FULL Backup"_s : u"FULL Restore"_s, this,
                           [this, kind] {
                               catchUp();
                               if (FullBackupDialog::openFromMainScreen(kind, m_session, this))
                                   refresh();
                           });
}

// The toolbar keeps only the commands used most, so that it fits a 480 px wide screen without
// hiding any of them behind its overflow button; the rest are in the TOOLS menu.
void MainWindow::buildToolBar()
{
    QToolBar *bar = addToolBar(u"TOOLS"_s);
    bar->setObjectName(u"toolsBar"_s);
    bar->setMovable(false);
    bar->setIconSize(QSize(20, 20));
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    bar->addAction(m_fuelAction);
    bar->addAction(m_repairsAction);
    bar->addAction(m_tripsAction);
    bar->addAction(m_viewDataAction);
    bar->addSeparator();
    bar->addAction(m_helpAction);
    for (QAction *action : bar->actions())
        if (QWidget *button = bar->widgetForAction(action))
            button->setMinimumHeight(MinimumControlHeight);
}

QWidget *MainWindow::buildCentre()
{
    auto *centre = new QWidget(this);
    auto *outer = new QVBoxLayout(centre);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->setSpacing(0);
    outer->addWidget(new Banner(centre));

    // On a wide screen the controls keep a readable width in the middle; the banner spans it all.
    auto *column = new QWidget(centre);
    column->setMaximumWidth(760);
    auto *row = new QHBoxLayout;
    row->addWidget(column);
    outer->addLayout(row, 1);
    auto *body = new QVBoxLayout(column);
    body->setContentsMargins(10, 10, 10, 10);
    body->setSpacing(10);

    m_selector = new VehicleSelector(column);
    m_selector->setObjectName(u"vehicleSelector"_s);
    m_selector->setAccessibleName(u"Vehicle"_s);
    m_selector->setMinimumHeight(MinimumControlHeight + 4);
    body->addWidget(m_selector);

    // Until a vehicle is chosen there is nothing to log into.
    m_chooseHint = new QLabel(u"Choose a vehicle to start logging"_s, column);
    m_chooseHint->setObjectName(u"chooseHint"_s);
    m_chooseHint->setWordWrap(true);
    m_chooseHint->setAlignment(Qt::AlignHCenter);
    QFont hintFont = m_chooseHint->font();
    hintFont.setBold(true);
    m_chooseHint->setFont(hintFont);
    body->addWidget(m_chooseHint);
    connect(m_selector, &QComboBox::currentIndexChanged, this, &MainWindow::selectionChanged);
    connect(m_selector, &VehicleSelector::popupShown, this, &MainWindow::dropDownOpened);
    connect(m_selector, &VehicleSelector::popupHidden, this, &MainWindow::dropDownClosed);

    m_odometer = new TileCounter(centre);
    m_odometer->setObjectName(u"odometer"_s);
    m_current = new TileCounter(centre);
    m_current->setObjectName(u"currentEconomy"_s);
    m_average = new TileCounter(centre);
    m_average->setObjectName(u"averageEconomy"_s);

    m_currentLabel = new QLabel(u"Current "_s, centre);
    auto *gauges = new QHBoxLayout;
    gauges->setSpacing(8);
    gauges->addWidget(gauge(centre, new QLabel(u"Odometer"_s, centre), m_odometer, new QLabel(centre)), 3);
    gauges->addWidget(gauge(centre, m_currentLabel, m_current, new QLabel(centre)), 2);
    gauges->addWidget(gauge(centre, new QLabel(u"Average"_s, centre), m_average, new QLabel(centre)), 2);
    body->addLayout(gauges);

    auto *remindersButton = new QPushButton(u"REMINDERS"_s, centre);
    remindersButton->setObjectName(u"remindersButton"_s);
    remindersButton->setMinimumHeight(MinimumControlHeight);
    connect(remindersButton, &QPushButton::clicked, this,
            [this] { ReminderDialog::showReminders(m_session, m_chooser, this); });
    body->addWidget(remindersButton);

    auto *heading = new QLabel(u"Reminders"_s, centre);
    QFont headingFont = heading->font();
    headingFont.setBold(true);
    heading->setFont(headingFont);
    body->addWidget(heading);

    m_noReminders = new QLabel(u"No Reminders Due"_s, centre);
    m_noReminders->setObjectName(u"noReminders"_s);
    m_noReminders->setAlignment(Qt::AlignHCenter);
    body->addWidget(m_noReminders);

    m_reminders = new QListWidget(centre);
    m_reminders->setObjectName(u"reminders"_s);
    m_reminders->setAccessibleName(u"Reminders"_s);
    m_reminders->setIconSize(QSize(20, 20));
    m_reminders->setUniformItemSizes(true);
    m_reminders->setAlternatingRowColors(true);
    m_reminders->setWordWrap(false);
    body->addWidget(m_reminders, 1);

    centre->setStyleSheet(u"QFrame#gauge { border: 1px solid palette(mid); border-radius: 6px;"
                          " background: palette(alternate-base); }"
                          " QFrame#gauge QLabel { border: none; background: transparent; }"_s);
    return centre;
}

void MainWindow::refresh()
{
    fillSelector();
    showCounters();
    showReminders();
    // New entries need a chosen vehicle: otherwise they would go to a log nobody sees.
    const bool chosen = m_session.currentVehicleIndex() >= 0;
    for (QAction *action : { m_fuelAction, m_repairsAction, m_tripsAction, m_viewDataAction })
        action->setEnabled(chosen);
    m_chooseHint->setVisible(!chosen);
    m_watcher->watch({ m_session.databasePath(), m_session.settings().path() });
}

void MainWindow::catchUp()
{
    if (m_session.reloadIfChanged())
        refresh();
}

void MainWindow::fillSelector()
{
    m_filling = true;
    const QSignalBlocker blocker(m_selector);
    m_selector->clear();
    m_selector->addItems(m_session.vehicleNames());
    m_selector->setCurrentIndex(m_session.currentVehicleIndex());
    // Until a vehicle is chosen the selector reads "Select Vehicle".
    m_selector->setPlaceholderText(m_session.currentVehicleName());
    m_filling = false;
}

void MainWindow::showCounters()
{
    const MainScreenFigures &figures = m_session.figures();
    showCounter(m_odometer, figures.odometer, CounterTiles::wholeNumber(0));
    showCounter(m_current, figures.currentEconomy, CounterTiles::decimal(0));
    showCounter(m_average, figures.averageEconomy, CounterTiles::decimal(0));

    // The unit lines under the counters.
    const VehicleSettings &vehicle = m_session.vehicle();
    const QString distance = vehicle.distanceUnit == 1 ? u"Km"_s : u"Miles"_s;
    const QString economy = CVCItem::economyUnitName(vehicle.economyUnit);
    const QList<QFrame *> frames = centralWidget()->findChildren<QFrame *>(u"gauge"_s);
    for (QFrame *frame : frames) {
        const QList<QLabel *> labels = frame->findChildren<QLabel *>();
        if (labels.size() < 2)
            continue;
        labels.last()->setText(frame->isAncestorOf(m_odometer) ? distance : economy);
    }
    m_current->setToolTip(figures.economyAlert ? m_current->text() + u" (below average)"_s
                                               : m_current->text());
    m_odometer->setStatusTip(figures.openTripText);
}

void MainWindow::showReminders()
{
    m_reminders->clear();
    for (const ReminderListLine &line : m_session.reminders()) {
        auto *item = new QListWidgetItem(IconArt::reminderIcon(line.icon), line.text, m_reminders);
        item->setData(Qt::UserRole, line.icon); // the picture number, for tests and scripts
        item->setSizeHint(QSize(0, MinimumControlHeight));
    }
    m_noReminders->setVisible(m_reminders->count() == 0);
}

void MainWindow::selectionChanged(int index)
{
    if (m_filling || index < 0)
        return;
    m_session.selectVehicle(m_selector->itemText(index));
    refresh();
}

void MainWindow::dropDownOpened()
{
    m_session.dropDownOpened();
    showCounters();
    showReminders();
}

void MainWindow::dropDownClosed()
{
    m_session.dropDownClosed();
    showCounters();
    showReminders();
}

void MainWindow::showHelp()
{
    m_help.showHelp(this);
}

void MainWindow::showAbout()
{
    AboutDialog dialog(m_session.dataFolder(), this);
    dialog.exec();
}

void MainWindow::backupVehicle()
{
    if (m_session.isBusy())
        return;
    catchUp();
    const QString folder
        = m_chooser.chooseFolder(this, u"Vehicle Backup"_s, m_session.context().paths.root());
    if (folder.isEmpty())
        return;
    m_session.backupVehicle(folder);
    refresh();
}

void MainWindow::restoreVehicle()
{
    catchUp();
    // An empty VIN proposes "UnKnown.bak", the name a backup of that vehicle gets.
    const QString proposed = VehicleBackup::proposedRestoreName(m_session.vehicle().vin);
    const QString file
        = m_chooser.chooseOpenFile(this, u"Vehicle Restore"_s, m_session.context().paths.root(), proposed,
                                   u"Backups (*.bak);;All files (*)"_s);
    if (file.isEmpty())
        return;
    m_session.restoreVehicle(file);
    refresh();
}

bool MainWindow::restoreWindowGeometry()
{
    const QString saved
        = m_session.context().preferences().getString(preferenceSection(), u"Geometry"_s, QString());
    if (saved.isEmpty())
        return false;
    return restoreGeometry(QByteArray::fromBase64(saved.toLatin1()));
}

void MainWindow::saveWindowGeometry()
{
    m_session.context().preferences().writeString(preferenceSection(), u"Geometry"_s,
                                                  QString::fromLatin1(saveGeometry().toBase64()));
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    saveWindowGeometry();
    m_session.saveOptions();
    m_session.saveSettings();
    event->accept();
}

void MainWindow::addEntry(int entryType)
{
    catchUp();
    if (m_session.currentVehicleIndex() < 0)
        return;
    // The session reopens the log after a save (a failed one too): show what it holds now.
    EntryFormRunner::addNew(m_session, CVCItem::EntryType(entryType), m_session.context().reporter, this);
    refresh();
}

void MainWindow::showSetup()
{
    catchUp();
    SetupRunner::run(m_session, m_session.context().reporter, this);
    refresh();
}

void MainWindow::viewData()
{
    catchUp();
    HistoryDialog::run(m_session, m_session.context().reporter, this);
    refresh();
}
