// The text of one document on the screen: Scintilla, set up for reading and changing C, C++ and Objective-C.
//
// It knows nothing of the plug-in. Whoever runs it (CodeViewClient) sees keys and clicks first, and hears what became of
// the text. GUI thread.
#pragma once

#include "vetch/support/Geometry.h"
#include "wren/core/TextStore.h"

#include <Qsci/qsciscintilla.h>

#include <memory>
#include <string>
#include <string_view>

class QKeyEvent;
class QMouseEvent;

namespace wren {

class CodeLexer;
class CodeView;
struct EditorLook;

class CodeViewClient {
public:
    virtual ~CodeViewClient() = default;

    virtual bool KeyPressed(CodeView&, const QKeyEvent&) = 0;        // true: the view does nothing with it
    virtual bool TextComing(CodeView&, const std::string& utf8) = 0; // from an input method; true: it is not inserted
    virtual void KeyApplied(CodeView&, bool typed) = 0; // the key that KeyPressed let through; typed: it put in characters
    virtual bool MousePressed(CodeView&, const QMouseEvent&) = 0; // true: the view does nothing with it
    virtual void ChangedOtherwise(CodeView&) = 0; // by anything but a key that was let through, or the store
    virtual void CaretMoved(CodeView&) = 0;
    virtual void ModifiedSet(CodeView&, bool modified) = 0; // differs from what was saved, or no longer does
};

enum class LineEnds { Unix, Windows, Mac };

class CodeView : public QsciScintilla {
    Q_OBJECT
public:
    explicit CodeView(QWidget* parent = nullptr);
    ~CodeView() override;

    void SetClient(CodeViewClient* client); // borrowed, and told of nothing while it is null
    void SetLook(const EditorLook& look);
    void SetLanguageFor(const std::string& path); // C, C++, Objective-C by the file's name; other files have no colours

    // The store that the document is edited through. It borrows the view; when the view is gone first, the store is empty.
    std::unique_ptr<TextStore> MakeStore();

    // The text, byte by byte. Bytes that are no UTF-8 are shown as their numbers and kept as they are. SetBytes() clears
    // what can be undone, finds out the line ends and the indentation, and counts as saved.
    void SetBytes(std::string_view bytes);
    std::string Bytes() const;
    LineEnds Ends() const;

    bool IsModified() const;
    void MarkSaved();

    long Caret() const;       // bytes
    void GoTo(long offset);   // caret there, in the middle of what is seen when it was not seen
    void GoToLine(long line); // from 1

    // Places of the plug-in's: the left end of the baseline on the screen; and bytes under a point of the text's part of the
    // view, whose bounds TextBounds() gives in the same coordinates.
    BPoint BaselineAt(long offset) const;
    long OffsetAtPoint(BPoint where) const;
    BRect TextBounds() const;
    BPoint PointOf(const QMouseEvent& event) const; // in the coordinates of TextBounds()

    // Finds from the selection on, round the end; selects what was found. False when there is nothing.
    struct Search {
        std::string text;
        bool regularExpression = false;
        bool matchCase = false;
        bool wholeWords = false;
        bool backwards = false;
    };
    bool Find(const Search& search);
    bool ReplaceSelected(const Search& search, const std::string& with); // replaces what was found, finds the next
    long ReplaceAll(const Search& search, const std::string& with);      // how many; one step to undo

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    class Store;
    void SetUp();
    void WatchText();

    CodeViewClient* client = nullptr;
    std::unique_ptr<CodeLexer> lexer;
    std::shared_ptr<CodeView*> self; // null inside once the view is gone
    bool quiet = false;              // changes are the store's, or those of a key
};

} // namespace wren
