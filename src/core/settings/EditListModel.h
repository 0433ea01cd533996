#pragma once

#include "IniFile.h"

#include <QString>
#include <QStringList>

class Reporter;

// The logic of the "Edit List" dialog over one section of Lists.ini, without the widgets:
// the rows of its list, the new-item text, the selection. Every add and delete is saved at
// once, and every reload rewrites the section with its keys renumbered from Line0.
class EditListModel
{
public:
    static constexpr int maxItemLength = 40;

    static QString loadErrorMessage() { return QStringLiteral("ERROR 500! Unable to load List."); }
    static QString deleteSaveErrorMessage()
    {
        return QStringLiteral("ERROR 501! Unable to save changes to List.");
    }
    static QString saveErrorMessage() { return QStringLiteral("ERROR 502! Unable to save changes to List."); }

    // hostPath is the Lists.ini to edit; nothing is read until open().
    EditListModel(const QString &section, const QString &hostPath, Reporter &reporter);

    QString section() const { return m_section; }
    QStringList rows() const { return m_rows; }
    int nextLine() const { return m_nextLine; }

    // What the dialog does when it opens: a reload.
    void open() { reload(); }
    // Reads the section into the rows and writes it back compactly; false after a message.
    bool reload();

    // The new-item edit; longer text is cut to maxItemLength, as the edit control would.
    void setNewItemText(const QString &text);
    QString newItemText() const { return m_newItem; }
    // Adds the new-item text behind the last item; empty text does nothing.
    void add();

    // -1 for no selection.
    void setSelectedRow(int row) { m_selected = row; }
    int selectedRow() const { return m_selected; }
    // Shows the selected item's text and deletes it (whatever the user answers); no selection
    // does nothing.
    void deleteSelected();

    // The "Save" button: true when the file was written and the dialog may close.
    bool save();
    // "Cancel": every change has been saved already, so there is nothing to undo.
    void cancel() { }

private:
    void insertRow(int index, const QString &text);

    QString m_section;
    QString m_path;
    Reporter &m_reporter;
    IniFile m_ini;
    QStringList m_rows;
    QString m_newItem;
    int m_selected = -1;
    // Where the next added item goes; one past the last item once a reload has run, and as
    // if the list were empty before that.
    int m_nextLine = 1;
};
