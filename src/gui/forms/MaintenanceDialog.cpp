#include "MaintenanceDialog.h"

#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

#include "EditListDialog.h"
#include "settings/PickLists.h"
#include "widgets/IconArt.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int PreviewSize = 40;
constexpr int IconSize = 28;

} // namespace

MaintenanceDialog::MaintenanceDialog(const EntryFormContext &context, CVCItem &record,
                                     const QString &listsPath, Reporter &reporter, QWidget *parent)
    : EntryDialog(MaintenanceForm::title(), reporter, parent)
    , m_form(context, record)
    , m_record(record)
    , m_listsPath(listsPath)
{
    m_odometer = EntryDialog::odometerEdit(u"odometer"_s);
    m_date = EntryDialog::dateEdit(u"date"_s);
    m_repairButton = new QPushButton(u"REPAIR"_s);
    m_repairButton->setObjectName(u"repairButton"_s);
    m_repair = pickListCombo(u"repairType"_s);
    m_preview = new QLabel;
    m_preview->setObjectName(u"iconPreview"_s);
    m_preview->setFixedSize(PreviewSize, PreviewSize);
    m_preview->setAlignment(Qt::AlignCenter);
    m_invoice = new QLineEdit;
    m_invoice->setObjectName(u"invoice"_s);
    m_cost = decimalEdit(u"cost"_s);
    m_locationButton = new QPushButton(u"LOC"_s);
    m_locationButton->setObjectName(u"locationButton"_s);
    m_location = pickListCombo(u"location"_s);
    m_note = new QPlainTextEdit;
    m_note->setObjectName(u"note"_s);
    m_note->setTabChangesFocus(true);
    m_note->setMaximumHeight(96);
    m_note->setMinimumHeight(64);
    auto *hint = new QLabel(MaintenanceForm::hintText());
    hint->setWordWrap(true);

    for (int i = 0; i < MaintenanceForm::IconButtonCount; ++i) {
        auto *button = new QToolButton;
        const QString name = u"I"_s + QString::number(i);
        button->setObjectName(name);
        button->setText(name);
        button->setToolTip(name);
        button->setAccessibleName(name);
        button->setIcon(IconArt::resourceIcon(MaintenanceForm::buttonPicture(i)));
        button->setIconSize(QSize(IconSize, IconSize));
        button->setMinimumSize(40, 40);
        connect(button, &QToolButton::clicked, this, [this, i] {
            m_form.iconButtonClicked(i);
            showIcon();
        });
        m_iconButtons.append(button);
    }

    auto *grid = new QGridLayout;
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    int row = 0;
    grid->addWidget(new QLabel(u"Odo."_s), row, 0);
    grid->addWidget(m_odometer, row, 1);
    grid->addWidget(m_date, row, 2, 1, 2);
    ++row;
    auto *repairRow = new QHBoxLayout;
    repairRow->addWidget(m_repair, 1);
    repairRow->addWidget(m_preview);
    grid->addWidget(m_repairButton, row, 0);
    grid->addLayout(repairRow, row, 1, 1, 3);
    ++row;
    grid->addWidget(new QLabel(u"Inv."_s), row, 0);
    grid->addWidget(m_invoice, row, 1);
    grid->addWidget(new QLabel(u"Cost"_s), row, 2);
    grid->addWidget(m_cost, row, 3);
    ++row;
    grid->addWidget(m_locationButton, row, 0);
    grid->addWidget(m_location, row, 1, 1, 3);
    ++row;
    grid->addWidget(new QLabel(u"Note"_s), row, 0, Qt::AlignTop);
    grid->addWidget(m_note, row, 1, 1, 3);

    auto *icons = new QGridLayout;
    icons->addWidget(new QLabel(u"Default Icon"_s), 0, 0, 1, 2);
    icons->addWidget(m_iconButtons.at(0), 0, 2);
    icons->addWidget(new QLabel(u"Or select an icon below"_s), 1, 0, 1, 5);
    for (int i = 1; i < MaintenanceForm::IconButtonCount; ++i)
        icons->addWidget(m_iconButtons.at(i), 2 + (i - 1) / 5, (i - 1) % 5);

    contentLayout()->addLayout(grid);
    contentLayout()->addLayout(icons);
    contentLayout()->addWidget(hint);
    contentLayout()->addStretch(1);

    QList<QWidget *> order { m_odometer, m_date,           m_repairButton, m_repair, m_invoice,
                             m_cost,     m_locationButton, m_location,     m_note };
    for (QToolButton *button : std::as_const(m_iconButtons))
        order.append(button);
    order << saveButton() << cancelButton();
    chainTabOrder(order);

    connect(m_repair, &QComboBox::textActivated, this, &MaintenanceDialog::repairTypeChosen);
    connect(m_repair->lineEdit(), &QLineEdit::textEdited, this, &MaintenanceDialog::repairTypeEdited);
    connect(m_repairButton, &QPushButton::clicked, this, [this] { listClicked(PickLists::repairList()); });
    connect(m_locationButton, &QPushButton::clicked, this,
            [this] { listClicked(PickLists::repairLocation()); });

    fillLists();
    showValues();
    showIcon();
    finishLayout();
    m_odometer->setFocus();
}

void MaintenanceDialog::fillLists()
{
    fillPickList(m_repair, PickLists::loadItems(m_listsPath, PickLists::repairList()));
    fillPickList(m_location, PickLists::loadItems(m_listsPath, PickLists::repairLocation()));
}

bool MaintenanceDialog::readControls(bool strict)
{
    MaintenanceFormValues &values = m_form.values;
    double number = 0.0;
    if (EntryForms::parseNumber(m_odometer->text(), &number))
        values.odometer = number;
    else if (strict)
        return requestNumber(m_odometer, EntryForms::numberRequest());
    values.date = QDateTime(m_date->date(), values.date.time());
    values.repairType = m_repair->currentText();
    values.invoice = m_invoice->text();
    if (EntryForms::parseNumber(m_cost->text(), &number))
        values.cost = number;
    else if (strict)
        return requestNumber(m_cost, EntryForms::numberRequest());
    values.location = m_location->currentText();
    values.note = m_note->toPlainText();
    return true;
}

void MaintenanceDialog::showValues()
{
    const MaintenanceFormValues &values = m_form.values;
    setText(m_odometer, EntryForms::numberText(values.odometer));
    m_date->setDate(values.date.date());
    setComboText(m_repair, values.repairType);
    setText(m_invoice, values.invoice);
    setText(m_cost, EntryForms::numberText(values.cost));
    setComboText(m_location, values.location);
    if (m_note->toPlainText() != values.note)
        m_note->setPlainText(values.note);
}

void MaintenanceDialog::showIcon()
{
    m_preview->setPixmap(
        IconArt::resourcePixmap(m_form.pictureResource(), PreviewSize - 4, m_preview->devicePixelRatioF()));
    const bool enabled = m_form.iconButtonsEnabled();
    for (QToolButton *button : std::as_const(m_iconButtons))
        button->setEnabled(enabled);
    m_repairButton->setEnabled(enabled);
}

void MaintenanceDialog::repairTypeChosen(const QString &text)
{
    m_form.repairTypeChanged(text);
    showIcon();
}

void MaintenanceDialog::repairTypeEdited()
{
    readControls(false);
    m_form.repairTypeChanged(m_form.values.repairType);
    showIcon();
}

void MaintenanceDialog::listClicked(const QString &section)
{
    readControls(false);
    EditListDialog::run(section, m_listsPath, m_reporter, this);
    fillLists();
    showValues();
}

void MaintenanceDialog::saveClicked()
{
    if (!readControls(true))
        return;
    m_form.save(m_record, m_reporter);
    accept();
}
