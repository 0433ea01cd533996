#include "ReminderDialog.h"

#include "app/FileChooser.h"
#include "calc/CounterTiles.h"
#include "calc/DueCalendar.h"
#include "session/VehicleSession.h"
#include "settings/IniFile.h"
#include "widgets/TileCounter.h"

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int TouchHeight = 32;

QLabel *caption(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    label->setAlignment(Qt::AlignCenter);
    return label;
}

// A name that can be a file name on every platform: path separators and the characters
// Windows refuses become blanks.
QString fileNameOf(const QString &text)
{
    QString name = text;
    for (QChar &c : name)
        if (QStringView(u"/\\:*?\"<>|").contains(c) || c.unicode() < 32)
            c = u' ';
    name = name.simplified();
    return name.isEmpty() ? u"Tarvane"_s : name;
}

} // namespace

ReminderDialog::ReminderDialog(Screen screen, VehicleSession &session, FileChooser &chooser, QWidget *parent)
    : QDialog(parent)
    , m_screen(screen)
    , m_session(session)
    , m_chooser(chooser)
{
    setWindowTitle(screen == Screen::Fixed ? u"Reminders"_s : u"Custom Reminders"_s);
    setObjectName(screen == Screen::Fixed ? u"remindersDialog"_s : u"customRemindersDialog"_s);

    m_reading = session.scan().lastOdometer;
    const LastServices last
        = ServiceDueDates::loadForScreen(screen, session.settings().path(), session.currentVehicleName(),
                                         session.scan(), session.context().reporter);
    m_services = ServiceDueDates::all(session.vehicle(), last, m_reading, session.context().clock.now());

    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 8);
    outer->setSpacing(6);
    outer->addWidget(buildHeader());

    // The rows scroll on a screen too small for them; the buttons stay in view.
    auto *scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QWidget *rows = buildRows();
    scroll->setWidget(rows);
    outer->addWidget(scroll, 1);

    auto *note = new QLabel(ServiceDueDates::overdueNote(), this);
    note->setObjectName(u"overdueNote"_s);
    note->setAlignment(Qt::AlignCenter);
    note->setWordWrap(true);
    outer->addWidget(note);
    outer->addWidget(buildButtons());

    showValues();
    // Open at the size that shows every row without scrolling, as far as a 480x640 screen allows.
    scroll->setMinimumSize(rows->sizeHint());
    const QSize full = sizeHint();
    scroll->setMinimumSize(0, 0);
    resize(qBound(400, full.width() + 20, 480), qMin(full.height(), 640));
}

QWidget *ReminderDialog::buildHeader()
{
    auto *header = new QFrame(this);
    header->setObjectName(u"reminderHeader"_s);
    header->setStyleSheet(u"QFrame#reminderHeader { background: #1f2a36; }"
                          " QFrame#reminderHeader QLabel { color: #f3efe4; }"_s);
    auto *layout = new QHBoxLayout(header);
    layout->setContentsMargins(12, 8, 12, 8);

    auto *titles = new QVBoxLayout;
    titles->setSpacing(0);
    auto *title = new QLabel(windowTitle(), header);
    QFont big = title->font();
    big.setBold(true);
    big.setPointSizeF(big.pointSizeF() * 1.25);
    title->setFont(big);
    auto *vehicle = new QLabel(m_session.currentVehicleName(), header);
    vehicle->setObjectName(u"vehicleName"_s);
    vehicle->setTextFormat(Qt::PlainText);
    titles->addWidget(title);
    titles->addWidget(vehicle);
    layout->addLayout(titles, 1);

    if (m_screen == Screen::Fixed) {
        auto *odometer = new QLabel(u"Odometer"_s, header);
        layout->addWidget(odometer, 0, Qt::AlignRight | Qt::AlignVCenter);
        m_current = new TileCounter(header);
        m_current->setObjectName(u"currentReading"_s);
        m_current->setAccessibleDescription(u"Current odometer reading"_s);
        layout->addWidget(m_current, 0, Qt::AlignRight | Qt::AlignVCenter);
    }
    return header;
}

QWidget *ReminderDialog::buildRows()
{
    auto *rows = new QWidget(this);
    auto *grid = new QGridLayout(rows);
    grid->setContentsMargins(10, 4, 10, 4);
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(6);
    grid->addWidget(caption(u"REMINDER"_s, rows), 0, 0, Qt::AlignLeft);
    grid->addWidget(caption(u"DATE"_s, rows), 0, 1);
    grid->addWidget(caption(u"MILEAGE"_s, rows), 0, 2);
    grid->setColumnStretch(0, 1);

    for (int row = 0; row < 5; ++row) {
        // The doubled ampersand of a caption shows as one, as on a button.
        auto *label = new QLabel(rows);
        label->setTextFormat(Qt::PlainText); // a service's name is the user's text, never markup
        label->setWordWrap(true);
        label->setMinimumHeight(TouchHeight);
        auto *date = new TileCounter(rows);
        date->setOrientation(Qt::Vertical);
        auto *reading = new TileCounter(rows);
        grid->addWidget(label, row + 1, 0);
        grid->addWidget(date, row + 1, 1, Qt::AlignCenter);
        grid->addWidget(reading, row + 1, 2, Qt::AlignCenter);
        m_labels << label;
        m_dates << date;
        m_readings << reading;
    }
    grid->setRowStretch(6, 1);
    return rows;
}

QWidget *ReminderDialog::buildButtons()
{
    auto *box = new QWidget(this);
    auto *layout = new QHBoxLayout(box);
    layout->setContentsMargins(10, 0, 10, 0);
    const auto add = [&](const QString &text, auto slot) {
        auto *button = new QPushButton(text, box);
        button->setObjectName(text);
        button->setMinimumHeight(TouchHeight + 4);
        connect(button, &QPushButton::clicked, this, slot);
        layout->addWidget(button);
        return button;
    };
    add(calendarCaption(), &ReminderDialog::saveToCalendar);
    layout->addStretch(1);
    if (m_screen == Screen::Fixed) {
        add(u"CUSTOM"_s, &ReminderDialog::openCustom);
        add(u"OK"_s, &QDialog::accept)->setDefault(true);
        add(u"Cancel"_s, &QDialog::reject);
    } else {
        add(u"Close"_s, &QDialog::accept)->setDefault(true);
    }
    return box;
}

QString ReminderDialog::calendarCaption()
{
    return u"Save to Calendar…"_s;
}

QPushButton *ReminderDialog::button(const QString &caption) const
{
    return findChild<QPushButton *>(caption);
}

void ReminderDialog::showValues()
{
    if (m_current)
        m_current->setTiles(CounterTiles::wholeNumber(m_reading, CounterTiles::Normal));
    const QList<ServiceDue> rows = ServiceDueDates::rows(m_screen, m_services);
    for (int i = 0; i < rows.size() && i < m_labels.size(); ++i) {
        const ServiceDue &s = rows.at(i);
        m_labels[i]->setText(s.displayLabel());
        QString dateText = u"No date"_s;
        if (s.hasDueDate)
            dateText = s.dueDate.toString(Qt::ISODate) + (s.overdueByDate ? u" (overdue)"_s : QString());
        m_dates[i]->setTiles(s.dateTiles, dateText);
        m_dates[i]->setAccessibleDescription(u"Due date of "_s + s.displayLabel());
        m_readings[i]->setTiles(s.readingTiles,
                                s.overdueByReading ? m_readings[i]->textOf(s.readingTiles) + u" (overdue)"_s
                                                   : QString());
        m_readings[i]->setAccessibleDescription(u"Due reading of "_s + s.displayLabel());
    }
}

void ReminderDialog::openCustom()
{
    ReminderDialog custom(Screen::Custom, m_session, m_chooser, this);
    custom.exec();
}

void ReminderDialog::saveToCalendar()
{
    Reporter &reporter = m_session.context().reporter;
    if (DueCalendar::eventCount(m_services) == 0) {
        reporter.info(DueCalendar::nothingDueText());
        return;
    }
    const QString file = m_chooser.chooseSaveFile(
        this, u"Save to Calendar"_s, m_session.context().paths.myDocuments(),
        fileNameOf(m_session.currentVehicleName()) + u".ics"_s, u"iCalendar files (*.ics);;All files (*)"_s);
    if (file.isEmpty())
        return;
    const VehicleSettings &vehicle = m_session.vehicle();
    DueCalendar calendar({ m_session.currentVehicleName(), vehicle.vin, vehicle.distanceUnit },
                         m_session.context().clock.now());
    if (!calendar.write(file, m_services))
        reporter.error(calendar.errorString());
    else
        reporter.info(u"Saved %1 due dates to %2"_s.arg(DueCalendar::eventCount(m_services)).arg(file));
}

void ReminderDialog::showReminders(VehicleSession &session, FileChooser &chooser, QWidget *parent)
{
    ReminderDialog dialog(Screen::Fixed, session, chooser, parent);
    dialog.exec();
}
