#include "AboutDialog.h"

#include "Banner.h"

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QDir>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
class AboutBanner : public QWidget
{
public:
    explicit AboutBanner(QWidget *parent)
        : QWidget(parent)
    {
        setMinimumHeight(72);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        Banner::paint(painter, rect(), AboutDialog::versionText());
    }
};
} // namespace

QString AboutDialog::versionText()
{
    return u"Version 2.2.2 Build 76"_s;
}

AboutDialog::AboutDialog(const QString &dataFolder, QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(u"About"_s);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 12);
    layout->addWidget(new AboutBanner(this));

    auto *body = new QVBoxLayout;
    body->setContentsMargins(16, 8, 16, 0);
    body->setSpacing(6);
    auto *name = new QLabel(u"Tarvane"_s, this);
    QFont nameFont = name->font();
    nameFont.setBold(true);
    nameFont.setPointSizeF(nameFont.pointSizeF() * 1.4);
    name->setFont(nameFont);
    name->setObjectName(u"aboutName"_s);
    body->addWidget(name);

    auto *version = new QLabel(versionText(), this);
    version->setObjectName(u"aboutVersion"_s);
    body->addWidget(version);

    body->addSpacing(8);
    body->addWidget(new QLabel(u"Data folder:"_s, this));
    auto *folder = new QLabel(QDir::toNativeSeparators(dataFolder), this);
    folder->setObjectName(u"aboutDataFolder"_s);
    folder->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    folder->setWordWrap(true);
    body->addWidget(folder);
    body->addStretch(1);
    layout->addLayout(body, 1);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    buttons->setContentsMargins(16, 0, 16, 0);
    for (QAbstractButton *button : buttons->buttons())
        button->setMinimumHeight(32);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    layout->addWidget(buttons);
    resize(360, 280);
}
