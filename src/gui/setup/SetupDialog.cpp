#include "SetupDialog.h"

#include <QAction>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

#include "CSetuppage1.h"
#include "CSetuppage3.h"
#include "CSetuppage4.h"
#include "CSetuppage5.h"
#include "CSetuppage_2.h"
#include "NewVehicleDialog.h"
#include "SetupSheet.h"
#include "platform/Reporter.h"
#include "settings/SettingsMessages.h"
#include "setup/SetupForm.h"

using namespace Qt::StringLiterals;

namespace {

QLabel *bold(const QString &text)
{
    auto *label = new QLabel(text);
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    return label;
}

} // namespace

SetupDialog::SetupDialog(SetupForm &form, Reporter &reporter, QWidget *parent)
    : QDialog(parent)
    , m_form(form)
    , m_reporter(reporter)
{
    setWindowTitle(SetupForm::title());
    setModal(true);
    QMenuBar *menu = buildMenu();

    m_saveExit = new QPushButton(u"Save && Exit"_s);
    m_saveExit->setObjectName(u"saveExit"_s);
    m_saveExit->setToolTip(u"Save and exit"_s);
    connect(m_saveExit, &QPushButton::clicked, this, &SetupDialog::saveAndExit);

    // The commands as buttons too, for a finger.
    auto *commands = new QHBoxLayout;
    for (const auto &[action, text] :
         { std::pair { m_edit, u"Edit Selected"_s }, std::pair { m_trip, u"Trip Settings"_s },
           std::pair { m_new, u"New"_s }, std::pair { m_delete, u"Delete"_s } }) {
        auto *button = new QToolButton;
        button->setDefaultAction(action);
        button->setText(text);
        button->setToolButtonStyle(Qt::ToolButtonTextOnly);
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        button->setObjectName(action->objectName() + u"Button"_s);
        commands->addWidget(button);
    }

    auto *layout = new QVBoxLayout(this);
    layout->setMenuBar(menu);
    layout->addLayout(commands);
    layout->addWidget(buildDisplay(), 1);
    layout->addWidget(m_saveExit);

    if (!m_form.open())
        m_reporter.error(SettingsMessages::setupLoadFailed(m_form.settingsPath()));
    showValues();
    SetupSheet::fitSmallScreen(this);
}

QMenuBar *SetupDialog::buildMenu()
{
    const auto action = [this](const QString &text, const QString &name, const QString &tip, auto slot) {
        auto *created = new QAction(text, this);
        created->setObjectName(name);
        created->setStatusTip(tip);
        created->setToolTip(tip.isEmpty() ? QString(text).remove(u'&') : tip);
        connect(created, &QAction::triggered, this, slot);
        return created;
    };
    m_edit = action(u"&Edit"_s, u"edit"_s, QString(), &SetupDialog::editVehicleInfo);
    m_trip = action(u"&Trip Settings"_s, u"tripSettings"_s, QString(), &SetupDialog::editTripInfo);
    m_new = action(u"&New Vehicle"_s, u"newVehicle"_s, u"Add a new vehicle"_s, &SetupDialog::newVehicle);
    m_delete = action(u"&Delete Vehicle"_s, u"deleteVehicle"_s, QString(), &SetupDialog::deleteVehicle);
    m_save = action(u"&Save"_s, u"save"_s, u"Save and exit"_s, &SetupDialog::saveAndExit);
    m_exit = action(u"E&xit"_s, u"exit"_s, u"Exit this screen"_s, &QDialog::reject);
    m_edit->setShortcut(QKeySequence(u"Ctrl+E"_s));
    m_new->setShortcut(QKeySequence::New);
    m_save->setShortcut(QKeySequence::Save);

    auto *bar = new QMenuBar(this);
    QMenu *menu = bar->addMenu(u"&Vehicle"_s);
    menu->setObjectName(u"setupMenu"_s);
    menu->addAction(m_edit);
    menu->addAction(m_trip);
    menu->addSeparator();
    menu->addAction(m_new);
    menu->addAction(m_delete);
    menu->addSeparator();
    menu->addAction(m_save);
    menu->addAction(m_exit);
    return bar;
}

QWidget *SetupDialog::buildDisplay()
{
    auto *display = new QWidget;
    auto *grid = new QGridLayout(display);
    grid->setColumnStretch(1, 1);
    grid->setVerticalSpacing(6);
    int row = 0;
    const auto value = [&](const QString &caption) {
        auto *label = new QLabel;
        label->setObjectName(caption);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        m_values.insert(caption, label);
        return label;
    };
    const auto line = [&](const QString &caption) {
        auto *captionLabel = new QLabel(caption);
        grid->addWidget(captionLabel, row, 0);
        grid->addWidget(value(caption), row, 1, 1, 4);
        ++row;
        return captionLabel;
    };
    for (const QString &caption : { u"Vehicle ID:"_s, u"Odometer:"_s, u"Make:"_s, u"Model:"_s, u"Year:"_s,
                                    u"Plate:"_s, u"VIN #:"_s, u"Economy:"_s })
        line(caption);

    // "Oil Change every 3000     mi or 180  days"
    auto *oil = new QHBoxLayout;
    oil->setSpacing(4);
    oil->addWidget(new QLabel(u"Oil Change every "_s));
    oil->addWidget(value(u"oilDistance"_s));
    oil->addWidget(value(u"distanceWord"_s));
    oil->addWidget(new QLabel(u"or"_s));
    oil->addWidget(value(u"oilDays"_s));
    oil->addWidget(new QLabel(u"days"_s));
    oil->addStretch(1);
    grid->addLayout(oil, row++, 0, 1, 5);

    grid->addWidget(bold(u"TRIP SETUP"_s), row++, 0, 1, 5);
    line(u"Show Deails:"_s);
    // The trip list's order is kept in the profile but not offered here.
    QLabel *sortCaption = line(u"Sort By:"_s);
    sortCaption->hide();
    m_values.value(u"Sort By:"_s)->hide();
    grid->setRowStretch(row, 1);
    return display;
}

void SetupDialog::showValues()
{
    const SetupDisplay d = m_form.display();
    const QList<std::pair<QString, QString>> texts {
        { u"Vehicle ID:"_s, d.vehicleId },
        { u"Odometer:"_s, d.odometer },
        { u"Make:"_s, d.make },
        { u"Model:"_s, d.model },
        { u"Year:"_s, d.year },
        { u"Plate:"_s, d.plate },
        { u"VIN #:"_s, d.vin },
        { u"Economy:"_s, d.economy },
        { u"oilDistance"_s, d.oilDistance },
        { u"distanceWord"_s, d.distanceWord },
        { u"oilDays"_s, d.oilDays },
        { u"Show Deails:"_s, d.showDetails },
        { u"Sort By:"_s, d.sortBy },
    };
    for (const auto &[caption, text] : texts)
        m_values.value(caption)->setText(text);
    // Editing and deleting need a vehicle that is in the list.
    const bool listed = m_form.hasListedVehicle();
    m_edit->setEnabled(listed);
    m_trip->setEnabled(listed);
    m_delete->setEnabled(listed);
}

bool SetupDialog::runSheet(const QString &title, bool vehicleInfo)
{
    QList<SetupPage *> pages;
    if (vehicleInfo)
        pages = { new CSetuppage1(m_form), new CSetuppage_2(m_form), new CSetuppage3(m_form),
                  new CSetuppage4(m_form) };
    else
        pages = { new CSetuppage5(m_form) };
    SetupSheet sheet(title, pages, m_reporter, this);
    return sheet.exec() == QDialog::Accepted;
}

void SetupDialog::editVehicleInfo()
{
    if (!m_form.hasListedVehicle())
        return;
    m_form.beginEdit();
    runSheet(SetupForm::editSheetTitle(), true);
    // Whatever closed the sheet, the profile is saved; a cancelled sheet confirmed nothing.
    m_form.finishEdit(m_reporter);
    showValues();
}

void SetupDialog::editTripInfo()
{
    if (!m_form.hasListedVehicle())
        return;
    m_form.beginEdit();
    runSheet(SetupForm::tripSheetTitle(), false);
    m_form.finishEdit(m_reporter);
    showValues();
}

void SetupDialog::newVehicle()
{
    if (!m_form.beginNewVehicle(m_reporter))
        return;
    NewVehicleDialog dialog(m_form, m_reporter, this);
    const bool created = dialog.exec() == QDialog::Accepted;
    if (m_form.acceptNewName(created, dialog.name(), m_reporter)) {
        runSheet(SetupForm::editSheetTitle(), true);
        m_form.finishNewVehicle(m_reporter);
    }
    showValues();
}

void SetupDialog::deleteVehicle()
{
    if (m_form.deleteVehicle(m_reporter) == SetupForm::DeleteResult::Deleted)
        accept();
}

void SetupDialog::saveAndExit()
{
    // A settings file that could not be read is left alone; the screen still closes.
    if (m_form.saveAndExit(m_reporter) || !m_form.isOpen())
        accept();
}
