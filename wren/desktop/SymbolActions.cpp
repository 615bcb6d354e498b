#include "wren/desktop/SymbolActions.h"

#include "vetch/display/Display.h"
#include "wren/core/Host.h"
#include "wren/desktop/DocumentActions.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/GuiLoop.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/StatusLine.h"
#include "wren/desktop/editor/CodeLexer.h"
#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/symbols/OtherHalfQuestion.h"
#include "wren/desktop/symbols/RowText.h"

#include <QStatusBar>

#include <optional>
#include <utility>

namespace wren {

namespace {

constexpr int kSaid = 8000; // milliseconds

QString NounOf(Wanted wanted, bool isOne)
{
    switch (wanted) {
    case Wanted::Declaration:
        return isOne ? SymbolActions::tr("declaration") : SymbolActions::tr("declarations");
    case Wanted::Implementations:
        return isOne ? SymbolActions::tr("implementation") : SymbolActions::tr("implementations");
    default:
        return isOne ? SymbolActions::tr("definition") : SymbolActions::tr("definitions");
    }
}

} // namespace

SymbolActions::SymbolActions(const Parts& parts, SymbolEngineOptions options)
    : parts(parts), engine(std::move(options), &GuiLoop::Wake),
      texts(parts.host, parts.window, parts.documents, engine), landing(parts.host, parts.window, parts.places),
      help({engine, [this](long offset) { return texts.AboutName(offset); },
            [this] { return this->parts.window.Tabs().CurrentView(); }, [this](const QString& text) { Say(text); }}),
      completing({engine, [this](long offset) { return texts.AboutName(offset); },
                  [this] { return this->parts.window.Tabs().CurrentView(); },
                  [this](const QString& text) { Say(text); }}),
      palettes({engine, texts, landing, parts.window, parts.recentFiles}),
      outlines({parts.host, parts.window, engine, texts, landing})
{
    connect(&outlines, &OutlineActions::SiblingsAsked, &palettes, &PaletteActions::GoToSymbolOfScope);
    connect(&parts.documents, &DocumentActions::Named, &outlines, &OutlineActions::Renamed);
    help.Pointed().mayClick = [this] { return !this->parts.controlClicksLookUp(); };
    connect(&help.Pointed(), &PointedName::Clicked, this, &SymbolActions::GoToClicked);
}

SymbolActions::~SymbolActions() = default;

// ------------------------------------------------------------------------------------------------------ What is asked

void SymbolActions::TextChanged(long document)
{
    texts.Changed(document);
    if (const Document* current = parts.host.Current(); current != nullptr && current->Id() == document)
        help.TextChanged();
}

void SymbolActions::Raised()
{
    outlines.Raised();
    help.Raised();
    completing.Close();
}

void SymbolActions::CaretMoved()
{
    help.CaretMoved();
    completing.CaretMoved();
    outlines.CaretMoved();
}

void SymbolActions::GoTo(Wanted wanted)
{
    const AskedTexts::Asked asked = texts.AboutCurrent();
    if (asked.view == nullptr)
        return;
    engine.Ask(SymbolEngine::Topic::Place, [this, wanted, asked](const Question& question) {
        FoundPlaces places = PlacesOf(wanted, asked.text, question);
        const auto hear = [this, wanted, name = asked.name, places = std::move(places)] {
            Heard(places, wanted, name);
        };
        question.tell(hear);
    });
}

void SymbolActions::GoToClicked(CodeView& view, long offset)
{
    if (&view != parts.window.Tabs().CurrentView())
        return;
    view.GoTo(offset); // which is where going back leads
    GoTo(Wanted::Definition);
}

void SymbolActions::GoToOtherHalf()
{
    const AskedTexts::Asked asked = texts.AboutCurrent();
    if (asked.view == nullptr)
        return;
    if (!CodeLexer::IsCode(asked.text.path))
        return Say(tr("Only C, C++ and Objective-C have headers and sources."));
    engine.Ask(SymbolEngine::Topic::Place, [this, text = asked.text](const Question& question) {
        const std::optional<std::string> other = OtherHalfOf(text, question);
        question.tell([this, other] {
            if (!other)
                return Say(tr("No other file goes with this one."));
            FoundPlace place;
            place.path = *other;
            landing.GoTo(place);
        });
    });
}

void SymbolActions::ListReferences()
{
    const AskedTexts::Asked asked = texts.AboutCurrent();
    if (asked.view == nullptr)
        return;
    if (asked.name.empty())
        return Say(tr("There is no name at the caret."));
    ListPlaces(
        tr("references to \u201c%1\u201d").arg(Shown(asked.name)),
        [asked](const Question& question, const PartSink& part) { return ReferencesTo(asked.text, question, part); });
}

void SymbolActions::ListPlaces(const QString& title, std::function<bool(const Question&, const PartSink&)> find)
{
    Matches().Begin(title, AtCaret());
    engine.Ask(SymbolEngine::Topic::List, [this, find = std::move(find)](const Question& question) {
        const auto part = [&](std::vector<FoundPlace> places) {
            question.tell([this, places = std::move(places)]() mutable { Matches().Add(std::move(places)); });
        };
        const bool more = find(question, part);
        question.tell([this, more] { Matches().End(more); });
    });
}

// ---------------------------------------------------------------------------------------------------- What is answered

void SymbolActions::TakeNews()
{
    engine.TakeNews();
    if (std::exchange(updates, engine.Updates()) != updates)
        palettes.AskAgain();
    parts.window.Status().ShowIndex(Shown(engine.Activity()), Shown(engine.Problem()), engine.IsStopped());
}

void SymbolActions::RefreshIndex()
{
    texts.Feed();
    engine.RefreshIndex(texts.CurrentPath());
}

void SymbolActions::StopIndexing()
{
    engine.StopIndexing();
    TakeNews();
}

bool SymbolActions::IsIdle() const
{
    return texts.IsFed() && engine.IsIdle();
}

void SymbolActions::Heard(const FoundPlaces& places, Wanted wanted, const std::string& name)
{
    if (places.found.empty())
        return SayNotFound(wanted, name);
    const QString shown = Shown(places.name);
    if (places.isOnlyDeclared)
        Say(tr("\u201c%1\u201d is only declared: no definition was found.").arg(shown));
    if (places.found.size() > 1 || !places.isSure)
        return List(places, wanted);
    const FoundPlace& only = places.found.front();
    const Document* document = parts.host.Current();
    if (document != nullptr && AskedTexts::PathOf(*document) == only.path &&
        document->LineAt(parts.window.Tabs().CurrentView()->Caret()) + 1 == only.line)
        Say(tr("\u201c%1\u201d stands here; no other place declares or defines it.").arg(shown));
    landing.GoTo(only);
}

void SymbolActions::SayNotFound(Wanted wanted, const std::string& name)
{
    if (name.empty())
        return Say(tr("There is no name at the caret."));
    if (!CodeLexer::IsCode(texts.CurrentPath()))
        return Say(tr("Names are understood in C, C++ and Objective-C."));
    QString text = tr("No %1 of \u201c%2\u201d was found in this text, its project and the system's headers.")
                       .arg(NounOf(wanted, true), Shown(name));
    if (!engine.Activity().empty())
        text += ' ' + tr("The index is still being made.");
    Say(text);
}

void SymbolActions::List(const FoundPlaces& places, Wanted wanted)
{
    engine.Forget(SymbolEngine::Topic::List);
    const bool isOne = places.found.size() == 1;
    QString title = tr("%1 of \u201c%2\u201d").arg(NounOf(wanted, isOne), Shown(places.name));
    if (!places.isSure)
        title += tr(", found by the name alone");
    Matches().Begin(title);
    Matches().Add(places.found);
    Matches().End(places.more);
    Matches().TakeKeyboard();
    if (places.more)
        Say(tr("The list ends after %1 places; there are more.").arg(places.found.size()));
}

void SymbolActions::Step(bool backwards)
{
    if (matches == nullptr || !matches->Step(backwards))
        beep();
}

CaretPlace SymbolActions::AtCaret() const
{
    const Document* document = parts.host.Current();
    const CodeView* view = parts.window.Tabs().CurrentView();
    if (document == nullptr || view == nullptr)
        return {};
    const long line = document->LineAt(view->Caret());
    return {AskedTexts::PathOf(*document), line + 1, view->Caret() - document->LineStart(line) + 1};
}

void SymbolActions::Say(const QString& text)
{
    parts.window.statusBar()->showMessage(text, kSaid);
}

MatchesPanel& SymbolActions::Matches()
{
    if (matches != nullptr)
        return *matches;
    matches = new MatchesPanel(&parts.window);
    parts.window.AddPanel(Qt::BottomDockWidgetArea, matches);
    connect(matches, &MatchesPanel::Chosen, this, [this](const FoundPlace& place) {
        landing.GoTo(place);
        parts.window.Tabs().FocusCurrent();
    });
    connect(matches, &MatchesPanel::Left, &parts.window.Tabs(), &EditorTabs::FocusCurrent);
    connect(matches, &MatchesPanel::StopAsked, this, [this] {
        engine.Forget(SymbolEngine::Topic::List);
        matches->End(true);
    });
    return *matches;
}

} // namespace wren
