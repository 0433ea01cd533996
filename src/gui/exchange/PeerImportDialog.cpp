#include "PeerImportDialog.h"

#include <QApplication>
#include <QComboBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "app/FileChooser.h"
#include "platform/Reporter.h"
#include "session/VehicleSession.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int TouchHeight = 32;

QPushButton *button(const QString &text)
{
    auto *b = new QPushButton(text);
    b->setMinimumHeight(TouchHeight);
    b->setAutoDefault(false);
    return b;
}

} // namespace

PeerImportDialog::PeerImportDialog(VehicleSession &session, FileChooser &chooser, Reporter &reporter,
                                   QWidget *parent)
    : QDialog(parent)
    , m_session(session)
    , m_chooser(chooser)
    , m_reporter(reporter)
{
    setWindowTitle(PeerImportPlan::title());
    // The screen that opened this one saves its changes straight to the file: preview against it.
    m_session.reopen();
    buildControls();
    connectControls();
    refresh();
}

void PeerImportDialog::buildControls()
{
    auto *layout = new QVBoxLayout(this);
    auto *filesLabel = new QLabel(u"&Files"_s);
    m_files = new QListWidget;
    m_files->setObjectName(u"files"_s);
    m_files->setMaximumHeight(2 * TouchHeight + 8);
    filesLabel->setBuddy(m_files);
    m_add = button(u"&Add File…"_s);
    m_clear = button(u"C&lear"_s);
    m_clear->setObjectName(u"clear"_s);
    auto *fileButtons = new QVBoxLayout;
    fileButtons->addWidget(m_add);
    fileButtons->addWidget(m_clear);
    fileButtons->addStretch();
    auto *fileRow = new QHBoxLayout;
    fileRow->addWidget(m_files, 1);
    fileRow->addLayout(fileButtons);
    layout->addWidget(filesLabel);
    layout->addLayout(fileRow);

    m_recognised = new QLabel;
    m_recognised->setObjectName(u"recognised"_s);
    m_recognised->setWordWrap(true);
    QFont bold = m_recognised->font();
    bold.setBold(true);
    m_recognised->setFont(bold);
    layout->addWidget(m_recognised);

    auto *choices = new QFormLayout;
    m_vehicle = new QComboBox;
    m_vehicle->setObjectName(u"sourceVehicle"_s);
    m_vehicle->setMinimumHeight(TouchHeight);
    m_vehicleLabel = new QLabel(u"&Vehicle in the file"_s);
    m_vehicleLabel->setBuddy(m_vehicle);
    choices->addRow(m_vehicleLabel, m_vehicle);
    m_dateOrder = new QComboBox;
    m_dateOrder->setObjectName(u"dateOrder"_s);
    m_dateOrder->setMinimumHeight(TouchHeight);
    m_dateOrder->addItems(PeerImportPlan::dateOrderNames());
    auto *orderLabel = new QLabel(u"&Date order"_s);
    orderLabel->setBuddy(m_dateOrder);
    // Beside "Auto", the order it settled on, so a wrong guess shows before the import.
    m_dateOrderNote = new QLabel;
    m_dateOrderNote->setObjectName(u"dateOrderNote"_s);
    m_dateOrderNote->setWordWrap(true);
    auto *orderRow = new QHBoxLayout;
    orderRow->addWidget(m_dateOrder);
    orderRow->addWidget(m_dateOrderNote, 1);
    choices->addRow(orderLabel, orderRow);
    layout->addLayout(choices);

    m_summary = new QLabel;
    m_summary->setObjectName(u"summary"_s);
    m_summary->setWordWrap(true);
    layout->addWidget(m_summary);

    const QList<DataViewColumns::Column> columns = PeerImportPlan::previewColumns();
    m_preview = new QTableWidget(0, int(columns.size()));
    m_preview->setObjectName(u"preview"_s);
    m_preview->setHorizontalHeaderLabels(DataViewColumns::headers(columns));
    for (int c = 0; c < columns.size(); ++c)
        m_preview->setColumnWidth(c, columns.at(c).defaultWidth);
    m_preview->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_preview->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_preview->verticalHeader()->setVisible(false);
    m_preview->verticalHeader()->setDefaultSectionSize(TouchHeight - 4);
    m_preview->setWordWrap(false);
    // The standard style draws a handle lighter than its groove: beside the white cells the gray
    // groove reads as a handle at the far end while the view is at the first column. A dark handle
    // on a light groove shows where the view is.
    m_preview->setStyleSheet(
        u"QScrollBar { background: palette(window); border: none; }"
        "QScrollBar:horizontal { height: 14px; } QScrollBar:vertical { width: 14px; }"
        "QScrollBar::handle { background: palette(mid); border-radius: 4px; }"
        "QScrollBar::handle:horizontal { min-width: 32px; margin: 3px 1px; }"
        "QScrollBar::handle:vertical { min-height: 32px; margin: 1px 3px; }"
        "QScrollBar::add-line, QScrollBar::sub-line { width: 0px; height: 0px; border: none; }"
        "QScrollBar::add-page, QScrollBar::sub-page { background: none; }"_s);
    layout->addWidget(m_preview, 3);

    m_warningsLabel = new QLabel(u"&Skipped rows"_s);
    m_warnings = new QPlainTextEdit;
    m_warnings->setObjectName(u"warnings"_s);
    m_warnings->setReadOnly(true);
    m_warnings->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_warnings->setMaximumHeight(4 * TouchHeight);
    m_warningsLabel->setBuddy(m_warnings);
    layout->addWidget(m_warningsLabel);
    layout->addWidget(m_warnings, 1);

    m_progress = new QProgressBar;
    m_progress->setVisible(false);
    layout->addWidget(m_progress);

    auto *buttons = new QHBoxLayout;
    m_import = button(u"&Import"_s);
    m_import->setObjectName(u"import"_s);
    m_close = button(u"Close"_s);
    buttons->addStretch();
    buttons->addWidget(m_import);
    buttons->addWidget(m_close);
    layout->addLayout(buttons);
    resize(460, 600);
}

void PeerImportDialog::connectControls()
{
    connect(m_add, &QPushButton::clicked, this, &PeerImportDialog::addFile);
    connect(m_clear, &QPushButton::clicked, this, &PeerImportDialog::clearFiles);
    connect(m_import, &QPushButton::clicked, this, &PeerImportDialog::runImport);
    connect(m_close, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_dateOrder, &QComboBox::activated, this, [this](int index) {
        m_plan.setDateOrder(PeerImportPlan::dateOrderAt(index));
        refresh();
    });
    connect(m_vehicle, &QComboBox::activated, this, [this](int index) {
        // Index 0 is the request to choose.
        m_plan.setSourceVehicle(index > 0 ? m_vehicle->itemText(index) : QString());
        refresh();
    });
}

void PeerImportDialog::addFile()
{
    const QString start = m_files->count() > 0 ? QFileInfo(m_plan.files().constLast()).absolutePath()
                                               : m_session.context().paths.myDocuments();
    const QString path
        = m_chooser.chooseOpenFile(this, u"Add File"_s, start, QString(), PeerImportPlan::fileFilter());
    if (path.isEmpty())
        return;
    m_plan.addFile(path);
    refresh();
}

void PeerImportDialog::clearFiles()
{
    m_plan.clearFiles();
    refresh();
}

void PeerImportDialog::refresh()
{
    m_plan.refresh(m_session.entries(), PeerImportPlan::targetOf(m_session));
    m_files->clear();
    for (const QString &path : m_plan.files()) {
        auto *item = new QListWidgetItem(QFileInfo(path).fileName(), m_files);
        item->setToolTip(path);
    }
    m_clear->setEnabled(!m_plan.files().isEmpty() && !m_busy);
    m_recognised->setText(m_plan.recognised());
    m_dateOrderNote->setText(m_plan.dateOrderNote());

    // The vehicle picker appears for a file of several vehicles and keeps the choice made.
    const QStringList vehicles = m_plan.vehicles();
    m_vehicle->clear();
    if (!vehicles.isEmpty()) {
        m_vehicle->addItem(PeerImportPlan::chooseVehicleText());
        m_vehicle->addItems(vehicles);
        const QString chosen = m_plan.sourceVehicle();
        m_vehicle->setCurrentIndex(chosen.isEmpty() ? 0 : qMax(0, m_vehicle->findText(chosen)));
    }
    m_vehicle->setVisible(!vehicles.isEmpty());
    m_vehicleLabel->setVisible(!vehicles.isEmpty());

    m_summary->setText(m_plan.summary(m_session.currentVehicleName()));
    const QList<QStringList> rows = m_plan.previewRows(m_session.context().locale, PreviewRows);
    m_preview->setRowCount(int(rows.size()));
    for (int r = 0; r < rows.size(); ++r) {
        for (int c = 0; c < rows.at(r).size(); ++c)
            m_preview->setItem(r, c, new QTableWidgetItem(rows.at(r).at(c)));
    }
    const QStringList warnings = m_plan.warnings();
    m_warnings->setPlainText(warnings.join(u'\n'));
    m_warnings->setVisible(!warnings.isEmpty());
    m_warningsLabel->setVisible(!warnings.isEmpty());
    m_import->setEnabled(m_plan.canImport() && !m_busy);
}

void PeerImportDialog::runImport()
{
    if (!m_plan.canImport() || m_busy)
        return;
    m_busy = true;
    for (QWidget *w :
         std::initializer_list<QWidget *> { m_add, m_clear, m_vehicle, m_dateOrder, m_import, m_close })
        w->setEnabled(false);
    m_progress->setVisible(true);
    const bool ok = m_plan.apply(m_session, m_reporter, [this](int step, int steps) {
        m_progress->setRange(0, steps);
        m_progress->setValue(step);
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    });
    m_busy = false;
    m_progress->setVisible(false);
    for (QWidget *w : std::initializer_list<QWidget *> { m_add, m_vehicle, m_dateOrder, m_close })
        w->setEnabled(true);
    if (!ok) {
        refresh();
        return;
    }
    m_imported = true;
    m_reporter.info(m_plan.doneText(m_session.currentVehicleName()), PeerImportPlan::title());
    accept();
}

void PeerImportDialog::done(int result)
{
    if (m_busy)
        return;
    QDialog::done(result);
}

bool PeerImportDialog::run(VehicleSession &session, FileChooser &chooser, Reporter &reporter, QWidget *parent)
{
    PeerImportDialog dialog(session, chooser, reporter, parent);
    dialog.exec();
    return dialog.imported();
}
