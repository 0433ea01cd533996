#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QStringList>

#include <functional>

class QWidget;

// Tells a window that another program (the CLI, a cron job) wrote one of the data files it
// shows, so that it reads them again before the user changes anything. Our own saves come
// through too; the window's fingerprint check tells them apart. While another dialog is modal
// over the window nothing is reloaded under it: the check the window makes before every change
// catches up then, as it does for anything the watcher misses.
class FileChangeWatcher : public QObject
{
    Q_OBJECT
public:
    FileChangeWatcher(QWidget *window, std::function<void()> onChange);

    // The files to follow from now on (those that exist; an atomic save replaces the file, so the
    // watch is renewed after every change).
    void watch(const QStringList &paths);
    QStringList watched() const { return m_watcher.files(); }

private:
    void fileChanged();

    QWidget *m_window;
    std::function<void()> m_onChange;
    QStringList m_paths;
    QFileSystemWatcher m_watcher;
};
