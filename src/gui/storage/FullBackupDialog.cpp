#include "FullBackupDialog.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QThread>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "platform/AppContext.h"
#include "session/VehicleSession.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int MinimumControlHeight = 32;

QLabel *boldLabel(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    return label;
}
} // namespace

FullBackupDialog::FullBackupDialog(FullBackup::Kind kind, AppContext &context, QWidget *parent,
                                   const BackupLocations::DriveEnumerator &drives, FullBackup::Copier copier)
    : QDialog(parent)
    , m_kind(kind)
    , m_context(context)
    , m_full(context, std::move(copier))
{
    setWindowTitle(FullBackup::title(kind));
    setObjectName(kind == FullBackup::Kind::Backup ? u"fullBackupDialog"_s : u"fullRestoreDialog"_s);
    buildControls();
    fillLocations(drives ? drives : BackupLocations::systemDrives(context.paths));
    resize(420, 480);
}

void FullBackupDialog::buildControls()
{
    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(8);

    auto *locationLabel = boldLabel(u"Select Location"_s, this);
    m_location = new QComboBox(this);
    m_location->setObjectName(u"location"_s);
    m_location->setMinimumHeight(MinimumControlHeight);
    locationLabel->setBuddy(m_location);
    m_folder = new QLabel(this);
    m_folder->setObjectName(u"backupFolder"_s);
    m_folder->setWordWrap(true);
    m_folder->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(locationLabel);
    layout->addWidget(m_location);
    layout->addWidget(m_folder);

    const bool backup = m_kind == FullBackup::Kind::Backup;
    m_run = new QPushButton(backup ? u"Backup"_s : u"Restore"_s, this);
    m_run->setObjectName(u"run"_s);
    m_run->setDefault(true);
    m_abort = new QPushButton(u"Abort"_s, this);
    m_abort->setObjectName(u"abort"_s);
    auto *buttons = new QHBoxLayout;
    for (QPushButton *button : { m_run, m_abort }) {
        button->setMinimumHeight(MinimumControlHeight);
        button->setMinimumWidth(110);
        buttons->addWidget(button);
    }
    buttons->addStretch(1);
    layout->addLayout(buttons);

    layout->addSpacing(4);
    layout->addWidget(boldLabel(u"Status"_s, this));
    m_files = new QTreeWidget(this);
    m_files->setObjectName(u"filesCopied"_s);
    m_files->setHeaderLabels({ u"FILES COPIED"_s });
    m_files->setRootIsDecorated(false);
    m_files->setUniformRowHeights(true);
    m_files->setAlternatingRowColors(true);
    m_files->setSelectionMode(QAbstractItemView::NoSelection);
    m_files->setTextElideMode(Qt::ElideMiddle);
    m_files->header()->setStretchLastSection(true);
    m_files->setAccessibleName(u"Files copied"_s);
    layout->addWidget(m_files, 1);

    connect(m_location, &QComboBox::currentIndexChanged, this, &FullBackupDialog::showFolder);
    connect(m_run, &QPushButton::clicked, this, &FullBackupDialog::runCopy);
    connect(m_abort, &QPushButton::clicked, this, &QDialog::reject);
}

void FullBackupDialog::fillLocations(const BackupLocations::DriveEnumerator &drives)
{
    m_locations = BackupLocations::list(m_context.reporter, drives);
    for (const BackupLocation &location : std::as_const(m_locations))
        m_location->addItem(location.name);
    const qsizetype last = std::find_if(m_locations.cbegin(), m_locations.cend(),
                                        [name = m_full.lastLocation(m_kind)](const BackupLocation &l) {
                                            return l.name == name;
                                        })
        - m_locations.cbegin();
    m_location->setCurrentIndex(last < m_locations.size() ? int(last) : 0);
    showFolder();
}

void FullBackupDialog::showFolder()
{
    const int index = m_location->currentIndex();
    if (index < 0 || index >= m_locations.size())
        return;
    m_folder->setText(QDir::toNativeSeparators(m_full.backupFolder(m_locations.at(index))));
}

void FullBackupDialog::addLine(const FullCopyStep &step)
{
    auto *item = new QTreeWidgetItem(m_files, { step.text() });
    item->setSizeHint(0, QSize(0, 28));
    item->setToolTip(0, step.text());
    if (step.outcome != FullCopyStep::Outcome::Copied) {
        item->setIcon(0, style()->standardIcon(QStyle::SP_MessageBoxWarning));
        item->setForeground(0, QColor(0xb0, 0x00, 0x20));
    }
    m_files->scrollToItem(item);
    // The list fills while the copies run.
    m_files->repaint();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void FullBackupDialog::runCopy()
{
    const int index = m_location->currentIndex();
    if (index < 0 || index >= m_locations.size())
        return;
    const BackupLocation location = m_locations.at(index);
    const QString folder = m_full.backupFolder(location);
    const QString kept = m_full.beforeRestoreFolder();
    const QString question = m_kind == FullBackup::Kind::Backup ? FullBackup::backupQuestion()
                                                                : FullBackup::restoreQuestion(kept);
    if (!m_context.reporter.ask(question, windowTitle()))
        return;

    m_files->clear();
    m_files->repaint();
    QThread::msleep(20);
    m_run->setEnabled(false);
    m_abort->setEnabled(false);
    const auto progress = [this](const FullCopyStep &step) {
        addLine(step);
    };
    FullCopyResult result = m_kind == FullBackup::Kind::Backup ? m_full.backup(folder, progress)
                                                               : m_full.restore(folder, kept, progress);
    m_run->setEnabled(true);
    m_abort->setEnabled(true);
    m_result = std::move(result);

    if (m_kind == FullBackup::Kind::Backup && m_result->complete()) {
        accept();
        m_full.reportResult(m_kind, *m_result);
        return;
    }
    m_full.reportResult(m_kind, *m_result);
}

void FullBackupDialog::done(int result)
{
    const int index = m_location->currentIndex();
    if (index >= 0 && index < m_locations.size())
        m_full.storeLocation(m_kind, m_locations.at(index).name);
    QDialog::done(result);
}

bool FullBackupDialog::openFromMainScreen(FullBackup::Kind kind, VehicleSession &session, QWidget *parent)
{
    FullBackupDialog dialog(kind, session.context(), parent);
    const bool accepted = dialog.exec() == QDialog::Accepted;
    if (kind == FullBackup::Kind::Backup) {
        if (accepted)
            session.addFullBackupLine();
        return accepted;
    }
    if (!dialog.hasRun())
        return false;
    session.addFullRestoreLine();
    return true;
}
