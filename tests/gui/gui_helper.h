#pragma once

#include "core/context_helper.h"
#include "core/files_helper.h"

#include "app/FileChooser.h"
#include "app/HelpLauncher.h"
#include "app/MainWindow.h"
#include "forms/EntryDialog.h"
#include "platform/AppContext.h"
#include "session/VehicleSession.h"

#include <QApplication>
#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>

class QComboBox;
class QLineEdit;
class QTreeWidget;
class QWidget;

// Where the GUI tests leave their pictures for a person to look at (made when missing).
QString screenshotFolder();

// Shows the widget, waits until it is on screen and saves it as <name>.png in that folder.
bool saveScreenshot(QWidget *widget, const QString &name);

// The same, failing the running test when the picture could not be taken.
void shoot(QWidget *widget, const QString &name);

using TestFiles::odometers;
using TestFiles::put;
inline QByteArray readAll(const QString &path)
{
    return TestFiles::read(path);
}

using TestFiles::whole;

// A list's column, or a box's entries, top to bottom.
QStringList column(const QTreeWidget *list, int c = 0);
QStringList items(const QComboBox *box);

// Replaces a field's text the way a user would: select everything, then type.
void retype(QLineEdit *edit, const QString &text);

// Runs then() on the next modal dialog of type T, once it is up. Nested dialogs are handled by
// scheduling their handler before the call that opens them.
template<typename T> void onModal(QObject *context, std::function<void(T *)> then)
{
    auto *timer = new QTimer(context);
    timer->setInterval(20);
    QObject::connect(timer, &QTimer::timeout, context, [timer, then] {
        if (auto *dialog = qobject_cast<T *>(QApplication::activeModalWidget())) {
            timer->stop();
            timer->deleteLater();
            then(dialog);
        }
    });
    timer->start();
}

// Runs the action while the entry form it opens is answered by the script.
template<typename Action, typename Script> void withForm(Action action, Script script)
{
    bool ran = false;
    QTimer::singleShot(0, [&] {
        auto *form = qobject_cast<EntryDialog *>(QApplication::activeModalWidget());
        QVERIFY(form);
        script(form);
        ran = true;
    });
    action();
    QVERIFY(ran);
}

// Types the odometer over the form's own and a quantity of 10, then saves.
void fillAndSave(EntryDialog *form, const QString &odometer);

// Help that is never shown: the walks are not about help.
class NoHelp : public HelpLauncher
{
public:
    bool showHelp(QWidget *, const QString &) override { return true; }
};

// Everything one run of the program needs on a sandbox folder: memory settings stores, a fixed
// clock and en_US formats. The session and the window are made when a walk asks for them.
struct Sandbox : TestContext
{
    explicit Sandbox(quint32 now)
        : TestContext(now)
    { }

    QString data() const { return context.paths.dataFolder(); }
    // The shipped Lists.ini and Velcora.ini in the data folder: the template's "My Car".
    void installTemplates();
    // A session started on the vehicle the options name.
    VehicleSession &startSession();
    // The main window over the started session.
    MainWindow &startWindow();

    ScriptedFileChooser chooser;
    NoHelp noHelp;
    HelpLauncher *help = &noHelp;
    std::unique_ptr<VehicleSession> session;
    std::unique_ptr<MainWindow> window;
};
