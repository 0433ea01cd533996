#include "CsvImportForm.h"

#include <QFileInfo>

#include "CsvHeader.h"
#include "platform/Reporter.h"

using namespace Qt::StringLiterals;

CsvImportForm::CsvImportForm(SettingsStore &preferences, Reporter &reporter)
    : m_store(preferences)
    , m_reporter(reporter)
{
    m_map = m_store.load(m_store.lastMapName());
    const QString last = m_store.csvName();
    CsvHeader header;
    if (!last.isEmpty() && QFileInfo(last).isFile()
        && CsvHeader::read(last, &header) == CsvHeader::Status::Ok) {
        m_fileName = last;
        m_titles = header.titles;
        m_importEnabled = true;
    }
}

void CsvImportForm::chooseFile(const QString &path)
{
    m_fileName = path;
    m_store.setCsvName(path);
    CsvHeader header;
    const CsvHeader::Status status = CsvHeader::read(path, &header);
    m_titles = header.titles;
    m_importEnabled = status == CsvHeader::Status::Ok;
    if (!m_importEnabled)
        m_reporter.error(CsvHeader::message(status));
}

void CsvImportForm::selectMap(const QString &name)
{
    m_map = m_store.load(name);
}

bool CsvImportForm::saveMap(const QString &name)
{
    const QString error = ImportMapStore::nameError(name);
    if (!error.isEmpty()) {
        m_reporter.error(error);
        return false;
    }
    m_map.name = name;
    if (!m_store.save(m_map)) {
        m_reporter.error(u"The map \"%1\" could not be saved in the preferences."_s.arg(name));
        return false;
    }
    return true;
}

bool CsvImportForm::wouldClear(int field, int column) const
{
    return m_map.isMapped(field) && (column < 0 || m_map.column(field) == column);
}

void CsvImportForm::toggle(int field, int column)
{
    if (field < 0 || field >= ImportMap::FieldCount)
        return;
    if (wouldClear(field, column))
        m_map.clear(field);
    else if (column >= 0)
        m_map.assign(field, column);
}

QList<CsvImportForm::DataRow> CsvImportForm::dataRows() const
{
    QList<DataRow> rows;
    for (int column = 0; column < m_titles.size(); ++column)
        if (!m_titles[column].isEmpty())
            rows.append({ column, m_titles[column] });
    return rows;
}

QString CsvImportForm::assignmentText(int field) const
{
    if (!m_map.isMapped(field))
        return QString();
    const int column = m_map.column(field);
    const QString title = m_titles.value(column);
    return title.isEmpty() ? u"Column %1"_s.arg(column + 1) : u"%1: %2"_s.arg(column + 1).arg(title);
}
