#include "DevicePaths.h"

#include <QDir>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {
QString withSlash(QString path)
{
    if (!path.endsWith(u'/'))
        path += u'/';
    return path;
}
} // namespace

DevicePaths::DevicePaths()
    : m_root(withSlash(QDir::homePath()))
{
    QString docs = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (docs.isEmpty())
        docs = m_root + u"Documents"_s;
    m_myDocuments = withSlash(docs);
}

DevicePaths::DevicePaths(const QString &root)
    : m_root(withSlash(QDir(root).absolutePath()))
    , m_myDocuments(m_root + u"My Documents/"_s)
    , m_sandboxed(true)
{ }

DevicePaths DevicePaths::fromEnvironment(const QString &rootOption)
{
    if (!rootOption.isEmpty())
        return DevicePaths(rootOption);
    const QString env = qEnvironmentVariable("TARVANE_ROOT");
    if (!env.isEmpty())
        return DevicePaths(env);
    return DevicePaths();
}

QString DevicePaths::hostPath(const QString &devicePath) const
{
    if (devicePath.startsWith(u':') || devicePath.startsWith(u'/'))
        return devicePath;
    QString rest = devicePath;
    rest.replace(u'\\', u'/');
    while (rest.startsWith(u'/'))
        rest.remove(0, 1);

    const auto under = [&rest](const QString &prefix, QString *tail) {
        if (rest.compare(prefix, Qt::CaseInsensitive) == 0) {
            *tail = QString();
            return true;
        }
        if (rest.startsWith(prefix + u'/', Qt::CaseInsensitive)) {
            *tail = rest.mid(prefix.size() + 1);
            return true;
        }
        return false;
    };

    QString tail;
    if (under(u"My Documents"_s, &tail))
        return m_myDocuments + tail;
    if (under(u"Program Files/Tarvane"_s, &tail))
        return builtinInstallFolder() + tail;
    return m_root + rest;
}
