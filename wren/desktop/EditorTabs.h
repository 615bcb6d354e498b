// The documents' views, a tab each.
#pragma once

#include <QTabWidget>

#include <map>
#include <string>
#include <vector>

namespace wren {

class CodeView;
class CodeViewClient;
struct EditorLook;

// A view belongs to the document whose identifier it was made with. GUI thread.
class EditorTabs : public QTabWidget {
    Q_OBJECT
public:
    explicit EditorTabs(QWidget* parent = nullptr);

    CodeView* Add(long document, const EditorLook& look); // a tab behind the others, not raised
    void Remove(long document);
    void Raise(long document); // and gives it the keyboard

    CodeView* ViewOf(long document) const; // null when there is none
    CodeView* CurrentView() const;         // null when there is none
    long CurrentDocument() const;          // 0 when there is none
    long DocumentOf(const CodeView* view) const;
    std::vector<long> Documents() const; // in the order of their tabs, which the user may drag

    // Of a file, or "" for a text without one. Where several have the same name it is told with as much of its
    // directory as tells it from the others.
    void SetName(long document, const std::string& path, bool modified);
    QString NameOf(long document) const;  // that; empty for what is no file's
    void SetWorksheetName(long document); // wherever it is kept
    void SetLook(const EditorLook& look);

signals:
    void Raised(long document); // by the user or by Raise(); 0 when the last one went
    void CloseAsked(long document);

private:
    struct File {
        std::string path;
        bool modified = false;
    };

    int IndexOf(long document) const;
    void ShowNames(const std::string& leaf); // of all files of this name

    std::map<long, File> files;      // of the documents that have one
    std::map<long, CodeView*> views; // owned by the widget
};

} // namespace wren
