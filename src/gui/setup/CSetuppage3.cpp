#include "CSetuppage3.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "setup/SetupForm.h"

using namespace Qt::StringLiterals;

CSetuppage3::CSetuppage3(SetupForm &form, QWidget *parent)
    : SetupPage(SetupPages::intervalsTitle(), SetupPages::intervalsHint(), form, parent)
{
    auto *grid = new QGridLayout;
    // In the page's layout first, so the edits belong to the page before their tab order is set.
    contentLayout()->addLayout(grid);
    grid->setColumnStretch(1, 3);
    grid->setColumnStretch(2, 2);
    const QStringList headings { u"Item"_s, u"Distance"_s, u"Days"_s };
    for (int column = 0; column < headings.size(); ++column) {
        auto *heading = new QLabel(headings.at(column));
        QFont bold = heading->font();
        bold.setBold(true);
        heading->setFont(bold);
        grid->addWidget(heading, 0, column);
    }
    const QStringList rows = SetupPages::intervalRows();
    QWidget *previous = nullptr;
    for (int row = 0; row < rows.size(); ++row) {
        m_distance[size_t(row)] = digitsEdit(u"distance%1"_s.arg(row), 10);
        m_days[size_t(row)] = digitsEdit(u"days%1"_s.arg(row), 9);
        m_distance[size_t(row)]->setAccessibleName(rows.at(row) + u" Distance"_s);
        m_days[size_t(row)]->setAccessibleName(rows.at(row) + u" Days"_s);
        grid->addWidget(new QLabel(rows.at(row)), row + 1, 0);
        grid->addWidget(m_distance[size_t(row)], row + 1, 1);
        grid->addWidget(m_days[size_t(row)], row + 1, 2);
        if (previous)
            setTabOrder(previous, m_distance[size_t(row)]);
        setTabOrder(m_distance[size_t(row)], m_days[size_t(row)]);
        previous = m_days[size_t(row)];
    }
}

void CSetuppage3::showValues()
{
    const IntervalsValues values = m_form.intervals();
    for (size_t row = 0; row < 5; ++row) {
        m_distance[row]->setText(SetupPages::numberText(values.distance[row]));
        m_days[row]->setText(QString::number(values.days[row]));
    }
}

void CSetuppage3::confirm()
{
    IntervalsValues values = m_form.intervals();
    for (size_t row = 0; row < 5; ++row) {
        SetupPages::digitsOnly(m_distance[row]->text(), &values.distance[row]);
        SetupPages::digitsOnly(m_days[row]->text(), &values.days[row]);
    }
    m_form.confirm(values);
}
