#include "HelpLauncher.h"

#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QPushButton>
#include <QRegularExpression>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

#include "widgets/ScreenFit.h"

using namespace Qt::StringLiterals;

QString HelpLauncher::resourcePath()
{
    return u":/help/velcora_help.htm"_s;
}

QString HelpLauncher::sectionFor(const QWidget *window)
{
    if (!window)
        return QString();
    const QString named = window->property("helpSection").toString();
    if (!named.isEmpty())
        return named;
    static const QRegularExpression others(u"[^a-z0-9]+"_s);
    QString section = window->windowTitle().toLower().replace(others, u"-"_s);
    while (section.startsWith(u'-'))
        section.remove(0, 1);
    while (section.endsWith(u'-'))
        section.chop(1);
    return section;
}

bool HelpViewerLauncher::showHelp(QWidget *parent, const QString &section)
{
    HelpDialog dialog(section, parent);
    if (dialog.browser()->document()->isEmpty())
        return false;
    dialog.exec();
    return true;
}

HelpDialog::HelpDialog(const QString &section, QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(u"Tarvane Help"_s);
    setObjectName(u"helpDialog"_s);
    m_browser = new QTextBrowser(this);
    m_browser->setObjectName(u"helpBrowser"_s);
    // Links to other sections stay in the viewer; links to the web go to the browser, if any.
    m_browser->setOpenExternalLinks(true);
    QUrl url(u"qrc"_s + HelpLauncher::resourcePath());
    if (!section.isEmpty())
        url.setFragment(section);
    m_browser->setSource(url);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->button(QDialogButtonBox::Close)->setMinimumHeight(32);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(m_browser, 1);
    layout->addWidget(buttons);

    // A comfortable reading size, never more than the screen it opens on.
    ScreenFit::resize(this, QSize(720, 820));
    m_browser->setFocus();
}

HelpKeyFilter::HelpKeyFilter(HelpLauncher &help, QObject *parent)
    : QObject(parent)
    , m_help(help)
{ }

bool HelpKeyFilter::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress || static_cast<QKeyEvent *>(event)->key() != Qt::Key_F1)
        return false;
    auto *widget = qobject_cast<QWidget *>(watched);
    QWidget *window = widget ? widget->window() : nullptr;
    // The main window has its own Help command; the viewer does not open itself again.
    auto *dialog = qobject_cast<QDialog *>(window);
    if (!dialog || qobject_cast<HelpDialog *>(dialog))
        return false;
    m_help.showHelp(dialog, HelpLauncher::sectionFor(dialog));
    return true;
}
