#pragma once

#include "platform/Reporter.h"

class QWidget;

// Message boxes with the system's texts; the caption is the program's name unless given.
class GuiReporter : public Reporter
{
public:
    explicit GuiReporter(QWidget *parent = nullptr)
        : m_parent(parent)
    { }
    void setParent(QWidget *parent) { m_parent = parent; }

    void error(const QString &text, const QString &title = QString()) override;
    // The detail goes in the box's detail text, under "Show Details...".
    void errorWithDetail(const QString &text, const QString &detail,
                         const QString &title = QString()) override;
    void warning(const QString &text, const QString &title = QString()) override;
    void info(const QString &text, const QString &title = QString()) override;
    void plain(const QString &text, const QString &title = QString()) override;
    bool ask(const QString &text, const QString &title = QString(),
             Buttons buttons = Buttons::YesNo) override;

private:
    QWidget *m_parent;
};
