// What the user and the store do to a view, and what its client hears of it.

#include "wren/desktop/editor/Braces.h"
#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/editor/TextAccessible.h"

#include <Qsci/qscicommandset.h>

#include <QGuiApplication>
#include <QInputMethod>
#include <QKeyEvent>
#include <QResizeEvent>
#include <QWheelEvent>

#include <iterator>
#include <utility>

namespace wren {

namespace {

// Scintilla's default keys for these would win over shortcuts of the window's menus. What every editor has, the view
// answers itself (kStandardKeys) where no menu does.
constexpr QsciCommand::Command kUnbound[] = {
    QsciCommand::Undo,
    QsciCommand::Redo,
    QsciCommand::SelectionCut,
    QsciCommand::SelectionCopy,
    QsciCommand::Paste,
    QsciCommand::SelectAll,
    QsciCommand::LineCut,
    QsciCommand::LineCopy,
    QsciCommand::LineDelete,
    QsciCommand::LineTranspose,
    QsciCommand::LineDuplicate,
    QsciCommand::SelectionDuplicate,
    QsciCommand::SelectionLowerCase,
    QsciCommand::SelectionUpperCase,
    QsciCommand::MoveSelectedLinesUp,
    QsciCommand::MoveSelectedLinesDown,
    QsciCommand::ReverseLines,
    QsciCommand::Formfeed,
    QsciCommand::WordPartLeft,
    QsciCommand::WordPartLeftExtend,
    QsciCommand::WordPartRight,
    QsciCommand::WordPartRightExtend,
    QsciCommand::ParaUpExtend,
    QsciCommand::ParaDownExtend,
};

struct StandardKey {
    QKeySequence::StandardKey key;
    void (*apply)(CodeView&);
};

constexpr StandardKey kStandardKeys[] = {
    {QKeySequence::Undo, [](CodeView& view) { view.undo(); }},
    {QKeySequence::Redo, [](CodeView& view) { view.redo(); }},
    {QKeySequence::Cut, [](CodeView& view) { view.cut(); }},
    {QKeySequence::Copy, [](CodeView& view) { view.copy(); }},
    {QKeySequence::Paste, [](CodeView& view) { view.paste(); }},
    {QKeySequence::SelectAll, [](CodeView& view) { view.selectAll(); }},
};

bool HoldsShortcut(const QKeyEvent& event)
{
    return event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
}

} // namespace

// All views and the preferences' font know one size; Scintilla's own zoom would be this view's alone.
void CodeView::wheelEvent(QWheelEvent* event)
{
    if (event->modifiers() != Qt::ControlModifier)
        return QsciScintilla::wheelEvent(event);
    event->accept();
    turned += event->angleDelta().y();
    if (const int steps = turned / QWheelEvent::DefaultDeltasPerStep; steps != 0) {
        turned -= steps * QWheelEvent::DefaultDeltasPerStep;
        emit ZoomAsked(steps);
    }
}

// A panel that opens takes room from below: the line of the caret moves up with the edge.
void CodeView::resizeEvent(QResizeEvent* event)
{
    QsciScintilla::resizeEvent(event);
    const long height = text.Send(SCI_TEXTHEIGHT, 0);
    const long bottom = text.Send(SCI_POINTYFROMPOSITION, 0, Caret()) + height;
    const long room = event->size().height();
    const bool wasSeen = bottom - height >= 0 && bottom <= event->oldSize().height();
    if (wasSeen && bottom > room && room > height)
        text.Send(SCI_LINESCROLL, 0, (bottom - room + height - 1) / height);
}

void CodeView::SetUpKeys()
{
    for (const QsciCommand::Command command : kUnbound) {
        if (QsciCommand* found = standardCommands()->find(command)) {
            found->setKey(0);
            found->setAlternateKey(0);
        }
    }
}

// -------------------------------------------------------------------------------------------------- Who changed what

CodeView::Done CodeView::As(By who, const std::function<void()>& action)
{
    const By whoBefore = std::exchange(by, who);
    const Done doneBefore = std::exchange(done, Done());
    const Selection replacedBefore = std::exchange(replaced, text.Selected());
    const long caret = Caret();
    action();
    if (who == By::User && !done.changed && Caret() != caret)
        EndTyping(); // it was only a move
    by = whoBefore;
    replaced = replacedBefore;
    return std::exchange(done, doneBefore);
}

void CodeView::ByUser(const std::function<void()>& action)
{
    const std::shared_ptr<CodeView*> alive = self;
    groups.Close();
    if (As(By::User, action).changed && client != nullptr)
        client->ChangedOtherwise(*this);
    if (*alive != nullptr)
        TellState();
}

void CodeView::ByStore(const std::function<void()>& action)
{
    As(By::Store, action);
    TellLater(false);
}

// What is about to change, rather than what has changed: the base class takes long to hear of that.
constexpr int kComing =
    QsciScintilla::SC_MOD_BEFOREINSERT | QsciScintilla::SC_MOD_BEFOREDELETE | QsciScintilla::SC_MOD_CONTAINER;

void CodeView::ListenToScintilla()
{
    static const bool kInstalled =
        (TextAccessible::Install([](QObject* object) { return qobject_cast<CodeView*>(object) != nullptr; }), true);
    Q_UNUSED(kInstalled);
    text.Send(SCI_SETMODEVENTMASK, kComing);
}

// They may come and go while the program runs. What is inserted is known only afterwards.
void CodeView::TellScreenReaders()
{
    const bool areThere = QAccessible::isActive();
    text.Send(SCI_SETMODEVENTMASK, kComing | (areThere ? SC_MOD_INSERTTEXT : 0));
    const std::pair now(Caret(), text.Send(SCI_GETANCHOR));
    if (std::exchange(heard, now) != now && areThere)
        TextAccessible::CaretMoved(*this);
}

void CodeView::TextModified(int offset, int kind, const char* bytes, int length, int, int, int, int, int token, int)
{
    if (sharesText)
        return;
    if (kind & SC_MOD_CONTAINER && kind & SC_PERFORMED_UNDO)
        groups.NumberUndone(token);
    if (kind & SC_MOD_INSERTTEXT && !readsAgain)
        TextAccessible::Inserted(*this, offset, {bytes, static_cast<size_t>(length)});
    if (kind & SC_MOD_BEFOREDELETE && !readsAgain)
        TextAccessible::Removing(*this, offset, length);
    if (!(kind & (SC_MOD_BEFOREINSERT | SC_MOD_BEFOREDELETE)))
        return;
    const bool inserts = kind & SC_MOD_BEFOREINSERT;
    lines.Changing(offset, inserts ? 0 : length, inserts ? length : 0);
    if (!readsAgain)
        changes.Changing(offset, length, inserts);
    if (client != nullptr && !readsAgain)
        client->TextMoves(*this, offset, inserts ? 0 : length, inserts ? length : 0);
    Note(offset, length, inserts);
    if (by == By::Unknown)
        TellLater(true);
}

void CodeView::Note(long offset, long length, bool inserted)
{
    const bool typedOver = !done.changed && Selection{offset, offset + length} == replaced;
    done.changed = true;
    if (inserted)
        done.inserted += length;
    else if (!typedOver)
        done.removed += length;
}

void CodeView::TellState()
{
    const std::shared_ptr<CodeView*> alive = self;
    if (client != nullptr && std::exchange(toldModified, IsModified()) != IsModified())
        client->ModifiedSet(*this, IsModified());
    if (*alive != nullptr && client != nullptr && std::exchange(toldCaret, Caret()) != Caret())
        client->CaretMoved(*this);
}

void CodeView::TellLater(bool changed)
{
    changeUntold = changeUntold || changed;
    if (std::exchange(toldLater, true))
        return;
    const auto tell = [this] {
        toldLater = false;
        const std::shared_ptr<CodeView*> alive = self;
        if (std::exchange(changeUntold, false) && client != nullptr)
            client->ChangedOtherwise(*this);
        if (*alive != nullptr)
            TellState();
    };
    QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}

// -------------------------------------------------------------------------------------------------------------- Keys

void CodeView::keyPressEvent(QKeyEvent* event)
{
    const std::shared_ptr<CodeView*> alive = self;
    if (client != nullptr && client->KeyPressed(*this, *event)) {
        event->accept();
        return;
    }
    bool typed = false;
    if (ApplyKey(*event, typed) && *alive != nullptr && client != nullptr)
        client->KeyApplied(*this, typed);
    if (*alive != nullptr)
        TellState();
}

bool CodeView::ApplyKey(QKeyEvent& event, bool& typed)
{
    if (ApplyStandardKey(event)) {
        event.accept();
        return true;
    }
    groups.Close();
    const Done did = As(By::User, [&] { carets::AreSeveral(text) ? PassKeyToAll(event) : PassKey(event); });
    typed = did.Typed();
    // Scintilla always takes Escape, though it does nothing to a text: a list of completions that it was meant for
    // would be closed by what comes after every key that did something.
    const bool used = event.isAccepted() && event.key() != Qt::Key_Escape;
    return used || did.changed;
}

bool CodeView::ApplyStandardKey(const QKeyEvent& event)
{
    for (const StandardKey& standard : kStandardKeys) {
        if (event.matches(standard.key)) {
            standard.apply(*this);
            return true;
        }
    }
    return false;
}

void CodeView::PassKey(QKeyEvent& event)
{
    // For an unused shortcut, Scintilla would type the letter (Alt) or claim to have handled it (Control).
    const bool bound =
        standardCommands()->boundTo(static_cast<int>(static_cast<unsigned>(event.key()) |
                                                     (event.modifiers() & ~Qt::KeypadModifier).toInt())) != nullptr;
    if (HoldsShortcut(event) && !bound)
        event.ignore();
    else
        QsciScintilla::keyPressEvent(&event);
}

// One step to undo, with the new lines' indentation. Nothing may close it while the key is applied.
void CodeView::PassKeyToAll(QKeyEvent& event)
{
    text.Send(SCI_BEGINUNDOACTION);
    PassKey(event);
    if (std::exchange(done.lineAdded, false))
        carets::IndentLines(text, indentation);
    text.Send(SCI_ENDUNDOACTION);
}

void CodeView::inputMethodEvent(QInputMethodEvent* event)
{
    const std::shared_ptr<CodeView*> alive = self;
    const std::string coming = event->commitString().toStdString();
    const bool refused = !coming.empty() && client != nullptr && client->TextComing(*this, coming);
    if (*alive == nullptr)
        return;
    composed = event->preeditString();
    groups.Close();
    QInputMethodEvent rest(event->preeditString(), event->attributes());
    const Done did = As(By::User, [&] { QsciScintilla::inputMethodEvent(refused ? &rest : event); });
    event->accept();
    if (!coming.empty() && !refused && client != nullptr)
        client->KeyApplied(*this, did.Typed());
    if (*alive != nullptr)
        TellState();
}

// Where it was composed, rather than where the user clicks next. Not all input methods hand it over when asked.
void CodeView::TakeComposed()
{
    if (composed.isEmpty())
        return;
    const QString word = composed;
    QGuiApplication::inputMethod()->commit();
    if (composed.isEmpty())
        return;
    QInputMethodEvent take;
    take.setCommitString(word);
    inputMethodEvent(&take);
}

void CodeView::undo()
{
    ByUser([this] {
        groups.Undo();
        FollowEnds();
    });
}

void CodeView::redo()
{
    ByUser([this] {
        QsciScintilla::redo();
        FollowEnds();
    });
}

void CodeView::cut()
{
    ByUser([this] { QsciScintilla::cut(); });
}

// ------------------------------------------------------------------------------------------------------- Indentation

void CodeView::CharacterAdded(int character)
{
    done.charAdded = true;
    if (by != By::User)
        return;
    const bool endsLine = character == (Ends() == LineEnds::Mac ? '\r' : '\n');
    if (carets::AreSeveral(text))
        done.lineAdded = done.lineAdded || endsLine; // once for all of them
    else if (endsLine)
        IndentNewLine();
    else if (character == '}')
        UnindentBrace();
}

void CodeView::IndentNewLine()
{
    const long line = text.Send(SCI_LINEFROMPOSITION, Caret());
    const long start = text.Send(SCI_POSITIONFROMLINE, line - 1);
    const std::string before = text.Copy(start, text.Send(SCI_GETLINEENDPOSITION, line - 1));
    const std::string blanks = IndentationAfter(before, indentation);
    text.Send(SCI_ADDTEXT, static_cast<long>(blanks.size()), blanks.data());
    EndTyping();
}

// An empty group: nothing to undo, and nothing of what can be redone is lost.
void CodeView::EndTyping()
{
    text.Send(SCI_BEGINUNDOACTION);
    text.Send(SCI_ENDUNDOACTION);
}

void CodeView::UnindentBrace()
{
    const long brace = Caret() - 1;
    const long start = text.Send(SCI_POSITIONFROMLINE, text.Send(SCI_LINEFROMPOSITION, brace));
    const std::string blanks = text.Copy(start, brace);
    if (LeadingBlanks(blanks).size() != blanks.size())
        return;
    const std::string wanted = BlanksOfBrace(brace, blanks);
    if (wanted == blanks)
        return;
    text.Replace(start, brace, wanted);
    const long caret = start + static_cast<long>(wanted.size()) + 1;
    text.Select(caret, caret);
}

std::string CodeView::BlanksOfBrace(long brace, const std::string& now) const
{
    const std::optional<long> partner = PartnerOf(brace);
    if (!partner)
        return OneLevelLess(now, indentation);
    const long line = text.Send(SCI_LINEFROMPOSITION, *partner);
    const std::string opened = text.Copy(text.Send(SCI_POSITIONFROMLINE, line), *partner);
    return std::string(LeadingBlanks(opened));
}

// ------------------------------------------------------------------------------------------------------------- Mouse

void CodeView::mousePressEvent(QMouseEvent* event)
{
    const std::shared_ptr<CodeView*> alive = self;
    TakeComposed();
    if (*alive == nullptr)
        return;
    if (!TakenByClient(*event) && !TogglesCaret(*event) && !StartsColumn(*event))
        ByUser([&] { QsciScintilla::mousePressEvent(event); });
}

// Scintilla's own modifier for it is Control alone, which follows names here. Alt alone, or with Control, looks them
// up. While the mouse moves, Scintilla asks for no modifier.
bool CodeView::StartsColumn(const QMouseEvent& event)
{
    if (event.button() != Qt::LeftButton || event.modifiers() != (Qt::AltModifier | Qt::ShiftModifier))
        return false;
    QMouseEvent press(event.type(), event.position(), event.globalPosition(), event.button(), event.buttons(),
                      Qt::ControlModifier);
    ByUser([&] { QsciScintilla::mousePressEvent(&press); });
    return true;
}

bool CodeView::TogglesCaret(const QMouseEvent& event)
{
    if (event.button() != Qt::LeftButton || event.modifiers() != (Qt::ControlModifier | Qt::ShiftModifier))
        return false;
    ByUser([&] { carets::ToggleAt(text, OffsetAtPoint(PointOf(event))); });
    return true;
}

void CodeView::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (!TakenByClient(*event))
        ByUser([&] { QsciScintilla::mouseDoubleClickEvent(event); });
}

// What is chosen is about what the user has pointed at.
void CodeView::contextMenuEvent(QContextMenuEvent* event)
{
    QPoint screen = event->globalPos();
    const Selection selected = text.Selected();
    if (event->reason() == QContextMenuEvent::Mouse) {
        const QPoint at = viewport()->mapFromGlobal(screen);
        const long offset = text.Send(SCI_POSITIONFROMPOINT, at.x(), at.y());
        if (offset < selected.start || offset >= selected.end)
            ByUser([&] { text.Select(offset, offset); });
    } else {
        const long below = text.Send(SCI_POINTYFROMPOSITION, 0, Caret()) + text.Send(SCI_TEXTHEIGHT, 0);
        screen = viewport()->mapToGlobal(
            QPoint(static_cast<int>(text.Send(SCI_POINTXFROMPOSITION, 0, Caret())), static_cast<int>(below)));
    }
    event->accept();
    emit MenuAsked(screen);
}

bool CodeView::TakenByClient(QMouseEvent& event)
{
    if (client == nullptr || !client->MousePressed(*this, event))
        return false;
    event.accept();
    return true;
}

} // namespace wren
