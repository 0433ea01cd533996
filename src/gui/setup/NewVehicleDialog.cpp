#include "NewVehicleDialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "SetupSheet.h"
#include "platform/Reporter.h"
#include "setup/SetupForm.h"

using namespace Qt::StringLiterals;

NewVehicleDialog::NewVehicleDialog(const SetupForm &form, Reporter &reporter, QWidget *parent)
    : QDialog(parent)
    , m_form(form)
    , m_reporter(reporter)
{
    setWindowTitle(u"New Vehicle"_s);
    setModal(true);
    auto *label = new QLabel(u"Enter a new name for this vehicle "_s);
    m_name = new QLineEdit;
    m_name->setObjectName(u"name"_s);
    m_name->setMaxLength(NameLength);
    label->setBuddy(m_name);
    auto *hint = new QLabel(u"Select a unique name such as Jennifer's Ford Mustang"_s);
    hint->setWordWrap(true);
    m_create = new QPushButton(u"Create"_s);
    m_create->setObjectName(u"create"_s);
    m_create->setDefault(true);
    m_cancel = new QPushButton(u"Cancel"_s);
    m_cancel->setObjectName(u"cancel"_s);
    connect(m_create, &QPushButton::clicked, this, &NewVehicleDialog::createClicked);
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(m_create);
    buttons->addWidget(m_cancel);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(m_name);
    layout->addWidget(hint);
    layout->addStretch(1);
    layout->addLayout(buttons);
    SetupSheet::fitSmallScreen(this);
    m_name->setFocus();
}

QString NewVehicleDialog::name() const
{
    return m_name->text();
}

void NewVehicleDialog::createClicked()
{
    const QString problem = m_form.newNameProblem(name());
    if (!problem.isEmpty()) {
        m_reporter.error(problem, windowTitle());
        m_name->setFocus();
        m_name->selectAll();
        return;
    }
    accept();
}
