#include "wren/desktop/NameHelp.h"

#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/editor/ViewText.h"
#include "wren/desktop/symbols/HelpQuestions.h"

#include <string_view>
#include <utility>

namespace wren {

namespace {

// At the name of what is called while that is in the caret's line, so that the card stays where it is.
long PlaceOf(const CallHelp& help, const CodeView& view)
{
    const ViewText text(view);
    const auto name = static_cast<long>(help.name);
    const auto lineOf = [&](long offset) { return text.Send(QsciScintillaBase::SCI_LINEFROMPOSITION, offset); };
    return lineOf(name) == lineOf(view.Caret()) ? name : view.Caret();
}

} // namespace

NameHelp::NameHelp(Parts given) : parts(std::move(given))
{
    connect(&pointed, &PointedName::Rested, this, [this](CodeView& view, long offset) {
        if (&view == parts.view())
            AskMeaning(offset, false);
    });
    connect(&pointed, &PointedName::Gone, this, [this] {
        parts.engine.Forget(SymbolEngine::Topic::Meaning);
        if (meaning != nullptr)
            meaning->hide();
    });
}

NameHelp::~NameHelp()
{
    delete meaning;
    delete call;
}

void NameHelp::ShowMeaning()
{
    if (const CodeView* view = parts.view())
        AskMeaning(view->Caret(), true);
}

void NameHelp::ShowCall()
{
    AskCall(true);
}

void NameHelp::AskMeaning(long offset, bool isByKey)
{
    const std::optional<AskedText> asked = parts.about(offset);
    if (!asked)
        return;
    const auto show = [this, offset, isByKey, view = QPointer(parts.view())](const std::optional<QString>& text) {
        if (view == nullptr || view != parts.view())
            return;
        if (text)
            CardIn(*view, meaning, tr("What the name means"))->Show(offset, *text);
        else if (isByKey)
            parts.say(tr("Nothing is known about a name at the caret."));
    };
    parts.engine.Ask(SymbolEngine::Topic::Meaning, [asked = *asked, show](const Question& question) {
        const std::optional<MeaningCard> card = MeaningAt(asked, question);
        const std::optional<QString> text = card ? std::optional(RichTextOf(*card)) : std::nullopt;
        question.tell([show, text] { show(text); });
    });
}

void NameHelp::AskCall(bool isByKey)
{
    const CodeView* current = parts.view();
    const std::optional<AskedText> asked = current == nullptr ? std::nullopt : parts.about(current->Caret());
    if (!asked)
        return;
    const auto show = [this, isByKey, view = QPointer(parts.view())](const std::optional<CallHelp>& help) {
        if (view == nullptr || view != parts.view())
            return;
        if (help)
            CardIn(*view, call, tr("What the call takes"))->Show(PlaceOf(*help, *view), RichTextOf(*help));
        else if (call != nullptr)
            call->hide();
        if (!help && isByKey)
            parts.say(tr("Nothing that is known is called at the caret."));
    };
    parts.engine.Ask(SymbolEngine::Topic::Call, [asked = *asked, show](const Question& question) {
        const std::optional<CallHelp> help = CallAt(asked, question);
        question.tell([show, help] { show(help); });
    });
}

NameCard* NameHelp::CardIn(CodeView& view, QPointer<NameCard>& card, const QString& name)
{
    if (card != nullptr && &card->View() != &view)
        delete card;
    if (card == nullptr)
        card = new NameCard(view, name);
    return card;
}

void NameHelp::TextChanged()
{
    const CodeView* view = parts.view();
    if (view == nullptr)
        return;
    const char typed = ViewText(*view).CharAt(view->Caret() - 1);
    if (std::string_view("(,").find(typed) != std::string_view::npos || (call != nullptr && call->isVisible()))
        AskCall(false);
}

void NameHelp::CaretMoved()
{
    if (meaning != nullptr)
        meaning->hide();
    if (call != nullptr && call->isVisible())
        AskCall(false);
}

void NameHelp::Raised()
{
    Close();
    if (CodeView* view = parts.view())
        pointed.Watch(*view);
}

void NameHelp::Close()
{
    parts.engine.Forget(SymbolEngine::Topic::Meaning);
    parts.engine.Forget(SymbolEngine::Topic::Call);
    for (NameCard* card : {meaning.data(), call.data()})
        if (card != nullptr)
            card->hide();
}

} // namespace wren
