#include "wren/desktop/Completing.h"

#include "wren/desktop/editor/ViewText.h"

#include <QKeyEvent>

#include <algorithm>
#include <utility>

namespace wren {

namespace {

using Which = PreferenceValues::Completion;
using Sort = TextPlace::Sort;

constexpr long kLongestLook = 1000; // bytes before the caret

} // namespace

Completing::Completing(Parts given) : parts(std::move(given)) {}

Completing::~Completing()
{
    delete list;
}

// ---------------------------------------------------------------------------------------------------- What is typed

Completing::Word Completing::WordAt(CodeView& view) const
{
    const ViewText text(view);
    const long caret = view.Caret();
    const long line =
        text.Send(QsciScintillaBase::SCI_POSITIONFROMLINE, text.Send(QsciScintillaBase::SCI_LINEFROMPOSITION, caret));
    Word found;
    found.view = &view;
    found.place = PlaceAtEnd(text.Copy(std::max(line, caret - kLongestLook), caret));
    found.start = caret - static_cast<long>(found.place.wordSize);
    return found;
}

std::string Completing::TypedPart() const
{
    return ViewText(*word.view).Copy(word.start, word.view->Caret());
}

bool Completing::IsOwn(const LinePlace& place) const
{
    return place.sort != Sort::Unqualified || uses == Which::Editor;
}

bool Completing::ListsLocalsOnly() const
{
    return uses != Which::Editor && answer.where.sort == Sort::Unqualified;
}

bool Completing::Typed(CodeView& view)
{
    if (uses == Which::Plugin || uses == Which::None)
        return uses == Which::None;
    const Word now = WordAt(view);
    const bool begins = now.place.sort != Sort::Unqualified || now.place.wordSize > 0;
    if (!begins || ViewText(view).Selected().start != view.Caret()) {
        Close();
        return false;
    }
    if (!now.IsSame(word)) {
        Close();
        Ask(now);
    } else if (!isClosed) {
        if (IsShown())
            Narrow();
        if (answer.more && !isPending && !ListsLocalsOnly())
            Ask(now);
    }
    return IsShown() || (isPending && IsOwn(now.place));
}

bool Completing::Asked()
{
    CodeView* view = parts.view();
    if (uses == Which::Plugin || view == nullptr || (pluginLists && pluginLists()))
        return false;
    Word now = WordAt(*view);
    if (!IsOwn(now.place))
        return false;
    now.isAsked = true;
    Close();
    Ask(now);
    return true;
}

// The user may go on with the word while it is answered.
void Completing::Ask(const Word& wanted)
{
    word = wanted;
    const std::optional<AskedText> asked = parts.about(word.view->Caret());
    isPending = asked.has_value();
    if (!asked)
        return;
    parts.engine.Ask(SymbolEngine::Topic::Completion, [this, asked = *asked, wanted](const Question& question) {
        CompletionAnswer found = CompletionsAt(asked, question);
        question.tell([this, wanted, found = std::move(found)]() mutable { Heard(wanted, std::move(found)); });
    });
}

// -------------------------------------------------------------------------------------------------- What is answered

void Completing::Heard(const Word& asked, CompletionAnswer heard)
{
    if (!asked.IsSame(word) || asked.view != parts.view())
        return;
    isPending = false;
    answer = std::move(heard);
    const bool isElsewhere = !WordAt(*word.view).IsSame(word);
    if (isElsewhere || (pluginLists && pluginLists()))
        return Close();
    if (!isClosed)
        Narrow();
}

// A word that is there already is no completion of itself.
void Completing::Narrow()
{
    const std::string typed = TypedPart();
    std::vector<PaletteItem> fitting = Fitting(answer.items, typed, ListsLocalsOnly());
    if (fitting.size() == 1 && fitting.front().name == typed)
        fitting.clear();
    if (fitting.empty())
        return NothingFits();
    if (list != nullptr && &list->View() != word.view)
        delete list;
    if (list == nullptr) {
        list = new CompletionList(*word.view);
        connect(list, &CompletionList::Clicked, this, &Completing::Take);
    }
    list->Show(word.start, std::move(fitting));
}

void Completing::NothingFits()
{
    if (list != nullptr)
        list->hide();
    if (!word.isAsked || isPending)
        return;
    if (uses == Which::Editor || !pluginCompletes)
        parts.say(tr("Nothing is known that fits here."));
    else
        pluginCompletes();
}

// ----------------------------------------------------------------------------------------------------- What is chosen

bool Completing::KeyPressed(CodeView& view, const QKeyEvent& event)
{
    if ((event.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier)
        return false;
    if (!IsShown() && pluginOffers && pluginOffers())
        return KeyForPlugin(event.key());
    if (!IsShown() || &view != word.view)
        return false;
    switch (event.key()) {
    case Qt::Key_Escape:
        list->hide();
        isClosed = true; // until another word begins
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (list->Items()[static_cast<size_t>(list->Marked())].name == TypedPart())
            break; // it would change nothing: the key ends the line
        [[fallthrough]];
    case Qt::Key_Tab:
        Take();
        return true;
    default:
        return list->Move(event.key());
    }
    Close();
    return false;
}

// Its own list ignores these two: Escape would leave it open, and Tab would go to the text.
bool Completing::KeyForPlugin(int key)
{
    if (key == Qt::Key_Escape)
        pluginLeaves();
    else if (key == Qt::Key_Tab)
        pluginCompletes();
    return key == Qt::Key_Escape || key == Qt::Key_Tab;
}

void Completing::Take()
{
    if (!IsShown() || list->Marked() < 0)
        return;
    const PaletteItem item = list->Items()[static_cast<size_t>(list->Marked())];
    CodeView& view = *word.view;
    const long end = view.Caret();
    const long start = word.start;
    const std::string inserted = Insertion(item, end);
    Close();
    view.ReplaceAsTyped(start, end, inserted);
    if (inserted.ends_with('/')) // a directory
        Ask(WordAt(view));
}

// A file's name ends with what the #include began with.
std::string Completing::Insertion(const PaletteItem& item, long end) const
{
    const bool isFile = answer.where.sort == Sort::Include && !item.name.ends_with('/');
    const char close = answer.where.isAngled ? '>' : '"';
    if (!isFile || ViewText(*word.view).CharAt(end) == close)
        return item.name;
    return item.name + close;
}

void Completing::CaretMoved()
{
    if (!IsShown() && !isPending)
        return;
    CodeView* view = parts.view();
    const Word now = view == nullptr ? Word() : WordAt(*view);
    if (view == nullptr || !now.IsSame(word))
        return Close();
    if (IsShown())
        Narrow();
    if (now.place.wordSize < word.place.wordSize) // the answer is about more letters than are left
        Ask(now);
}

void Completing::Close()
{
    if (isPending)
        parts.engine.Forget(SymbolEngine::Topic::Completion);
    isPending = false;
    isClosed = false;
    word = {};
    answer = {};
    if (list != nullptr)
        list->hide();
}

} // namespace wren
