#include "SetupSheet.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QVBoxLayout>

#include "SetupPage.h"
#include "platform/Reporter.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int TouchHeight = 32;
constexpr int ScreenWidth = 480;
constexpr int ScreenHeight = 640;
} // namespace

SetupSheet::SetupSheet(const QString &title, const QList<SetupPage *> &pages, Reporter &reporter,
                       QWidget *parent)
    : QDialog(parent)
    , m_pages(pages)
    , m_reporter(reporter)
{
    setWindowTitle(title);
    setModal(true);
    m_tabs = new QTabWidget(this);
    m_tabs->setObjectName(u"pages"_s);
    for (SetupPage *page : pages) {
        // Each page scrolls on its own when the screen is smaller than its controls.
        auto *scroll = new QScrollArea;
        scroll->setWidgetResizable(true);
        scroll->setFrameShape(QFrame::NoFrame);
        scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        scroll->setWidget(page);
        m_tabs->addTab(scroll, page->title());
        page->showValues();
    }
    m_ok = new QPushButton(u"OK"_s);
    m_ok->setObjectName(u"ok"_s);
    m_ok->setDefault(true);
    m_cancel = new QPushButton(u"Cancel"_s);
    m_cancel->setObjectName(u"cancel"_s);
    connect(m_ok, &QPushButton::clicked, this, &SetupSheet::okClicked);
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(m_ok);
    buttons->addWidget(m_cancel);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(m_tabs, 1);
    layout->addLayout(buttons);
    fitSmallScreen(this);
}

void SetupSheet::fitSmallScreen(QDialog *dialog)
{
    const auto widgets = dialog->findChildren<QWidget *>();
    for (QWidget *widget : widgets) {
        if (qobject_cast<QLineEdit *>(widget) || qobject_cast<QComboBox *>(widget)
            || qobject_cast<QAbstractButton *>(widget))
            widget->setMinimumHeight(qMax(widget->minimumHeight(), TouchHeight));
    }
    const QSize wanted = dialog->sizeHint();
    dialog->resize(qBound(360, wanted.width(), ScreenWidth), qBound(200, wanted.height(), ScreenHeight));
}

void SetupSheet::okClicked()
{
    for (int i = 0; i < m_pages.size(); ++i) {
        const QString problem = m_pages.at(i)->problem();
        if (!problem.isEmpty()) {
            m_tabs->setCurrentIndex(i);
            m_reporter.error(problem, windowTitle());
            return;
        }
    }
    for (SetupPage *page : m_pages)
        page->confirm();
    accept();
}
