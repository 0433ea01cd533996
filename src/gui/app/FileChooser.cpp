#include "FileChooser.h"

#include <QDir>
#include <QFileDialog>
#include <QPushButton>

#include "widgets/ScreenFit.h"

using namespace Qt::StringLiterals;

namespace {
QString withSlash(const QString &folder)
{
    if (folder.isEmpty() || folder.endsWith(u'/'))
        return folder;
    return folder + u'/';
}
} // namespace

QString DialogFileChooser::chooseFolder(QWidget *parent, const QString &caption, const QString &startFolder)
{
    QFileDialog dialog(parent, caption, startFolder);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    fitToScreen(dialog);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return QString();
    return withSlash(dialog.selectedFiles().constFirst());
}

void DialogFileChooser::fitToScreen(QFileDialog &dialog)
{
    // The dialog's own minimum is wider than a 480 px screen: let it shrink, drop the side bar of
    // places there, and size it to the room on the screen.
    const QSize room = ScreenFit::room(&dialog);
    dialog.setMinimumSize(QSize(0, 0));
    if (room.width() < 640) {
        if (QWidget *sidebar = dialog.findChild<QWidget *>(u"sidebar"_s))
            sidebar->hide();
    }
    // Buttons big enough to touch.
    for (QPushButton *button : dialog.findChildren<QPushButton *>())
        button->setMinimumHeight(32);
    ScreenFit::resize(&dialog, QSize(720, 520));
}

QString DialogFileChooser::chooseOpenFile(QWidget *parent, const QString &caption, const QString &startFolder,
                                          const QString &proposedName, const QString &filter)
{
    // Non-native so the proposed name is preselected the same way on every platform.
    QFileDialog dialog(parent, caption, startFolder, filter);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    if (!proposedName.isEmpty())
        dialog.selectFile(QDir(startFolder).filePath(proposedName));
    fitToScreen(dialog);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return QString();
    return dialog.selectedFiles().constFirst();
}

QString DialogFileChooser::chooseSaveFile(QWidget *parent, const QString &caption, const QString &startFolder,
                                          const QString &proposedName, const QString &filter)
{
    return QFileDialog::getSaveFileName(parent, caption, QDir(startFolder).filePath(proposedName), filter);
}

QString ScriptedFileChooser::next()
{
    return m_answers.isEmpty() ? QString() : m_answers.dequeue();
}

QString ScriptedFileChooser::chooseFolder(QWidget *, const QString &, const QString &startFolder)
{
    m_requests.append(u"folder "_s + startFolder);
    return withSlash(next());
}

QString ScriptedFileChooser::chooseOpenFile(QWidget *, const QString &, const QString &startFolder,
                                            const QString &proposedName, const QString &)
{
    m_requests.append(u"file "_s + startFolder + u' ' + proposedName);
    return next();
}

QString ScriptedFileChooser::chooseSaveFile(QWidget *, const QString &, const QString &startFolder,
                                            const QString &proposedName, const QString &)
{
    m_requests.append(u"save "_s + startFolder + u' ' + proposedName);
    return next();
}
