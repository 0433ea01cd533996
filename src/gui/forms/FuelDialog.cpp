#include "FuelDialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "EditListDialog.h"
#include "platform/CFormat.h"
#include "settings/PickLists.h"

using namespace Qt::StringLiterals;

FuelDialog::FuelDialog(const EntryFormContext &context, CVCItem &record, const QString &listsPath,
                       Reporter &reporter, QWidget *parent)
    : EntryDialog(FuelForm::title(), reporter, parent)
    , m_form(context, record)
    , m_record(record)
    , m_listsPath(listsPath)
{
    m_odometer = EntryDialog::odometerEdit(u"odometer"_s);
    m_date = EntryDialog::dateEdit(u"date"_s);
    m_stationButton = new QPushButton(u"STATION"_s);
    m_stationButton->setObjectName(u"stationButton"_s);
    m_station = pickListCombo(u"station"_s);
    m_quantity = decimalEdit(u"quantity"_s);
    m_unit = new QComboBox;
    m_unit->setObjectName(u"unit"_s);
    m_unit->setEditable(true);
    m_unit->setInsertPolicy(QComboBox::NoInsert);
    m_unit->addItems(FuelForm::unitItems());
    m_notFull = new QCheckBox(u"Not Full"_s);
    m_notFull->setObjectName(u"notFull"_s);
    m_price = decimalEdit(u"price"_s);
    m_priceUnit = new QLabel(u"/ Gallon"_s);
    m_temperature = integerEdit(u"temperature"_s);
    m_total = decimalEdit(u"total"_s);
    // Display only, yet readable: read-only rather than greyed out, and out of the Tab chain.
    m_economy = new QLineEdit;
    m_economy->setObjectName(u"economy"_s);
    m_economy->setReadOnly(true);
    m_economy->setFocusPolicy(Qt::NoFocus);
    m_economy->setBackgroundRole(QPalette::Window);
    m_note = new QPlainTextEdit;
    m_note->setObjectName(u"note"_s);
    m_note->setTabChangesFocus(true);
    m_note->setMaximumHeight(96);
    m_note->setMinimumHeight(64);
    m_note->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    auto *hint = new QLabel(FuelForm::hintText());
    hint->setWordWrap(true);

    auto *grid = new QGridLayout;
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    int row = 0;
    grid->addWidget(new QLabel(u"Odo."_s), row, 0);
    grid->addWidget(m_odometer, row, 1);
    grid->addWidget(m_date, row, 2, 1, 2);
    ++row;
    grid->addWidget(m_stationButton, row, 0);
    grid->addWidget(m_station, row, 1, 1, 3);
    ++row;
    grid->addWidget(new QLabel(u"Fuel"_s), row, 0);
    grid->addWidget(m_quantity, row, 1);
    grid->addWidget(m_unit, row, 2, 1, 2);
    ++row;
    grid->addWidget(new QLabel(u"Price"_s), row, 0);
    grid->addWidget(m_price, row, 1);
    grid->addWidget(m_priceUnit, row, 2);
    grid->addWidget(m_notFull, row, 3);
    ++row;
    grid->addWidget(new QLabel(u"Total Cost"_s), row, 0);
    grid->addWidget(m_total, row, 1);
    grid->addWidget(new QLabel(u"Cell Temp."_s), row, 2);
    grid->addWidget(m_temperature, row, 3);
    ++row;
    grid->addWidget(new QLabel(u"Econ."_s), row, 0);
    grid->addWidget(m_economy, row, 1);
    ++row;
    grid->addWidget(new QLabel(u"Note:"_s), row, 0, Qt::AlignTop);
    grid->addWidget(m_note, row, 1, 1, 3);

    contentLayout()->addLayout(grid);
    contentLayout()->addWidget(hint);
    contentLayout()->addStretch(1);

    chainTabOrder({ m_odometer, m_date, m_stationButton, m_station, m_quantity, m_unit, m_price, m_notFull,
                    m_total, m_temperature, m_note, saveButton(), cancelButton() });

    connect(m_quantity, &QLineEdit::textEdited, this, &FuelDialog::quantityEdited);
    connect(m_price, &QLineEdit::textEdited, this, &FuelDialog::priceEdited);
    connect(m_total, &QLineEdit::textEdited, this, [this] { m_totalEdited = true; });
    connect(m_unit, &QComboBox::currentTextChanged, this, &FuelDialog::unitEdited);
    connect(m_stationButton, &QPushButton::clicked, this, &FuelDialog::stationClicked);
    connect(m_odometer, &QLineEdit::editingFinished, this, [this] { readControls(false); });

    fillStations();
    showValues();
    finishLayout();
    m_odometer->setFocus();
}

void FuelDialog::fillStations()
{
    fillPickList(m_station, PickLists::loadItems(m_listsPath, PickLists::fuelStationList()));
}

bool FuelDialog::readControls(bool strict)
{
    FuelFormValues &values = m_form.values;
    double number = 0.0;
    if (EntryForms::parseNumber(m_odometer->text(), &number))
        values.odometer = number;
    else if (strict)
        return requestNumber(m_odometer, EntryForms::numberRequest());
    values.date = QDateTime(m_date->date(), values.date.time());
    values.station = m_station->currentText();
    values.quantityText = m_quantity->text();
    values.unitText = m_unit->currentText();
    values.notFull = m_notFull->isChecked();
    values.priceText = m_price->text();
    int whole = 0;
    if (EntryForms::parseInteger(m_temperature->text(), &whole))
        values.temperature = whole;
    else if (strict)
        return requestNumber(m_temperature, EntryForms::integerRequest());
    // The total is shown in cents; only a total the user typed replaces the computed one.
    if (m_totalEdited) {
        if (EntryForms::parseNumber(m_total->text(), &number))
            values.amount = number;
        else if (strict)
            return requestNumber(m_total, EntryForms::numberRequest());
    }
    values.note = m_note->toPlainText();
    return true;
}

void FuelDialog::showValues()
{
    m_showing = true;
    const FuelFormValues &values = m_form.values;
    setText(m_odometer, EntryForms::numberText(values.odometer));
    m_date->setDate(values.date.date());
    setComboText(m_station, values.station);
    setText(m_quantity, values.quantityText);
    setComboText(m_unit, values.unitText);
    m_notFull->setChecked(values.notFull);
    setText(m_price, values.priceText);
    m_priceUnit->setText(FuelForm::priceUnitText(values.unitText));
    setText(m_temperature, QString::number(values.temperature));
    setText(m_total, cformat("%.2f", values.amount));
    // Display only, never read back: two places are all it needs.
    setText(m_economy, cformat("%.2f", values.economy));
    if (m_note->toPlainText() != values.note)
        m_note->setPlainText(values.note);
    m_showing = false;
}

void FuelDialog::quantityEdited()
{
    readControls(false);
    m_form.quantityChanged();
    showValues();
}

void FuelDialog::priceEdited()
{
    readControls(false);
    m_form.priceChanged();
    showValues();
}

void FuelDialog::unitEdited()
{
    if (m_showing)
        return;
    m_form.values.unitText = m_unit->currentText();
    m_form.unitChanged();
    showValues();
}

void FuelDialog::stationClicked()
{
    readControls(false);
    EditListDialog::run(PickLists::fuelStationList(), m_listsPath, m_reporter, this);
    fillStations();
    showValues();
}

void FuelDialog::saveClicked()
{
    if (!readControls(true))
        return;
    m_form.save(m_record, m_reporter);
    accept();
}
