#include "gui_helper.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>
#include <QWidget>

using namespace Qt::StringLiterals;

QString screenshotFolder()
{
    const QString folder
        = qEnvironmentVariable("TARVANE_SCREENSHOTS", QStringLiteral(TARVANE_BINARY_DIR "/screenshots"));
    QDir().mkpath(folder);
    return folder;
}

bool saveScreenshot(QWidget *widget, const QString &name)
{
    widget->show();
    if (!QTest::qWaitForWindowExposed(widget))
        return false;
    QCoreApplication::processEvents();
    return widget->grab().save(screenshotFolder() + u'/' + name + u".png"_s);
}

void shoot(QWidget *widget, const QString &name)
{
    QVERIFY2(saveScreenshot(widget, name), qPrintable(name));
}

QStringList column(const QTreeWidget *list, int c)
{
    QStringList out;
    for (int i = 0; i < list->topLevelItemCount(); ++i)
        out.append(list->topLevelItem(i)->text(c));
    return out;
}

QStringList items(const QComboBox *box)
{
    QStringList out;
    for (int i = 0; i < box->count(); ++i)
        out.append(box->itemText(i));
    return out;
}

void retype(QLineEdit *edit, const QString &text)
{
    edit->setFocus();
    edit->selectAll();
    if (text.isEmpty())
        QTest::keyClick(edit, Qt::Key_Backspace);
    else
        QTest::keyClicks(edit, text);
}

void fillAndSave(EntryDialog *form, const QString &odometer)
{
    retype(form->findChild<QLineEdit *>(u"odometer"_s), odometer);
    QTest::keyClicks(form->findChild<QLineEdit *>(u"quantity"_s), u"10"_s);
    QTest::mouseClick(form->saveButton(), Qt::LeftButton);
}

void Sandbox::installTemplates()
{
    put(data() + u"Lists.ini"_s, readAll(u":/install/Lists.ini"_s));
    put(data() + u"Velcora.ini"_s, readAll(u":/install/Velcora.ini"_s));
}

VehicleSession &Sandbox::startSession()
{
    session = std::make_unique<VehicleSession>(context);
    session->start();
    return *session;
}

MainWindow &Sandbox::startWindow()
{
    window = std::make_unique<MainWindow>(*session, chooser, *help);
    return *window;
}
