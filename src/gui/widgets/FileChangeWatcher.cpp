#include "FileChangeWatcher.h"

#include <QApplication>
#include <QFileInfo>
#include <QWidget>

FileChangeWatcher::FileChangeWatcher(QWidget *window, std::function<void()> onChange)
    : QObject(window)
    , m_window(window)
    , m_onChange(std::move(onChange))
{
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, &FileChangeWatcher::fileChanged);
}

void FileChangeWatcher::watch(const QStringList &paths)
{
    m_paths = paths;
    const QStringList old = m_watcher.files();
    if (!old.isEmpty())
        m_watcher.removePaths(old);
    QStringList existing;
    for (const QString &path : paths)
        if (!path.isEmpty() && QFileInfo(path).isFile())
            existing.append(path);
    if (!existing.isEmpty())
        m_watcher.addPaths(existing);
}

void FileChangeWatcher::fileChanged()
{
    watch(m_paths);
    const QWidget *modal = QApplication::activeModalWidget();
    if (modal && modal != m_window->window())
        return;
    m_onChange();
}
