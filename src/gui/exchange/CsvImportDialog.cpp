#include "CsvImportDialog.h"

#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "app/FileChooser.h"
#include "exchange/CsvImport.h"
#include "exchange/CsvSessionImport.h"
#include "session/VehicleSession.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int MinimumControlHeight = 32;
// Records read between two repaints of the progress bar.
constexpr int RecordsPerStep = 2000;

QPushButton *button(const QString &text)
{
    auto *b = new QPushButton(text);
    b->setMinimumHeight(MinimumControlHeight);
    // Enter in the lists assigns; it must never press a button (IMPORT least of all).
    b->setAutoDefault(false);
    return b;
}

QTreeWidget *reportList(const QStringList &headers)
{
    auto *list = new QTreeWidget;
    list->setHeaderLabels(headers);
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    list->setAllColumnsShowFocus(true);
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    return list;
}

} // namespace

CsvImportDialog::CsvImportDialog(VehicleSession &session, FileChooser &chooser, QWidget *parent)
    : QDialog(parent)
    , m_session(session)
    , m_chooser(chooser)
    , m_form(session.context().preferenceStore, session.context().reporter)
{
    setWindowTitle(CsvImportForm::title());
    buildControls();
    connectControls();
    showMaps();
    showValues();
}

void CsvImportDialog::buildControls()
{
    auto *layout = new QVBoxLayout(this);
    auto *fileLabel = new QLabel(u"Import CSV File Name"_s);
    m_file = new QLineEdit;
    m_file->setReadOnly(true);
    m_file->setMinimumHeight(MinimumControlHeight);
    fileLabel->setBuddy(m_file);
    m_browse = button(u"Browse"_s);
    auto *fileRow = new QHBoxLayout;
    fileRow->addWidget(m_file, 1);
    fileRow->addWidget(m_browse);
    layout->addWidget(fileLabel);
    layout->addLayout(fileRow);

    m_group = new QGroupBox(CsvImport::mapsCaption());
    auto *groupLayout = new QVBoxLayout(m_group);
    auto *mapRow = new QHBoxLayout;
    m_maps = new QComboBox;
    m_maps->setMinimumHeight(MinimumControlHeight);
    m_saveMap = button(u"Save Map"_s);
    mapRow->addWidget(m_maps, 1);
    mapRow->addWidget(m_saveMap);
    groupLayout->addLayout(mapRow);
    m_progress = new QProgressBar;
    m_progress->setRange(0, 100);
    m_progress->setVisible(false);
    groupLayout->addWidget(m_progress);
    layout->addWidget(m_group);

    ImportMapStore &store = m_form.store();
    m_data = reportList({ u"CSV Data"_s });
    m_data->setColumnWidth(0, store.columnWidth(ImportMapStore::dataColumnWidthKey(), 140));
    m_fields = reportList({ u"Field"_s, u"CSV Column"_s });
    m_fields->setColumnWidth(0, store.columnWidth(ImportMapStore::fieldColumnWidthKey(0), 130));
    m_fields->setColumnWidth(1, store.columnWidth(ImportMapStore::fieldColumnWidthKey(1), 130));
    for (const QString &name : ImportMap::fieldNames())
        new QTreeWidgetItem(m_fields, { name, QString() });
    auto *lists = new QHBoxLayout;
    lists->addWidget(m_data, 2);
    lists->addWidget(m_fields, 3);
    layout->addLayout(lists, 1);

    m_assign = button(u"Assign"_s);
    m_assign->setToolTip(u"Select a CSV column and a field, then assign; on a mapped field it clears the "
                         "assignment. Double-click or Enter does the same."_s);
    layout->addWidget(m_assign);

    auto *buttons = new QHBoxLayout;
    m_import = button(u"IMPORT"_s);
    m_abort = button(u"Abort"_s);
    buttons->addWidget(m_import);
    buttons->addWidget(m_abort);
    layout->addLayout(buttons);
    resize(460, 600);
}

void CsvImportDialog::connectControls()
{
    connect(m_browse, &QPushButton::clicked, this, &CsvImportDialog::browse);
    connect(m_saveMap, &QPushButton::clicked, this, &CsvImportDialog::saveMap);
    connect(m_assign, &QPushButton::clicked, this, &CsvImportDialog::assignOrClear);
    connect(m_import, &QPushButton::clicked, this, &CsvImportDialog::runImport);
    connect(m_abort, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_maps, &QComboBox::activated, this, [this](int index) {
        m_form.selectMap(m_maps->itemText(index));
        showValues();
    });
    // A field activated (double-click or Enter) takes the chosen column or gives up its own.
    connect(m_fields, &QTreeWidget::itemActivated, this, [this] { assignOrClear(); });
    connect(m_data, &QTreeWidget::itemActivated, this, [this] {
        if (chosenField() >= 0)
            assignOrClear();
        else
            m_fields->setFocus();
    });
    connect(m_fields, &QTreeWidget::currentItemChanged, this, [this] { updateAssignButton(); });
    connect(m_data, &QTreeWidget::currentItemChanged, this, [this] { updateAssignButton(); });
}

int CsvImportDialog::chosenColumn() const
{
    const QTreeWidgetItem *item = m_data->currentItem();
    return item ? item->data(0, Qt::UserRole).toInt() : -1;
}

int CsvImportDialog::chosenField() const
{
    const QTreeWidgetItem *item = m_fields->currentItem();
    return item ? m_fields->indexOfTopLevelItem(const_cast<QTreeWidgetItem *>(item)) : -1;
}

void CsvImportDialog::showMaps()
{
    const QSignalBlocker blocker(m_maps);
    m_maps->clear();
    m_maps->addItems(m_form.mapNames());
    m_maps->setCurrentIndex(m_maps->findText(m_form.map().name));
}

void CsvImportDialog::showValues()
{
    m_file->setText(m_form.fileName());
    const int column = chosenColumn();
    m_data->clear();
    for (const CsvImportForm::DataRow &row : m_form.dataRows()) {
        auto *item = new QTreeWidgetItem(m_data, { row.title });
        item->setData(0, Qt::UserRole, row.column);
        item->setToolTip(0, u"Column %1"_s.arg(row.column + 1));
        if (row.column == column)
            m_data->setCurrentItem(item);
    }
    const QBrush mapped(
        QColor(CsvImportForm::MappedRed, CsvImportForm::MappedGreen, CsvImportForm::MappedBlue));
    for (int field = 0; field < ImportMap::FieldCount; ++field) {
        QTreeWidgetItem *item = m_fields->topLevelItem(field);
        item->setText(1, m_form.assignmentText(field));
        const QBrush background = m_form.map().isMapped(field) ? mapped : QBrush(Qt::white);
        item->setBackground(0, background);
        item->setBackground(1, background);
        item->setForeground(0, QBrush(Qt::black));
        item->setForeground(1, QBrush(Qt::black));
    }
    m_import->setEnabled(m_form.importEnabled() && !m_busy);
    updateAssignButton();
}

void CsvImportDialog::updateAssignButton()
{
    const int field = chosenField();
    m_assign->setText(field >= 0 && m_form.wouldClear(field, chosenColumn()) ? u"Clear"_s : u"Assign"_s);
    m_assign->setEnabled(!m_busy && field >= 0 && (chosenColumn() >= 0 || m_form.map().isMapped(field)));
}

void CsvImportDialog::browse()
{
    const QString start = m_session.context().paths.myDocuments();
    const QString path
        = m_chooser.chooseOpenFile(this, u"Browse"_s, start, QString(), u"CSV (*.CSV *.csv)"_s);
    if (path.isEmpty())
        return;
    m_form.chooseFile(path);
    showValues();
}

void CsvImportDialog::saveMap()
{
    bool ok = false;
    const QString name = QInputDialog::getText(this, u"Save Map"_s, u"Map name:"_s, QLineEdit::Normal,
                                               m_maps->currentText(), &ok);
    if (ok)
        saveMapAs(name);
}

bool CsvImportDialog::saveMapAs(const QString &name)
{
    if (!m_form.saveMap(name))
        return false;
    showMaps();
    return true;
}

void CsvImportDialog::assignOrClear()
{
    const int field = chosenField();
    if (field < 0 || m_busy)
        return;
    m_form.toggle(field, chosenColumn());
    showValues();
}

void CsvImportDialog::runImport()
{
    AppContext &context = m_session.context();
    // The screen that opened this one saves its changes straight to the file: start from the file.
    m_session.reopen();
    CsvImport import(m_form.map(), CsvSessionImport::settings(m_session, context.locale));
    if (!import.begin(m_form.fileName(), context.reporter)) {
        // A file that could not be opened disables IMPORT; an unmapped odometer only warns.
        if (m_form.map().isMapped(ImportMap::Odometer))
            m_import->setEnabled(false);
        return;
    }
    m_busy = true;
    for (QWidget *w :
         std::initializer_list<QWidget *> { m_browse, m_saveMap, m_maps, m_import, m_abort, m_assign })
        w->setEnabled(false);
    m_group->setTitle(CsvImport::importingCaption());
    m_progress->setValue(0);
    m_progress->setVisible(true);
    // Repaints between steps keep the screen alive on a long file; the buttons stay disabled.
    while (import.step(RecordsPerStep)) {
        m_progress->setValue(import.percentDone());
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }
    m_progress->setValue(100);
    m_group->setTitle(CsvImport::completeCaption());
    import.finish(m_session.log(), m_session.dataFolder(), m_session.vehicle().vin, context.reporter);
    m_imported = m_imported || !import.converted().empty();
    m_session.reopen();
    m_group->setTitle(CsvImport::mapsCaption());
    m_progress->setVisible(false);
    m_busy = false;
    for (QWidget *w : std::initializer_list<QWidget *> { m_browse, m_saveMap, m_maps, m_abort })
        w->setEnabled(true);
    showValues();
}

void CsvImportDialog::done(int result)
{
    if (m_busy)
        return;
    ImportMapStore &store = m_form.store();
    store.setColumnWidth(ImportMapStore::dataColumnWidthKey(), m_data->columnWidth(0));
    store.setColumnWidth(ImportMapStore::fieldColumnWidthKey(0), m_fields->columnWidth(0));
    store.setColumnWidth(ImportMapStore::fieldColumnWidthKey(1), m_fields->columnWidth(1));
    QDialog::done(result);
}

bool CsvImportDialog::run(VehicleSession &session, FileChooser &chooser, QWidget *parent)
{
    CsvImportDialog dialog(session, chooser, parent);
    dialog.exec();
    return dialog.imported();
}
