// The files of the project beside the text.
#pragma once

#include "wren/desktop/files/FilesModel.h"

#include <QDockWidget>

#include <string>
#include <vector>

class QLineEdit;
class QStackedWidget;
class QToolButton;
class QTreeView;

namespace wren {

// A click or Enter opens a file, and opens or closes a directory; arrows move. Typing shows only the files whose names
// contain the letters; Escape takes them away, and then gives the keyboard back. Paths are relative to the root.
// GUI thread.
class FilesPanel : public QDockWidget {
    Q_OBJECT
public:
    explicit FilesPanel(const FileIcons& icons, QWidget* parent = nullptr);

    void SetRoot(const std::string& path); // absolute; forgets everything
    void SetEntries(const std::string& directory, std::vector<TreeEntry> entries);
    void ShowFound(const std::vector<std::string>& files, bool more); // for the letters
    void Reveal(const std::string& file);                             // marks it, as soon as its directories are read
    void Tell(const QString& problem);

    std::string Letters() const;
    bool ShowsAll() const;
    const FilesModel& Whole() const { return whole; }
    const FilesModel& Found() const { return found; }
    std::string Marked() const; // "" for none

signals:
    void Wanted(const std::string& directory);
    void LettersTyped(); // or taken away
    void AllSwitched();
    void Chosen(const std::string& file);
    void Left();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QTreeView* NewTree(FilesModel& model, const QString& name);
    QTreeView& Tree() const; // the one that is shown
    void Typed();
    bool KeyPressed(QKeyEvent& event);
    void Choose(const QModelIndex& index);
    void StepToFile(bool down); // among the found ones
    void RevealMore();

    FilesModel whole;
    FilesModel found;
    QLineEdit* field;
    QToolButton* all;
    QStackedWidget* trees;
    QTreeView* wholeTree;
    QTreeView* foundTree;
    std::string revealing; // "" for nothing
};

} // namespace wren
