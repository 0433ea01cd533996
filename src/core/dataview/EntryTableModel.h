#pragma once

#include <QAbstractTableModel>

#include <vector>

#include "DataViewColumns.h"
#include "DataViewFilter.h"

class LocaleFormats;

// The History list: the records a filter lists, in list order, in the columns of the filter's
// type. Texts are made when the view asks for them, so a refill of a large log costs one pass
// of the filter and no per-row work. Headers do not sort: the list keeps the log's order.
class EntryTableModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Role {
        IconNumberRole = Qt::UserRole + 1, // the record's iconIndex, on column 0; the view draws it
        PositionRole, // the record's position in the log (int)
        RecordRole, // const CVCItem *
    };

    explicit EntryTableModel(const LocaleFormats &locale, QObject *parent = nullptr);

    // Shows the entries the filter lists at the time now. The list must outlive the model or be
    // set again; the model keeps a pointer, not a copy.
    void setEntries(const EntryList *entries, const DataViewFilter &filter, quint32 now);

    DataViewFilter::Type viewType() const { return m_type; }
    const QList<DataViewColumns::Column> &columns() const { return DataViewColumns::layout(m_type); }
    // -1 for a row outside the model.
    int positionAt(int row) const;
    const CVCItem *recordAt(int row) const;
    // The row that shows the log's entry at position, -1 when it is not listed.
    int rowOf(int position) const;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    const LocaleFormats &m_locale;
    const EntryList *m_entries = nullptr;
    std::vector<int> m_positions;
    DataViewFilter::Type m_type = DataViewFilter::AllTypes;
};

Q_DECLARE_METATYPE(const CVCItem *)
