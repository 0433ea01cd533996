#pragma once

#include <QDialog>
#include <QList>

#include "calc/ServiceDue.h"

class FileChooser;
class QLabel;
class QPushButton;
class TileCounter;
class VehicleSession;

// "Reminders" (the five fixed services, with the current reading at the top right) and
// "Custom Reminders" (the five named by the user): per service a due-date tile pair and the due
// reading, red once passed. Nothing is edited here; "Save to Calendar…" writes the due dates of
// all ten services as an iCalendar file.
class ReminderDialog : public QDialog
{
    Q_OBJECT
public:
    using Screen = ServiceDueDates::Screen;

    // Loads the vehicle's last services on opening (its message when the settings file fails).
    ReminderDialog(Screen screen, VehicleSession &session, FileChooser &chooser, QWidget *parent = nullptr);

    // The main screen's "Reminders" command.
    static void showReminders(VehicleSession &session, FileChooser &chooser, QWidget *parent);

    // "CUSTOM": the custom screen over this one.
    void openCustom();
    void saveToCalendar();

    Screen screen() const { return m_screen; }
    const QList<ServiceDue> &services() const { return m_services; }
    TileCounter *currentReadingCounter() const { return m_current; }
    QList<TileCounter *> dateCounters() const { return m_dates; }
    QList<TileCounter *> readingCounters() const { return m_readings; }
    QList<QLabel *> rowLabels() const { return m_labels; }
    QPushButton *button(const QString &caption) const;

    static QString calendarCaption();

private:
    QWidget *buildHeader();
    QWidget *buildRows();
    QWidget *buildButtons();
    void showValues();

    Screen m_screen;
    VehicleSession &m_session;
    FileChooser &m_chooser;
    QList<ServiceDue> m_services; // all ten; the screen shows five of them
    double m_reading = 0.0;

    TileCounter *m_current = nullptr;
    QList<QLabel *> m_labels;
    QList<TileCounter *> m_dates;
    QList<TileCounter *> m_readings;
};
