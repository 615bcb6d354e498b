// The documents' views, each in a tab.
#pragma once

#include <QTabWidget>

#include <map>
#include <string>
#include <vector>

namespace wren {

class CodeView;
class CodeViewClient;
class TextPanes;
struct EditorLook;

// A view belongs to the document whose identifier it was made with. GUI thread.
class EditorTabs : public QTabWidget {
    Q_OBJECT
public:
    explicit EditorTabs(QWidget* parent = nullptr);

    CodeView* Add(long document, const EditorLook& look); // a tab behind the others, not raised
    void Remove(long document);
    void Raise(long document); // and gives it the keyboard
    void FocusCurrent();       // gives the keyboard to the current view, if there is one

    CodeView* ViewOf(long document) const; // null when there is none
    CodeView* CurrentView() const;         // null when there is none
    TextPanes* CurrentPanes() const;       // the current view, and another part of its text
    long CurrentDocument() const;          // 0 when there is none
    long DocumentOf(const CodeView* view) const;
    long DocumentAt(const QPoint& place) const; // whose tab is there, in the tab bar; 0 when there is none
    std::vector<long> Documents() const;        // in the order of their tabs, which the user may drag

    // 'path' is "" for a text without a file. Files of the same name are shown with as much of their directories as
    // makes them differ.
    void SetName(long document, const std::string& path, bool modified);
    QString NameOf(long document) const;  // as shown; empty for a text without a file
    void SetWorksheetName(long document); // whatever its file is called
    void SetLook(const EditorLook& look);

signals:
    void Raised(long document); // by the user or by Raise(); 0 when the last one went
    void CloseAsked(long document);
    void ListAsked(); // of all documents, by the button beside the tabs

private:
    struct File {
        std::string path;
        bool modified = false;
    };

    void AddListButton();
    TextPanes* PanesAt(int index) const; // null when there are none
    TextPanes* PanesOf(long document) const;
    int IndexOf(long document) const;
    void ShowNames(const std::string& leaf); // of all files of this name

    std::map<long, File> files;       // of the documents that have one
    std::map<long, TextPanes*> panes; // owned by the widget
};

} // namespace wren
