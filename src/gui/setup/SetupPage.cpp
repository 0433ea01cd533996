#include "SetupPage.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

SetupPage::SetupPage(const QString &title, const QString &hint, SetupForm &form, QWidget *parent)
    : QWidget(parent)
    , m_form(form)
    , m_title(title)
{
    setObjectName(title);
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(8, 8, 8, 8);
    outer->setSpacing(8);
    auto *hintLabel = new QLabel(hint, this);
    hintLabel->setObjectName(u"hint"_s);
    hintLabel->setWordWrap(true);
    outer->addWidget(hintLabel);
    m_content = new QVBoxLayout;
    m_content->setSpacing(6);
    outer->addLayout(m_content);
    outer->addStretch(1);
}

QLineEdit *SetupPage::digitsEdit(const QString &objectName, int maxDigits)
{
    auto *edit = new QLineEdit;
    edit->setObjectName(objectName);
    edit->setValidator(
        new QRegularExpressionValidator(QRegularExpression(u"\\d{0,%1}"_s.arg(maxDigits)), edit));
    edit->setInputMethodHints(Qt::ImhDigitsOnly);
    return edit;
}

QLineEdit *SetupPage::upperCaseEdit(const QString &objectName)
{
    auto *edit = new QLineEdit;
    edit->setObjectName(objectName);
    edit->setInputMethodHints(Qt::ImhUppercaseOnly | Qt::ImhNoPredictiveText);
    QObject::connect(edit, &QLineEdit::textEdited, edit, [edit](const QString &text) {
        const QString upper = text.toUpper();
        if (upper != text) {
            const int cursor = edit->cursorPosition();
            edit->setText(upper);
            edit->setCursorPosition(cursor);
        }
    });
    return edit;
}

QWidget *SetupPage::radioGroup(const QString &title, const QStringList &captions, QButtonGroup *group,
                               const QString &objectName)
{
    auto *box = new QGroupBox(title);
    box->setObjectName(objectName);
    auto *layout = new QVBoxLayout(box);
    layout->setSpacing(2);
    for (int i = 0; i < captions.size(); ++i) {
        auto *radio = new QRadioButton(captions.at(i), box);
        radio->setObjectName(objectName + QString::number(i));
        group->addButton(radio, i);
        layout->addWidget(radio);
    }
    return box;
}

void SetupPage::checkButton(QButtonGroup *group, int id)
{
    QAbstractButton *button = group->button(id);
    if (!button)
        button = group->buttons().value(id < 0 ? 0 : group->buttons().size() - 1);
    if (button)
        button->setChecked(true);
}
