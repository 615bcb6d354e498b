// The text of one document on the screen: Scintilla, set up for reading and changing C, C++ and Objective-C.
//
// It knows nothing of the plug-in. Its client (CodeViewClient) sees keys and clicks first, and hears of changes to the
// text. GUI thread.
#pragma once

#include "vetch/support/Geometry.h"
#include "wren/desktop/editor/Bookmarks.h"
#include "wren/desktop/editor/Carets.h"
#include "wren/desktop/editor/ChangeMarks.h"
#include "wren/desktop/editor/EditorLook.h"
#include "wren/desktop/editor/Folds.h"
#include "wren/desktop/editor/Indentation.h"
#include "wren/desktop/editor/LineCommands.h"
#include "wren/desktop/editor/TextLines.h"
#include "wren/desktop/editor/TextSearch.h"
#include "wren/desktop/editor/UndoGroups.h"
#include "wren/desktop/editor/ViewText.h"
#include "wren/text/EditorConfig.h"
#include "wren/text/LineEnds.h"
#include "wren/text/TextStore.h"

#include <Qsci/qsciscintilla.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class QKeyEvent;
class QMouseEvent;

namespace wren {

class CodeLexer;
class CodeView;

// A function that returns bool may delete the view before it returns true.
class CodeViewClient {
public:
    virtual ~CodeViewClient() = default;

    virtual bool KeyPressed(CodeView&, const QKeyEvent&) = 0;        // true: the view does nothing with it
    virtual bool TextComing(CodeView&, const std::string& utf8) = 0; // from an input method; true: it is not inserted

    // The view has applied a key that KeyPressed, or text that TextComing let through. Keys that the view does not use
    // (a modifier alone, a shortcut of the window's) are not reported. typed: characters were inserted.
    virtual void KeyApplied(CodeView&, bool typed) = 0;

    // Also for a double click, whose second press has that type (event.type()). true: the view does nothing with it.
    virtual bool MousePressed(CodeView&, const QMouseEvent& event) = 0;

    // The text was changed by anything but a key that was let through, or the store; called once for each action. Keys
    // for undo and the clipboard are such actions; KeyApplied follows for them, as for any other key.
    virtual void ChangedOtherwise(CodeView&) = 0;

    // 'inserted' bytes replace 'removed' ones, whatever the cause. It is called during the change, when the view cannot
    // be asked anything. A text that is read again is one change.
    virtual void TextMoves(CodeView&, long, long, long) {} // offset, removed, inserted

    // The state has changed. Called after an action of the user's; for a change by the store, from the event loop.
    virtual void CaretMoved(CodeView&) = 0;
    virtual void ModifiedSet(CodeView&, bool modified) = 0; // differs from what was saved, or no longer does
};

// Of the base's signals textChanged and linesChanged are not to be relied upon: see ChangedOtherwise and KeyApplied.
class CodeView : public QsciScintilla {
    Q_OBJECT
public:
    using Search = TextSearch;

    explicit CodeView(QWidget* parent = nullptr);
    ~CodeView() override;

    void SetClient(CodeViewClient* client); // borrowed; null for none
    void SetLook(const EditorLook& look);
    const EditorLook& Look() const { return look; }
    void SetLanguageFor(const std::string& path); // for its colours; after the text is set
    void SetConfig(const EditorConfig& config);   // counts more than what the text shows
    const EditorConfig& Config() const { return config; }
    void TidyForSaving(); // as the configuration wants it: one step to undo

    // The store that the document is edited through. It borrows the view; when the view is gone first, the store is
    // empty. Edits that a group collects end with the next thing the user does.
    std::unique_ptr<TextStore> MakeStore();

    // The text, byte by byte. Bytes that are not UTF-8 are shown as their numbers and kept as they are.
    // SetBytes() clears the history, detects the line ends and the indentation, and counts as saved.
    void SetBytes(std::string_view bytes);

    // The same for a text that another program has changed, as an edit that can be undone. The caret and the visible
    // lines stay at their text.
    void ReadAgain(std::string_view bytes);
    std::string Bytes() const;
    LineEnds Ends() const;                             // of most lines, and of those that are typed
    bool HasMixedEnds() const { return hasMixedEnds; } // when it was read, and not converted since
    void UseEnds(LineEnds ends);                       // converts all lines; one step to undo
    Indentation IndentsWith() const { return indentation; }

    bool IsModified() const;
    void MarkSaved();

    long Caret() const;            // bytes
    void GoTo(long offset);        // moves the caret, and scrolls it to the middle if it was out of view
    void GoToLine(long line);      // from 1
    long FirstVisibleLine() const; // from 0; counts wrapped lines as drawn
    void ShowFromLine(long line);
    void SetTopMargin(int pixels); // free of text, for what is shown there

    // The partner of the brace at 'offset'; absent when there is none, or none near enough to search for at every key.
    std::optional<long> PartnerOf(long offset) const;

    // Places of the plug-in's: the left end of the baseline on the screen; and bytes under a point of the text view,
    // which is the viewport: its left top is 0, 0, and TextBounds() is its part without the margins.
    BPoint BaselineAt(long offset) const;
    QRect LineFrom(long offset) const; // from there to the right end, on the screen
    long OffsetAtPoint(BPoint where) const;
    BRect TextBounds() const;
    BPoint PointOf(const QMouseEvent& event) const; // in the same coordinates

    // Finds from the selection on, or from 'start' on, and past the end from the beginning; selects the match. False
    // when there is none. An expression that is not valid finds nothing.
    bool IsValid(const Search& search) const;
    bool Find(const Search& search);
    bool FindFrom(long start, const Search& search);
    long Count(const Search& search, long atMost) const;
    bool ReplaceSelected(const Search& search, const std::string& with); // replaces what was found, finds the next;
                                                                         // false when nothing found was selected
    long ReplaceAll(const Search& search, const std::string& with);      // how many; one step to undo

    void Apply(LineCommand command, std::string_view commentMark); // to the selected lines; one step to undo

    void ReplaceAsTyped(long start, long end, std::string_view with); // one step to undo; the caret is behind it

    void Apply(CaretCommand command);
    void Apply(FoldCommand command);

    void Apply(BookmarkCommand command);
    std::vector<long> Bookmarks() const; // lines, from 0
    void SetBookmarks(const std::vector<long>& marked);

    std::vector<long> ChangedLines(); // since it was saved; from 0
    void HideChangedLines() { changes.Hide(); }

    void EndTyping(); // what is typed next is undone without what was typed before

    void undo() override;
    void redo() override;
    void cut() override;
    void paste() override;

    // Shows the text of 'owner' in its look, as it is from now on. Nothing is reported of a text that is shared, and it
    // is edited through the owner. Call it again when the owner's look or language has changed: what is seen stays.
    void ShareTextOf(const CodeView& owner);
    void FollowMarksOf(const CodeView& owner); // how marks look, and the room above the text

    // Scintilla colours what it draws. This never colours the whole of a big file.
    void recolor(int start = 0, int end = -1) override;

signals:
    void LookSet();                       // or the language
    void ZoomAsked(int steps);            // by Control and the wheel; the owner sets another look
    void MenuAsked(const QPoint& screen); // by the right button, which has moved the caret, or by a key

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    QMimeData* toMimeData(const QByteArray& bytes, bool rectangular) const override;
    QByteArray fromMimeData(const QMimeData* source, bool& rectangular) const override;

private:
    class Store;
    enum class By { Unknown, Store, User }; // the cause of a change

    // The changes that one action has made to the text.
    struct Done {
        long inserted = 0;
        long removed = 0;
        bool charAdded = false;
        bool lineAdded = false; // at several carets
        bool changed = false;

        bool Typed() const { return charAdded || inserted > removed; }
    };

    bool Show(const std::optional<TextFinder::Found>& found);
    void SetUp();
    void SetUpKeys();
    void WatchText();
    void ListenToScintilla();
    void TellScreenReaders();
    void ApplyEnds(LineEnds ends);
    bool HasOtherEnds(LineEnds ends) const;
    void ConvertEnds(LineEnds ends);
    void DetectEnds();
    void FollowEnds();
    void ApplyColours();
    void SetStyle(int style, const QColor& ink, const QColor& paper);
    void ApplyIndentation();
    void FitMargin();
    void PrepareForLongLines(std::string_view coming);

    Done As(By who, const std::function<void()>& action);
    void ByUser(const std::function<void()>& action); // then reports the changes to the client
    void ByStore(const std::function<void()>& action);
    void TextModified(int offset, int kind, const char* bytes, int length, int lines, int line, int, int, int token,
                      int);
    void Note(long offset, long length, bool inserted);
    void CharacterAdded(int character);
    void TakeComposed();
    void TellState();
    void TellLater(bool changed);

    QByteArray SelectedBytes(bool rectangular) const;
    QByteArray BytesWithNul(const QMimeData* source) const;
    void PutIn(const QByteArray& bytes);
    void DropWithNul(QDropEvent& event);

    bool ApplyKey(QKeyEvent& event, bool& typed);
    bool ApplyStandardKey(const QKeyEvent& event);
    void PassKey(QKeyEvent& event);
    void PassKeyToAll(QKeyEvent& event);
    bool TakenByClient(QMouseEvent& event);
    bool TogglesCaret(const QMouseEvent& event);
    bool StartsColumn(const QMouseEvent& event);

    void IndentNewLine();
    void UnindentBrace();
    std::string BlanksOfBrace(long brace, const std::string& now) const;
    void ShowBraces();

    EditorLook look;
    EditorConfig config;
    Indentation indentation;
    ViewText text;
    TextLines lines;
    UndoGroups groups;
    ChangeMarks changes;
    CodeViewClient* client = nullptr;
    std::unique_ptr<CodeLexer> lexer;
    std::string path;                // what the language was chosen for
    bool sharesText = false;         // another view's
    std::shared_ptr<CodeView*> self; // null inside once the view is gone

    By by = By::Unknown;
    Done done;
    Selection replaced;        // the selection when the action began: typing over it takes nothing away
    bool changeUntold = false; // of unknown cause: reported from the event loop
    bool toldLater = false;
    bool hasMixedEnds = false;
    bool hasConvertedEnds = false; // since it was read; undoing may bring the others back
    bool readsAgain = false;       // during SetBytes() and ReadAgain()
    QString composed;              // by an input method that has not handed it over; it stands in the text
    int turned = 0;                // eighths of a degree of the wheel, less than a step of the zoom
    bool hasVeryLongLines = false; // or had
    long numberedLines = 0;        // the margin is wide enough for so many lines
    long toldCaret = 0;
    std::pair<long, long> heard; // caret and anchor, as screen readers know them
    bool toldModified = false;
};

} // namespace wren
