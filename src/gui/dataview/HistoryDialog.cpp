#include "HistoryDialog.h"

#include "stats/StatisticsContext.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QDateEdit>
#include <QFontDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QIdentityProxyModel>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QRadioButton>
#include <QTableView>
#include <QVBoxLayout>

#include <array>

#include "ExportMenu.h"
#include "app/FileChooser.h"
#include "dataview/DataViewColumns.h"
#include "dataview/EntryTableModel.h"
#include "dataview/ListAppearance.h"
#include "dataview/SummaryReportExport.h"
#include "exchange/CsvImportDialog.h"
#include "exchange/PeerImportDialog.h"
#include "forms/EntryFormRunner.h"
#include "platform/Reporter.h"
#include "session/VehicleSession.h"
#include "widgets/FileChangeWatcher.h"
#include "widgets/IconArt.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int TouchHeight = 32;

// Puts the picture of each record's icon number beside its row.
class EntryPictureModel : public QIdentityProxyModel
{
public:
    using QIdentityProxyModel::QIdentityProxyModel;

    QVariant data(const QModelIndex &index, int role) const override
    {
        if (role != Qt::DecorationRole || index.column() != 0)
            return QIdentityProxyModel::data(index, role);
        const QVariant number = QIdentityProxyModel::data(index, EntryTableModel::IconNumberRole);
        if (!number.isValid())
            return QVariant();
        const int icon = number.toInt();
        if (icon < 0 || icon >= IconArt::EntryIconCount)
            return IconArt::entryIcon(icon);
        QIcon &cached = m_icons[size_t(icon)];
        if (cached.isNull())
            cached = IconArt::entryIcon(icon);
        return cached;
    }

private:
    mutable std::array<QIcon, IconArt::EntryIconCount> m_icons;
};

QFont qtFont(const ListFont &font)
{
    QFont result(font.name);
    result.setPixelSize(std::max(6, std::abs(font.height)));
    result.setWeight(QFont::Weight(std::clamp(font.weight <= 0 ? 400 : font.weight, 100, 900)));
    result.setItalic(font.italic != 0);
    result.setUnderline(font.underline != 0);
    return result;
}

ListFont listFont(const QFont &font, const ListFont &old)
{
    ListFont result = old;
    const int pixels = font.pixelSize() > 0 ? font.pixelSize() : qRound(font.pointSizeF() * 96.0 / 72.0);
    result.height = -pixels;
    result.weight = font.weight();
    result.italic = font.italic() ? 1 : 0;
    result.underline = font.underline() ? 1 : 0;
    result.name = font.family();
    return result;
}

} // namespace

HistoryDialog::HistoryDialog(VehicleSession &session, Reporter &reporter, QWidget *parent)
    : QDialog(parent)
    , m_session(session)
    , m_reporter(reporter)
    , m_log(session.dataFolder(), session.vehicle().vin)
    , m_filter(DataViewFilter::fromOptions(session.options(), session.context().clock.now()))
{
    setWindowTitle(u"History"_s);
    auto *bar = new QMenuBar(this);
    buildControls();
    buildMenu(bar);
    layOut(bar);
    connectControls();
    showValues();
    applyFont();
    applyColumns();
    refill(true);
    m_watcher = new FileChangeWatcher(this, [this] { catchUp(); });
    m_watcher->watch({ m_log.databasePath() });
    resize(480, 640);
}

HistoryDialog::~HistoryDialog() = default;

void HistoryDialog::run(VehicleSession &session, Reporter &reporter, QWidget *parent)
{
    {
        HistoryDialog dialog(session, reporter, parent);
        dialog.exec();
    }
    session.reopen();
}

void HistoryDialog::buildControls()
{
    m_model = new EntryTableModel(m_session.context().locale, this);
    auto *pictures = new EntryPictureModel(this);
    pictures->setSourceModel(m_model);
    m_view = pictures;

    m_table = new QTableView(this);
    m_table->setObjectName(u"list"_s);
    m_table->setModel(m_view);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSortingEnabled(false);
    m_table->setWordWrap(false);
    m_table->setTabKeyNavigation(false);
    m_table->setIconSize(QSize(16, 16));
    m_table->verticalHeader()->hide();
    // Fixed row heights keep a long log cheap to lay out and scroll.
    m_table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_table->horizontalHeader()->setSectionsClickable(false);
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    m_table->horizontalHeader()->setHighlightSections(false);
    m_table->installEventFilter(this);

    m_typeGroup = new QButtonGroup(this);
    const std::array<std::pair<QString, int>, 4> types = { { { u"Fuel"_s, DataViewFilter::Fuel },
                                                             { u"Maint."_s, DataViewFilter::Maintenance },
                                                             { u"Trips"_s, DataViewFilter::Trips },
                                                             { u"ALL"_s, DataViewFilter::AllTypes } } };
    for (const auto &[text, id] : types)
        m_typeGroup->addButton(new QRadioButton(text, this), id);

    m_periodGroup = new QButtonGroup(this);
    const std::array<std::pair<QString, int>, 4> periods = { { { u"Week"_s, DataViewFilter::Week },
                                                               { u"Month"_s, DataViewFilter::Month },
                                                               { u"Year"_s, DataViewFilter::Year },
                                                               { u"ALL"_s, DataViewFilter::AllPeriods } } };
    for (const auto &[text, id] : periods)
        m_periodGroup->addButton(new QRadioButton(text, this), id);
    m_byDate = new QCheckBox(this);
    m_byDate->setObjectName(u"byDate"_s);
    m_byDate->setAccessibleName(u"List by date"_s);
    m_byDate->setToolTip(u"List by date"_s);
    m_periodGroup->addButton(m_byDate, DataViewFilter::ByDate);

    for (QDateEdit **edit : { &m_start, &m_end }) {
        *edit = new QDateEdit(this);
        (*edit)->setCalendarPopup(true);
        (*edit)->setDisplayFormat(QLocale().dateFormat(QLocale::ShortFormat));
        (*edit)->setMinimumHeight(TouchHeight);
        (*edit)->setMinimumWidth(150);
    }
    m_start->setObjectName(u"startDate"_s);
    m_end->setObjectName(u"endDate"_s);
    for (QAbstractButton *button : m_typeGroup->buttons() + m_periodGroup->buttons())
        button->setMinimumHeight(TouchHeight);
}

QAction *HistoryDialog::addCommand(QMenu *menu, const QString &text, void (HistoryDialog::*slot)())
{
    QAction *action = menu->addAction(text);
    connect(action, &QAction::triggered, this, slot);
    return action;
}

void HistoryDialog::importCsv(FileChooser &chooser)
{
    // The import reads the log from its file, adds to it and saves it; the list is read back.
    CsvImportDialog::run(m_session, chooser, this);
    refill(true);
}

void HistoryDialog::importFromApp(FileChooser &chooser)
{
    if (PeerImportDialog::run(m_session, chooser, m_reporter, this))
        refill(true);
}

void HistoryDialog::buildMenu(QMenuBar *bar)
{
    // The items in their order; the import, export and statistics commands slot in at their marks.
    m_options = bar->addMenu(u"Options"_s);
    m_options->setObjectName(u"optionsMenu"_s);
    addCommand(m_options, u"Choose Font"_s, &HistoryDialog::chooseFont);
    m_shadeAction = m_options->addAction(u"Shade alternate rows"_s);
    m_shadeAction->setCheckable(true);
    connect(m_shadeAction, &QAction::toggled, this, &HistoryDialog::setShadeRows);
    connect(m_options->addAction(u"Import CSV"_s), &QAction::triggered, this, [this] {
        DialogFileChooser chooser;
        importCsv(chooser);
    });
    connect(m_options->addAction(u"Import from another app…"_s), &QAction::triggered, this, [this] {
        DialogFileChooser chooser;
        importFromApp(chooser);
    });
    m_exportMenu = new ExportMenu(m_session, m_reporter,
                                  { [this]() -> const EntryList & { return m_log.entries(); },
                                    [this] {
                                        return m_filter;
                                    } },
                                  this);
    m_options->addMenu(m_exportMenu);
    QAction *report = SummaryReportExport::addMenuItem(m_exportMenu->htmlMenu(), this, m_session, [this] {
        return std::pair(m_start->date(), m_end->date());
    });
    m_exportMenu->htmlMenu()->insertAction(m_exportMenu->excelExportsAction(), report);
    addCommand(m_options, u"Edit Selected"_s, &HistoryDialog::editSelected);
    addCommand(m_options, u"Reconcile Data"_s, &HistoryDialog::reconcile);
    // The charts read the log file afresh; every change here has been saved by then.
    connect(m_options->addAction(u"Fuel Statistics"_s), &QAction::triggered, this,
            [this] { showStatisticsMenu(this, m_session); });
    QMenu *insert = m_options->addMenu(u"Insert"_s);
    addCommand(insert, u"Insert Fuel or Repair"_s, &HistoryDialog::insertFuelOrRepair);
    addCommand(insert, u"Insert Trip"_s, &HistoryDialog::insertTrip);
    QMenu *remove = m_options->addMenu(u"Delete"_s);
    addCommand(remove, u"Delete ALL"_s, &HistoryDialog::deleteAll);
    addCommand(remove, u"Delete &Selected"_s, &HistoryDialog::deleteSelected);
    QMenu *view = m_options->addMenu(u"View"_s);
    const std::array<std::pair<QString, DataViewFilter::Type>, 4> views
        = { { { u"All"_s, DataViewFilter::AllTypes },
              { u"Fuel"_s, DataViewFilter::Fuel },
              { u"Maint."_s, DataViewFilter::Maintenance },
              { u"Trips"_s, DataViewFilter::Trips } } };
    for (const auto &[text, type] : views)
        connect(view->addAction(text), &QAction::triggered, this,
                [this, type = type] { setTypeFilter(type); });

    QAction *exit = bar->addAction(u"Exit"_s);
    exit->setObjectName(u"exit"_s);
    connect(exit, &QAction::triggered, this, &QDialog::accept);
}

void HistoryDialog::layOut(QMenuBar *bar)
{
    auto *layout = new QVBoxLayout(this);
    layout->setMenuBar(bar);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(m_table, 1);

    auto *periods = new QHBoxLayout;
    for (QAbstractButton *button : m_periodGroup->buttons()) {
        if (button != m_byDate)
            periods->addWidget(button);
    }
    periods->addStretch(1);
    // Three small pictures of the kinds of entry, for decoration only.
    for (int icon : { 0, 1, 19 }) {
        auto *picture = new QLabel(this);
        picture->setPixmap(IconArt::entryPixmap(icon, 20, devicePixelRatioF()));
        periods->addWidget(picture);
    }
    layout->addLayout(periods);

    auto *types = new QHBoxLayout;
    for (QAbstractButton *button : m_typeGroup->buttons())
        types->addWidget(button);
    types->addStretch(1);
    layout->addLayout(types);

    auto *dates = new QHBoxLayout;
    dates->addWidget(m_byDate);
    dates->addWidget(m_start);
    dates->addWidget(new QLabel(u"to"_s, this));
    dates->addWidget(m_end);
    dates->addStretch(1);
    layout->addLayout(dates);
}

void HistoryDialog::connectControls()
{
    connect(m_typeGroup, &QButtonGroup::idClicked, this,
            [this](int id) { setTypeFilter(DataViewFilter::Type(id)); });
    connect(m_periodGroup, &QButtonGroup::idClicked, this,
            [this](int id) { setPeriodFilter(DataViewFilter::Period(id)); });
    // A date picked by the user lists by date.
    for (QDateEdit *edit : { m_start, m_end }) {
        connect(edit, &QDateEdit::userDateChanged, this,
                [this] { setDateRange(m_start->date(), m_end->date()); });
    }
    connect(m_table, &QTableView::doubleClicked, this, [this] { editSelected(); });
    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex &current) {
                if (current.isValid())
                    m_lastSelected = current.row();
            });
}

void HistoryDialog::showValues()
{
    const QSignalBlocker blockStart(m_start);
    const QSignalBlocker blockEnd(m_end);
    if (QAbstractButton *button = m_typeGroup->button(m_filter.type))
        button->setChecked(true);
    if (QAbstractButton *button = m_periodGroup->button(m_filter.period))
        button->setChecked(true);
    m_start->setDate(m_filter.startDate);
    m_end->setDate(m_filter.endDate);
    const bool byDate = m_filter.period == DataViewFilter::ByDate;
    m_start->setEnabled(byDate);
    m_end->setEnabled(byDate);
    const Preferences preferences = m_session.context().preferences();
    const bool shade = ListAppearance::shadeAlternateRows(preferences);
    const QSignalBlocker blockShade(m_shadeAction);
    m_shadeAction->setChecked(shade);
    m_table->setAlternatingRowColors(shade);
    QPalette palette = m_table->palette();
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::AlternateBase, QColor(179, 242, 179));
    palette.setColor(QPalette::Text, Qt::black);
    m_table->setPalette(palette);
}

void HistoryDialog::applyFont()
{
    const QFont font = qtFont(ListFont::read(m_session.context().preferences()));
    m_table->setFont(font);
    m_table->horizontalHeader()->setFont(font);
    const int row = std::max(TouchHeight, QFontMetrics(font).height() + 8);
    m_table->verticalHeader()->setDefaultSectionSize(row);
    m_table->verticalHeader()->setMinimumSectionSize(row);
}

void HistoryDialog::applyColumns()
{
    const QList<int> widths = DataViewColumns::readWidths(m_session.context().preferences(),
                                                          DataViewColumns::layout(m_filter.type));
    QHeaderView *header = m_table->horizontalHeader();
    for (int i = 0; i < widths.size() && i < header->count(); ++i)
        header->resizeSection(i, std::max(widths[i], 4));
}

void HistoryDialog::saveColumnWidths()
{
    QList<int> widths;
    const QHeaderView *header = m_table->horizontalHeader();
    for (int i = 0; i < header->count(); ++i)
        widths.append(header->sectionSize(i));
    Preferences preferences = m_session.context().preferences();
    DataViewColumns::writeWidths(preferences, widths);
}

void HistoryDialog::refill(bool reload)
{
    if (reload)
        m_log.load(m_reporter);
    // A refill of the same view keeps the widths on screen, saved or not; a new view reads its own.
    QHeaderView *header = m_table->horizontalHeader();
    QList<int> widths;
    if (m_model->viewType() == m_filter.type) {
        for (int i = 0; i < header->count(); ++i)
            widths.append(header->sectionSize(i));
    }
    m_model->setEntries(&m_log.entries(), m_filter, m_session.context().clock.now());
    if (widths.isEmpty())
        applyColumns();
    for (int i = 0; i < widths.size() && i < header->count(); ++i)
        header->resizeSection(i, widths[i]);
    const int rows = m_model->rowCount();
    if (m_lastSelected >= rows)
        m_lastSelected = rows - 1;
    if (rows > 0 && m_lastSelected >= 0)
        selectRow(m_lastSelected);
}

bool HistoryDialog::catchUp()
{
    if (!m_log.reloadIfChanged(m_reporter))
        return false;
    refill(false);
    return true;
}

void HistoryDialog::selectRow(int row)
{
    const QModelIndex index = m_view->index(row, 0);
    if (!index.isValid())
        return;
    m_table->selectionModel()->setCurrentIndex(
        index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    m_table->scrollTo(index);
    m_lastSelected = row;
}

int HistoryDialog::selectedPosition() const
{
    const QModelIndexList rows = m_table->selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : m_model->positionAt(rows.first().row());
}

void HistoryDialog::setTypeFilter(DataViewFilter::Type type)
{
    saveColumnWidths();
    m_filter.type = type;
    m_filter.toOptions(m_session.options());
    showValues();
    refill(false);
}

void HistoryDialog::setPeriodFilter(DataViewFilter::Period period)
{
    m_filter.period = period;
    m_filter.toOptions(m_session.options());
    showValues();
    refill(false);
}

void HistoryDialog::setDateRange(const QDate &start, const QDate &end)
{
    m_filter.startDate = start;
    m_filter.endDate = end;
    setPeriodFilter(DataViewFilter::ByDate);
}

void HistoryDialog::editSelected()
{
    // After a reload the rows are not those the user chose from: they choose again.
    if (catchUp())
        return;
    const int position = selectedPosition();
    if (position < 0)
        return;
    CVCItem record = m_log.entries()[size_t(position)];
    if (!EntryFormRunner::edit(m_session, record, m_reporter, this))
        return;
    m_log.replace(position, record, m_reporter);
    refill(true);
}

void HistoryDialog::insertFuelOrRepair()
{
    if (m_log.entries().empty())
        return;
    switch (m_filter.type) {
    case DataViewFilter::Fuel:
        insertEntry(CVCItem::Fuel);
        break;
    case DataViewFilter::Maintenance:
        insertEntry(CVCItem::Maintenance);
        break;
    case DataViewFilter::AllTypes:
        insertEntry(m_reporter.ask(DataViewLog::fuelQuestion(), DataViewLog::fuelQuestionTitle())
                        ? CVCItem::Fuel
                        : CVCItem::Maintenance);
        break;
    case DataViewFilter::Trips:
        break;
    }
}

void HistoryDialog::insertTrip()
{
    if (!m_log.entries().empty())
        insertEntry(CVCItem::Trip);
}

void HistoryDialog::insertEntry(CVCItem::EntryType type)
{
    catchUp();
    CVCItem record
        = DataViewLog::newRecord(type, m_session.scan().lastOdometer, m_session.context().clock.now());
    if (!EntryFormRunner::edit(m_session, record, m_reporter, this))
        return;
    const int position = m_log.insert(record, m_reporter);
    refill(true);
    if (position >= 0 && m_model->rowOf(position) >= 0)
        selectRow(m_model->rowOf(position));
}

void HistoryDialog::deleteSelected()
{
    if (catchUp())
        return;
    const int position = selectedPosition();
    if (position < 0)
        return;
    if (m_log.remove(position, m_reporter))
        refill(true);
}

void HistoryDialog::deleteAll()
{
    catchUp();
    if (!m_log.removeAll(m_reporter))
        return;
    m_lastSelected = -1;
    refill(true);
}

void HistoryDialog::reconcile()
{
    catchUp();
    const VehicleSettings &vehicle = m_session.vehicle();
    m_log.reconcile(vehicle.distanceUnit, vehicle.economyUnit, m_reporter);
    refill(true);
}

void HistoryDialog::chooseFont()
{
    Preferences preferences = m_session.context().preferences();
    const ListFont current = ListFont::read(preferences);
    bool ok = false;
    const QFont chosen = QFontDialog::getFont(&ok, qtFont(current), this, u"Choose Font"_s);
    if (!ok)
        return;
    listFont(chosen, current).write(preferences);
    applyFont();
    refill(false);
}

void HistoryDialog::setShadeRows(bool shade)
{
    Preferences preferences = m_session.context().preferences();
    ListAppearance::setShadeAlternateRows(preferences, shade);
    showValues();
}

bool HistoryDialog::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_table) {
        if (event->type() == QEvent::FocusOut) {
            saveColumnWidths();
        } else if (event->type() == QEvent::KeyPress) {
            const int key = static_cast<QKeyEvent *>(event)->key();
            if (key == Qt::Key_Return || key == Qt::Key_Enter) {
                editSelected();
                return true;
            }
            if (key == Qt::Key_Delete) {
                deleteSelected();
                return true;
            }
        }
    }
    return QDialog::eventFilter(watched, event);
}

void HistoryDialog::done(int result)
{
    // The filter and the widths are kept for the next opening, in this run and the next.
    saveColumnWidths();
    m_filter.toOptions(m_session.options());
    QDialog::done(result);
}
