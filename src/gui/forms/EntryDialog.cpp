#include "EntryDialog.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QDateTimeEdit>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QTimeEdit>
#include <QVBoxLayout>

#include "platform/Reporter.h"
#include "widgets/ScreenFit.h"

using namespace Qt::StringLiterals;

EntryDialog::EntryDialog(const QString &title, Reporter &reporter, QWidget *parent)
    : QDialog(parent)
    , m_reporter(reporter)
{
    setWindowTitle(title);
    setModal(true);

    auto *content = new QWidget;
    m_content = new QVBoxLayout(content);
    m_content->setContentsMargins(8, 8, 8, 8);
    m_content->setSpacing(6);

    m_scroll = new QScrollArea;
    m_scroll->setWidgetResizable(true);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroll->setWidget(content);

    m_save = new QPushButton(u"Save"_s);
    m_save->setObjectName(u"save"_s);
    m_cancel = new QPushButton(u"Cancel"_s);
    m_cancel->setObjectName(u"cancel"_s);
    connect(m_save, &QPushButton::clicked, this, [this] { saveClicked(); });
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);
    // Ctrl+S saves, as the Save button does.
    auto *save = new QShortcut(QKeySequence::Save, this);
    connect(save, &QShortcut::activated, this, [this] { saveClicked(); });

    auto *buttons = new QHBoxLayout;
    buttons->setContentsMargins(8, 4, 8, 8);
    buttons->addWidget(m_save);
    buttons->addWidget(m_cancel);

    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->setSpacing(0);
    outer->addWidget(m_scroll, 1);
    outer->addLayout(buttons);
}

void EntryDialog::finishLayout()
{
    const auto widgets = findChildren<QWidget *>();
    for (QWidget *widget : widgets) {
        // The edit field inside a combo box or a date field is sized by its owner; made 32 px
        // itself it would cover the owner's bottom edge.
        const bool inner = qobject_cast<QComboBox *>(widget->parentWidget())
            || qobject_cast<QAbstractSpinBox *>(widget->parentWidget());
        if (!inner
            && (qobject_cast<QLineEdit *>(widget) || qobject_cast<QComboBox *>(widget)
                || qobject_cast<QAbstractButton *>(widget) || qobject_cast<QDateTimeEdit *>(widget))) {
            widget->setMinimumHeight(qMax(widget->minimumHeight(), TouchHeight));
        }
        // No button is the default one: Enter is handled in keyPressEvent.
        if (auto *button = qobject_cast<QPushButton *>(widget)) {
            button->setAutoDefault(false);
            button->setDefault(false);
        }
    }
    // As big as the controls want, up to a 480x640 screen and never beyond the screen it opens on;
    // the scroll area takes the rest, so Save and Cancel always stay in sight.
    const QSize room = ScreenFit::room(this).boundedTo(QSize(MaxWidth, MaxHeight));
    const QSize content = m_scroll->widget()->sizeHint();
    const int buttons = m_save->sizeHint().height() + 12;
    const int scrollBar = m_scroll->verticalScrollBar()->sizeHint().width();
    const int width = qBound(qMin(360, room.width()), content.width() + scrollBar, room.width());
    // Wrapped hint texts grow taller as the width shrinks.
    QWidget *inner = m_scroll->widget();
    const int height
        = inner->hasHeightForWidth() ? inner->heightForWidth(width - scrollBar) : content.height();
    resize(width, qMin(qMax(height, content.height()) + buttons + 16, room.height()));
}

void EntryDialog::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        QWidget *focus = focusWidget();
        if (auto *button = qobject_cast<QAbstractButton *>(focus)) {
            button->click();
        } else {
            // A single-line field: go on to the next one, as Tab would.
            focusNextChild();
        }
        event->accept();
        return;
    }
    QDialog::keyPressEvent(event);
}

bool EntryDialog::requestNumber(QLineEdit *edit, const QString &request)
{
    m_reporter.warning(request, windowTitle());
    edit->setFocus();
    edit->selectAll();
    return false;
}

QLineEdit *EntryDialog::odometerEdit(const QString &objectName)
{
    auto *edit = new QLineEdit;
    edit->setObjectName(objectName);
    edit->setValidator(new QRegularExpressionValidator(QRegularExpression(u"\\d{0,10}(\\.\\d*)?"_s), edit));
    edit->setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    return edit;
}

QLineEdit *EntryDialog::decimalEdit(const QString &objectName)
{
    auto *edit = new QLineEdit;
    edit->setObjectName(objectName);
    edit->setValidator(new QRegularExpressionValidator(QRegularExpression(u"-?\\d{0,10}(\\.\\d*)?"_s), edit));
    edit->setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    return edit;
}

QLineEdit *EntryDialog::integerEdit(const QString &objectName)
{
    auto *edit = new QLineEdit;
    edit->setObjectName(objectName);
    edit->setValidator(new QRegularExpressionValidator(QRegularExpression(u"-?\\d{0,9}"_s), edit));
    edit->setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    return edit;
}

QDateEdit *EntryDialog::dateEdit(const QString &objectName)
{
    auto *edit = new QDateEdit;
    edit->setObjectName(objectName);
    edit->setCalendarPopup(true);
    return edit;
}

QTimeEdit *EntryDialog::timeEdit(const QString &objectName)
{
    auto *edit = new QTimeEdit;
    edit->setObjectName(objectName);
    return edit;
}

QComboBox *EntryDialog::pickListCombo(const QString &objectName)
{
    auto *combo = new QComboBox;
    combo->setObjectName(objectName);
    combo->setEditable(true);
    combo->setInsertPolicy(QComboBox::NoInsert);
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setMinimumContentsLength(8);
    combo->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    return combo;
}

void EntryDialog::fillPickList(QComboBox *combo, const QStringList &items)
{
    const QString text = combo->currentText();
    QStringList sorted = items;
    std::stable_sort(sorted.begin(), sorted.end(), [](const QString &a, const QString &b) {
        return QString::compare(a, b, Qt::CaseInsensitive) < 0;
    });
    const QSignalBlocker blocker(combo);
    combo->clear();
    combo->addItems(sorted);
    combo->setCurrentIndex(-1);
    combo->setEditText(text);
}

void EntryDialog::setText(QLineEdit *edit, const QString &text)
{
    if (edit->text() != text)
        edit->setText(text);
}

void EntryDialog::setComboText(QComboBox *combo, const QString &text)
{
    if (combo->currentText() == text)
        return;
    const QSignalBlocker blocker(combo);
    const int index = combo->findText(text);
    combo->setCurrentIndex(index);
    combo->setEditText(text);
}

void EntryDialog::chainTabOrder(const QList<QWidget *> &widgets)
{
    for (qsizetype i = 1; i < widgets.size(); ++i)
        QWidget::setTabOrder(widgets.at(i - 1), widgets.at(i));
}
