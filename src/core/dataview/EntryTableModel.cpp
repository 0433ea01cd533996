#include "EntryTableModel.h"

#include <algorithm>

EntryTableModel::EntryTableModel(const LocaleFormats &locale, QObject *parent)
    : QAbstractTableModel(parent)
    , m_locale(locale)
{ }

void EntryTableModel::setEntries(const EntryList *entries, const DataViewFilter &filter, quint32 now)
{
    beginResetModel();
    m_entries = entries;
    m_type = filter.type;
    m_positions = entries ? filter.listedPositions(*entries, now) : std::vector<int>();
    endResetModel();
}

int EntryTableModel::positionAt(int row) const
{
    return row >= 0 && row < int(m_positions.size()) ? m_positions[size_t(row)] : -1;
}

const CVCItem *EntryTableModel::recordAt(int row) const
{
    const int position = positionAt(row);
    return position < 0 ? nullptr : &(*m_entries)[size_t(position)];
}

int EntryTableModel::rowOf(int position) const
{
    // Positions are in ascending order.
    const auto it = std::lower_bound(m_positions.begin(), m_positions.end(), position);
    return it != m_positions.end() && *it == position ? int(it - m_positions.begin()) : -1;
}

int EntryTableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_positions.size());
}

int EntryTableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(columns().size());
}

QVariant EntryTableModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return QVariant();
    const CVCItem *item = recordAt(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return DataViewColumns::cellText(*item, columns()[index.column()].field, m_locale);
    case IconNumberRole:
        return index.column() == 0 ? QVariant(item->iconIndex) : QVariant();
    case PositionRole:
        return positionAt(index.row());
    case RecordRole:
        return QVariant::fromValue(item);
    default:
        return QVariant();
    }
}

QVariant EntryTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= columns().size())
        return QVariant();
    if (role == Qt::DisplayRole)
        return columns()[section].header;
    return QVariant();
}
