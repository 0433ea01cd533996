#pragma once

#include <QWidget>

class QButtonGroup;
class QGridLayout;
class QLineEdit;
class QVBoxLayout;
class SetupForm;

// One page of a setup sheet: a view of the setup form. It is filled from the form when the
// sheet opens and copies its values back in confirm(), when the sheet's OK is pressed.
class SetupPage : public QWidget
{
    Q_OBJECT
public:
    SetupPage(const QString &title, const QString &hint, SetupForm &form, QWidget *parent = nullptr);

    QString title() const { return m_title; }
    // What stops OK on this page (the sheet shows it and stays open); empty when nothing does.
    virtual QString problem() const { return QString(); }
    virtual void showValues() = 0;
    virtual void confirm() = 0;

    // Edits that take digits only, for distances (up to 10) and days (up to 9).
    static QLineEdit *digitsEdit(const QString &objectName, int maxDigits);
    // An edit that turns what is typed into upper case.
    static QLineEdit *upperCaseEdit(const QString &objectName);
    // A titled group of radio buttons, one per caption, their ids the codes 0, 1, ...
    static QWidget *radioGroup(const QString &title, const QStringList &captions, QButtonGroup *group,
                               const QString &objectName);
    static void checkButton(QButtonGroup *group, int id);

protected:
    QVBoxLayout *contentLayout() const { return m_content; }
    SetupForm &m_form;

private:
    QString m_title;
    QVBoxLayout *m_content = nullptr;
};
