#pragma once

#include <QDialog>
#include <QStringList>

class QComboBox;
class QDateEdit;
class QDialogButtonBox;
class QLineEdit;
class QPushButton;
class QScrollArea;
class QTimeEdit;
class QVBoxLayout;
class Reporter;

// The frame the entry forms share: their controls in a scroll area so that they fit a 480x640
// screen, "Save" and "Cancel" below, touch-sized controls, and Enter in a single-line field
// moving on to the next field instead of closing the form.
class EntryDialog : public QDialog
{
    Q_OBJECT
public:
    EntryDialog(const QString &title, Reporter &reporter, QWidget *parent = nullptr);

    QPushButton *saveButton() const { return m_save; }
    QPushButton *cancelButton() const { return m_cancel; }

    // Controls at least this high, so that a finger can hit them.
    static constexpr int TouchHeight = 32;
    // The smallest screen the forms are made for.
    static constexpr int MaxWidth = 480;
    static constexpr int MaxHeight = 640;

    // Editors that take only what the field holds; they bring up a numeric keyboard on touch
    // platforms. Odometers: digits (a stored fraction stays editable); amounts: a signed decimal;
    // integers: a signed whole number.
    static QLineEdit *odometerEdit(const QString &objectName);
    static QLineEdit *decimalEdit(const QString &objectName);
    static QLineEdit *integerEdit(const QString &objectName);
    static QDateEdit *dateEdit(const QString &objectName);
    static QTimeEdit *timeEdit(const QString &objectName);
    // A sorted, editable pick-list combo.
    static QComboBox *pickListCombo(const QString &objectName = QString());
    // Clears the combo and adds the items sorted as a sorted list box would (ignoring case);
    // the text in the edit field is kept.
    static void fillPickList(QComboBox *combo, const QStringList &items);
    // Changing a field's text moves its cursor; leave equal texts alone.
    static void setText(QLineEdit *edit, const QString &text);
    static void setComboText(QComboBox *combo, const QString &text);
    // Tab visits the widgets in this order (their visual order).
    static void chainTabOrder(const QList<QWidget *> &widgets);

protected:
    // The controls go here.
    QVBoxLayout *contentLayout() const { return m_content; }
    // Call at the end of the subclass's constructor: sizes the controls for touch.
    void finishLayout();
    // Save pressed: the subclass reads its controls, saves and accepts, or stays open.
    virtual void saveClicked() = 0;
    // A number field that does not hold a number: the request, then the field gets the focus.
    // Returns false, for "return requestNumber(...)" in a failed read.
    bool requestNumber(QLineEdit *edit, const QString &request);

    void keyPressEvent(QKeyEvent *event) override;

    Reporter &m_reporter;

private:
    QScrollArea *m_scroll = nullptr;
    QVBoxLayout *m_content = nullptr;
    QPushButton *m_save = nullptr;
    QPushButton *m_cancel = nullptr;
};
