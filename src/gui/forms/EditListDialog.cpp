#include "EditListDialog.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "EntryDialog.h"

using namespace Qt::StringLiterals;

EditListDialog::EditListDialog(const QString &section, const QString &listsPath, Reporter &reporter,
                               QWidget *parent)
    : QDialog(parent)
    , m_model(section, listsPath, reporter)
{
    setWindowTitle(u"Edit List"_s);
    setModal(true);

    m_sectionLabel = new QLabel(u"Edit"_s);
    m_sectionLabel->setObjectName(u"sectionName"_s);
    m_newItem = new QLineEdit;
    m_newItem->setObjectName(u"newItem"_s);
    m_newItem->setMaxLength(EditListModel::maxItemLength);
    m_add = new QPushButton(u"ADD"_s);
    m_add->setObjectName(u"add"_s);
    m_delete = new QPushButton(u"DELETE"_s);
    m_delete->setObjectName(u"delete"_s);
    m_list = new QListWidget;
    m_list->setObjectName(u"items"_s);
    m_list->setSpacing(4);
    auto *hint = new QLabel(hintText());
    hint->setWordWrap(true);
    m_save = new QPushButton(u"Save"_s);
    m_save->setObjectName(u"save"_s);
    m_cancel = new QPushButton(u"Cancel"_s);
    m_cancel->setObjectName(u"cancel"_s);

    auto *top = new QGridLayout;
    top->addWidget(new QLabel(u"Section Name:"_s), 0, 0);
    top->addWidget(m_sectionLabel, 0, 1, 1, 2);
    top->addWidget(m_newItem, 1, 0, 1, 2);
    top->addWidget(m_add, 1, 2);
    top->addWidget(m_delete, 2, 2);
    top->setColumnStretch(1, 1);

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_save);
    buttons->addWidget(m_cancel);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_list, 1);
    layout->addWidget(hint);
    layout->addLayout(buttons);

    for (QPushButton *button : { m_add, m_delete, m_save, m_cancel }) {
        button->setMinimumHeight(EntryDialog::TouchHeight);
        button->setAutoDefault(false);
    }
    m_newItem->setMinimumHeight(EntryDialog::TouchHeight);

    connect(m_add, &QPushButton::clicked, this, &EditListDialog::addClicked);
    connect(m_delete, &QPushButton::clicked, this, &EditListDialog::deleteClicked);
    connect(m_save, &QPushButton::clicked, this, &EditListDialog::saveClicked);
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);

    m_sectionLabel->setText(section);
    m_model.open();
    showValues();
    resize(qMin(sizeHint().width(), 480), qMin(qMax(sizeHint().height(), 400), 640));
}

void EditListDialog::run(const QString &section, const QString &listsPath, Reporter &reporter,
                         QWidget *parent)
{
    EditListDialog dialog(section, listsPath, reporter, parent);
    dialog.exec();
}

void EditListDialog::readControls()
{
    m_model.setNewItemText(m_newItem->text());
    m_model.setSelectedRow(m_list->currentRow());
}

void EditListDialog::showValues()
{
    m_newItem->setText(m_model.newItemText());
    m_list->clear();
    m_list->addItems(m_model.rows());
    m_list->setCurrentRow(-1);
}

void EditListDialog::addClicked()
{
    readControls();
    m_model.add();
    showValues();
}

void EditListDialog::deleteClicked()
{
    readControls();
    if (m_list->currentItem() == nullptr || !m_list->currentItem()->isSelected())
        m_model.setSelectedRow(-1);
    m_model.deleteSelected();
    showValues();
}

void EditListDialog::saveClicked()
{
    if (m_model.save())
        accept();
}

void EditListDialog::keyPressEvent(QKeyEvent *event)
{
    // Enter in the new-item field adds it rather than closing the dialog.
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && focusWidget() == m_newItem) {
        addClicked();
        event->accept();
        return;
    }
    QDialog::keyPressEvent(event);
}
