#pragma once

#include <QDialog>

#include "settings/EditListModel.h"

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

// "Edit List": adds and deletes the items of one pick list of Lists.ini. A shell over
// EditListModel, which saves every change at once.
class EditListDialog : public QDialog
{
    Q_OBJECT
public:
    EditListDialog(const QString &section, const QString &listsPath, Reporter &reporter,
                   QWidget *parent = nullptr);

    static QString hintText()
    {
        return QStringLiteral("Add or delete items in the drop down list. Select SAVE to save changes");
    }

    // Runs the dialog on a section; the caller refills its combos afterwards either way.
    static void run(const QString &section, const QString &listsPath, Reporter &reporter, QWidget *parent);

    QLineEdit *newItemEdit() const { return m_newItem; }
    QListWidget *list() const { return m_list; }
    QPushButton *addButton() const { return m_add; }
    QPushButton *deleteButton() const { return m_delete; }
    QPushButton *saveButton() const { return m_save; }
    QPushButton *cancelButton() const { return m_cancel; }
    const EditListModel &model() const { return m_model; }

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void readControls();
    void showValues();
    void addClicked();
    void deleteClicked();
    void saveClicked();

    EditListModel m_model;
    QLabel *m_sectionLabel = nullptr;
    QLineEdit *m_newItem = nullptr;
    QListWidget *m_list = nullptr;
    QPushButton *m_add = nullptr;
    QPushButton *m_delete = nullptr;
    QPushButton *m_save = nullptr;
    QPushButton *m_cancel = nullptr;
};
