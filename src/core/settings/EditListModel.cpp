#include "EditListModel.h"

#include "PickLists.h"
#include "platform/Reporter.h"

using namespace Qt::StringLiterals;

EditListModel::EditListModel(const QString &section, const QString &hostPath, Reporter &reporter)
    : m_section(section)
    , m_path(hostPath)
    , m_reporter(reporter)
{ }

void EditListModel::insertRow(int index, const QString &text)
{
    // A list view puts a row asked for beyond its end at the end.
    m_rows.insert(qBound(0, index, int(m_rows.size())), text);
}

bool EditListModel::reload()
{
    m_rows.clear();
    m_selected = -1;
    if (!m_ini.Load(m_path)) {
        // The object keeps the path, so a missing list file comes back empty when it goes away.
        m_reporter.error(loadErrorMessage());
        return false;
    }

    // The walk counts the missing key that ends it too: with M keys, n ends at M + 1.
    int n = 0;
    bool exists = true;
    while (exists) {
        QString text;
        exists = m_ini.GetString(m_section, PickLists::lineKey(n), text);
        if (exists && !text.isEmpty())
            insertRow(n, text);
        ++n;
    }

    // Rewrite Line0..Line(n): the rows first, then the keys behind them removed. Keys further
    // behind a gap than that are never seen and stay.
    int written = 0;
    for (int j = 0; j <= n; ++j) {
        const QString text = j < m_rows.size() ? m_rows.at(j) : QString();
        if (!text.isEmpty()) {
            m_ini.SetString(m_section, PickLists::lineKey(j), text);
            ++written;
        } else {
            m_ini.DeleteKey(m_section, PickLists::lineKey(j));
        }
    }
    m_nextLine = written + 1;
    if (!m_ini.Save(m_path)) {
        m_reporter.error(saveErrorMessage());
        return false;
    }
    return true;
}

void EditListModel::setNewItemText(const QString &text)
{
    m_newItem = text.left(maxItemLength);
}

void EditListModel::add()
{
    m_ini.Load(m_path);
    const QString text = m_newItem.left(maxItemLength);
    if (text.isEmpty())
        return;
    insertRow(m_nextLine, text);
    m_ini.SetString(m_section, PickLists::lineKey(m_nextLine - 1), text);
    ++m_nextLine;
    if (!m_ini.Save(m_path))
        m_reporter.error(saveErrorMessage());
    m_newItem.clear();
    reload();
}

void EditListModel::deleteSelected()
{
    m_ini.Load(m_path);
    if (m_selected < 0 || m_selected >= m_rows.size())
        return;
    const int row = m_selected;
    // Only information: the item goes whatever the user does with the box.
    m_reporter.info(m_rows.at(row), u"Edit List"_s);
    m_ini.SetString(m_section, PickLists::lineKey(row), QString());
    if (!m_ini.Save(m_path))
        m_reporter.error(deleteSaveErrorMessage());
    reload();
}

bool EditListModel::save()
{
    return m_ini.Save(m_path);
}
