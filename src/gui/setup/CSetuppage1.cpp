#include "CSetuppage1.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

#include "setup/SetupForm.h"

using namespace Qt::StringLiterals;

CSetuppage1::CSetuppage1(SetupForm &form, QWidget *parent)
    : SetupPage(SetupPages::generalInfoTitle(), SetupPages::generalInfoHint(), form, parent)
{
    m_vin = upperCaseEdit(u"vin"_s);
    m_vin->setMaxLength(SetupPages::VinLength);
    // The VIN edit has no caption of its own; the note below it says what it holds.
    m_vin->setPlaceholderText(u"VIN"_s);
    m_vin->setAccessibleName(u"VIN"_s);
    m_make = new QLineEdit;
    m_make->setObjectName(u"make"_s);
    m_model = new QLineEdit;
    m_model->setObjectName(u"model"_s);
    m_year = new QLineEdit;
    m_year->setObjectName(u"year"_s);
    m_year->setValidator(new QRegularExpressionValidator(QRegularExpression(u"-?\\d{0,9}"_s), m_year));
    m_year->setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    m_plate = upperCaseEdit(u"plate"_s);

    auto *note = new QLabel(SetupPages::vinNote());
    note->setObjectName(u"vinNote"_s);
    note->setWordWrap(true);
    contentLayout()->addWidget(m_vin);
    contentLayout()->addWidget(note);
    auto *fields = new QFormLayout;
    fields->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    fields->addRow(u"Make"_s, m_make);
    fields->addRow(u"Model"_s, m_model);
    fields->addRow(u"Year"_s, m_year);
    fields->addRow(u"Plate"_s, m_plate);
    contentLayout()->addLayout(fields);
    setTabOrder(m_vin, m_make);
    setTabOrder(m_make, m_model);
    setTabOrder(m_model, m_year);
    setTabOrder(m_year, m_plate);
}

QString CSetuppage1::problem() const
{
    return m_form.vinProblem(SetupPages::upperCaseEdit(m_vin->text(), SetupPages::VinLength));
}

void CSetuppage1::showValues()
{
    const GeneralInfoValues values = m_form.generalInfo();
    m_vin->setText(values.vin);
    m_make->setText(values.make);
    m_model->setText(values.model);
    m_year->setText(QString::number(values.year));
    m_plate->setText(values.plate);
}

void CSetuppage1::confirm()
{
    m_form.confirm(GeneralInfoValues { m_vin->text(), m_make->text(), m_model->text(), m_year->text().toInt(),
                                       m_plate->text() });
}
