#include "TripDialog.h"

#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimeEdit>
#include <QVBoxLayout>

#include "EditListDialog.h"
#include "settings/IniFile.h"
#include "settings/PickLists.h"
#include "widgets/IconArt.h"

using namespace Qt::StringLiterals;

namespace {

QPushButton *smallButton(const QString &caption)
{
    auto *button = new QPushButton(caption);
    button->setObjectName(caption);
    button->setMinimumWidth(40);
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return button;
}

} // namespace

TripDialog::TripDialog(const EntryFormContext &context, CVCItem &record, const DevicePaths &paths,
                       const QString &installFolder, Reporter &reporter, QWidget *parent)
    : EntryDialog(TripForm::title(), reporter, parent)
    , m_form(context, record)
    , m_record(record)
    , m_paths(paths)
    , m_installFolder(installFolder)
{
    auto *header = new QLabel;
    header->setPixmap(IconArt::pixmap(IconArt::Picture::ClosedTrip, 32, devicePixelRatioF()));
    m_vehicle = new QLabel(TripForm::noneText());
    m_vehicle->setObjectName(u"vehicle"_s);
    QFont bold = m_vehicle->font();
    bold.setBold(true);
    m_vehicle->setFont(bold);

    m_contactButton = new QPushButton(u"contact"_s);
    m_contactButton->setObjectName(u"contactButton"_s);
    m_contact = pickListCombo(u"contact"_s);
    m_purposeButton = new QPushButton(u"purpose"_s);
    m_purposeButton->setObjectName(u"purposeButton"_s);
    m_purpose = pickListCombo(u"purpose"_s);
    m_destinationButton = new QPushButton(u"destination"_s);
    m_destinationButton->setObjectName(u"destinationButton"_s);
    // Only the destination is limited; contact and purpose take any length.
    m_destination = pickListCombo(u"destination"_s);
    m_destination->lineEdit()->setMaxLength(TripForm::ComboTextLimit);
    m_note = new QPlainTextEdit;
    m_note->setObjectName(u"note"_s);
    m_note->setTabChangesFocus(true);
    m_note->setMaximumHeight(80);
    m_note->setMinimumHeight(56);
    m_tolls = decimalEdit(u"tolls"_s);
    m_parking = decimalEdit(u"parking"_s);

    m_departOdometer = EntryDialog::odometerEdit(u"departOdometer"_s);
    m_departDate = EntryDialog::dateEdit(u"departDate"_s);
    m_departTime = EntryDialog::timeEdit(u"departTime"_s);
    m_arriveOdometer = EntryDialog::odometerEdit(u"arriveOdometer"_s);
    m_arriveDate = EntryDialog::dateEdit(u"arriveDate"_s);
    m_arriveTime = EntryDialog::timeEdit(u"arriveTime"_s);
    QPushButton *du = smallButton(u"du"_s);
    QPushButton *dd = smallButton(u"dd"_s);
    QPushButton *au = smallButton(u"au"_s);
    QPushButton *ad = smallButton(u"ad"_s);
    QPushButton *now = smallButton(u"T"_s);
    now->setToolTip(u"Arrival now"_s);
    // Kept for the layout of the original form; it does nothing.
    auto *outlook = new QPushButton(u"outlook"_s);
    outlook->setObjectName(u"outlook"_s);
    outlook->setEnabled(false);
    outlook->setVisible(false);

    auto *top = new QHBoxLayout;
    top->addWidget(header);
    top->addWidget(m_vehicle, 1);
    top->addWidget(outlook);

    auto *grid = new QGridLayout;
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    grid->addWidget(m_contactButton, 0, 0);
    grid->addWidget(m_contact, 0, 1, 1, 3);
    grid->addWidget(m_purposeButton, 1, 0);
    grid->addWidget(m_purpose, 1, 1, 1, 3);
    grid->addWidget(m_destinationButton, 2, 0);
    grid->addWidget(m_destination, 2, 1, 1, 3);
    grid->addWidget(new QLabel(u"Note"_s), 3, 0, Qt::AlignTop);
    grid->addWidget(m_note, 3, 1, 1, 3);
    grid->addWidget(new QLabel(u"Tolls"_s), 4, 0);
    grid->addWidget(m_tolls, 4, 1);
    grid->addWidget(new QLabel(u"Park"_s), 4, 2);
    grid->addWidget(m_parking, 4, 3);

    const auto group = [](const QString &title, QLineEdit *odometer, QPushButton *up, QPushButton *down,
                          QDateEdit *date, QTimeEdit *time, QPushButton *extra) {
        auto *box = new QGroupBox(title);
        auto *layout = new QGridLayout(box);
        layout->addWidget(odometer, 0, 0);
        layout->addWidget(up, 0, 1);
        layout->addWidget(down, 0, 2);
        layout->addWidget(date, 1, 0);
        layout->addWidget(time, 1, 1, 1, 2);
        if (extra)
            layout->addWidget(extra, 1, 3);
        layout->setColumnStretch(0, 1);
        return box;
    };
    contentLayout()->addLayout(top);
    contentLayout()->addLayout(grid);
    contentLayout()->addWidget(
        group(u"DEPARTURE"_s, m_departOdometer, du, dd, m_departDate, m_departTime, nullptr));
    contentLayout()->addWidget(
        group(u"ARRIVAL"_s, m_arriveOdometer, au, ad, m_arriveDate, m_arriveTime, now));
    contentLayout()->addStretch(1);

    chainTabOrder({ m_contactButton,
                    m_contact,
                    m_purposeButton,
                    m_purpose,
                    m_destinationButton,
                    m_destination,
                    m_note,
                    m_tolls,
                    m_parking,
                    m_departOdometer,
                    du,
                    dd,
                    m_departDate,
                    m_departTime,
                    m_arriveOdometer,
                    au,
                    ad,
                    m_arriveDate,
                    m_arriveTime,
                    now,
                    saveButton(),
                    cancelButton() });

    connect(m_contactButton, &QPushButton::clicked, this, [this] { listClicked(PickLists::contactList()); });
    connect(m_purposeButton, &QPushButton::clicked, this, [this] { listClicked(PickLists::purposeList()); });
    connect(m_destinationButton, &QPushButton::clicked, this,
            [this] { listClicked(PickLists::destinationList()); });
    connect(du, &QPushButton::clicked, this, [this] { odometerButton(&TripForm::departUp); });
    connect(dd, &QPushButton::clicked, this, [this] { odometerButton(&TripForm::departDown); });
    connect(au, &QPushButton::clicked, this, [this] { odometerButton(&TripForm::arriveUp); });
    connect(ad, &QPushButton::clicked, this, [this] { odometerButton(&TripForm::arriveDown); });
    // Only the arrival moves to now; what was typed elsewhere and not yet read is shown again
    // as the form last held it.
    connect(now, &QPushButton::clicked, this, [this] {
        m_form.arriveNow();
        showValues();
    });
    connect(m_note, &QPlainTextEdit::textChanged, this, &TripDialog::limitNote);

    fillLists();
    showValues();
    finishLayout();
    m_contact->setFocus();
}

QPushButton *TripDialog::button(const QString &caption) const
{
    return findChild<QPushButton *>(caption);
}

void TripDialog::fillLists()
{
    IniFile lists;
    lists.setSaveOnDestroy(false);
    QStringList contacts;
    QStringList purposes;
    QStringList destinations;
    if (PickLists::loadForTrip(lists, m_paths, m_installFolder, m_reporter)) {
        contacts = PickLists::items(lists, PickLists::contactList());
        purposes = PickLists::items(lists, PickLists::purposeList());
        destinations = PickLists::items(lists, PickLists::destinationList());
    }
    fillPickList(m_contact, contacts);
    fillPickList(m_purpose, purposes);
    fillPickList(m_destination, destinations);
}

void TripDialog::limitNote()
{
    const QString text = m_note->toPlainText();
    if (text.size() <= TripForm::NoteLimit)
        return;
    const QSignalBlocker blocker(m_note);
    m_note->setPlainText(text.left(TripForm::NoteLimit));
    m_note->moveCursor(QTextCursor::End);
}

bool TripDialog::readControls(bool strict)
{
    TripFormValues &values = m_form.values;
    values.contact = m_contact->currentText();
    values.purpose = m_purpose->currentText();
    values.destination = m_destination->currentText();
    values.note = m_note->toPlainText();
    double number = 0.0;
    if (EntryForms::parseNumber(m_tolls->text(), &number))
        values.tolls = number;
    else if (strict)
        return requestNumber(m_tolls, EntryForms::numberRequest());
    if (EntryForms::parseNumber(m_parking->text(), &number))
        values.parking = number;
    else if (strict)
        return requestNumber(m_parking, EntryForms::numberRequest());
    if (EntryForms::parseNumber(m_departOdometer->text(), &number))
        values.departOdometer = number;
    else if (strict)
        return requestNumber(m_departOdometer, EntryForms::numberRequest());
    if (EntryForms::parseNumber(m_arriveOdometer->text(), &number))
        values.arriveOdometer = number;
    else if (strict)
        return requestNumber(m_arriveOdometer, EntryForms::numberRequest());
    // Each picker changes only its own half of the value it was given.
    values.departDate = QDateTime(m_departDate->date(), values.departDate.time());
    values.departTime = QDateTime(values.departTime.date(), m_departTime->time());
    values.arriveDate = QDateTime(m_arriveDate->date(), values.arriveDate.time());
    values.arriveTime = QDateTime(values.arriveTime.date(), m_arriveTime->time());
    return true;
}

void TripDialog::showValues()
{
    const TripFormValues &values = m_form.values;
    m_vehicle->setText(values.vehicleLabel);
    setComboText(m_contact, values.contact);
    setComboText(m_purpose, values.purpose);
    setComboText(m_destination, values.destination);
    if (m_note->toPlainText() != values.note)
        m_note->setPlainText(values.note);
    setText(m_tolls, EntryForms::numberText(values.tolls));
    setText(m_parking, EntryForms::numberText(values.parking));
    setText(m_departOdometer, EntryForms::numberText(values.departOdometer));
    setText(m_arriveOdometer, EntryForms::numberText(values.arriveOdometer));
    m_departDate->setDate(values.departDate.date());
    m_departTime->setTime(values.departTime.time());
    m_arriveDate->setDate(values.arriveDate.date());
    m_arriveTime->setTime(values.arriveTime.time());
}

void TripDialog::odometerButton(void (TripForm::*step)())
{
    readControls(false);
    (m_form.*step)();
    showValues();
}

void TripDialog::listClicked(const QString &section)
{
    readControls(false);
    EditListDialog::run(section, PickLists::listsPath(m_paths), m_reporter, this);
    fillLists();
    showValues();
}

void TripDialog::saveClicked()
{
    if (!readControls(true))
        return;
    m_form.save(m_record, m_reporter);
    accept();
}
