#pragma once

#include <QDialog>

// The program's name, version and the folder its data lives in.
class AboutDialog : public QDialog
{
    Q_OBJECT
public:
    explicit AboutDialog(const QString &dataFolder, QWidget *parent = nullptr);

    static QString versionText();
};
