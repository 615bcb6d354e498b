#include "wren/desktop/SymbolActions.h"

#include "base/Identifier.h"
#include "vetch/display/Display.h"
#include "wren/core/Host.h"
#include "wren/desktop/DocumentActions.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/GuiLoop.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/NamedLine.h"
#include "wren/desktop/PlaceActions.h"
#include "wren/desktop/StatusLine.h"
#include "wren/desktop/editor/CodeLexer.h"
#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/symbols/MatchesPanel.h"
#include "wren/desktop/symbols/OutlinePanel.h"
#include "wren/desktop/symbols/Palette.h"
#include "wren/desktop/symbols/RowText.h"
#include "wren/desktop/symbols/ScopeBar.h"
#include "wren/symbols/NameColumn.h"

#include <QStatusBar>

#include <algorithm>
#include <chrono>
#include <utility>

namespace wren {

namespace {

using namespace std::chrono_literals;

constexpr long kLongestText = 16L << 20; // bytes; a longer one is data
constexpr int kSaid = 8000;              // milliseconds

// A text without a file has a path that is not absolute.
std::string PathOf(const Document& document)
{
    const std::string path = document.Path();
    return path.empty() ? "untitled:" + std::to_string(document.Id()) : path;
}

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
    : parts(parts), engine(std::move(options), &GuiLoop::Wake), pause(200ms, 1000ms),
      names(std::make_shared<FileNames>()),
      help({engine, [this](long offset) { return AboutName(offset); },
            [this] { return this->parts.window.Tabs().CurrentView(); }, [this](const QString& text) { Say(text); }}),
      completing({engine, [this](long offset) { return AboutName(offset); },
                  [this] { return this->parts.window.Tabs().CurrentView(); },
                  [this](const QString& text) { Say(text); }})
{
    connect(&scopes, &ScopeBars::Asked, this, [this](const CodeView& view, const std::vector<PaletteItem>& items) {
        if (&view == this->parts.window.Tabs().CurrentView())
            ChooseAmong(items);
    });
    help.Pointed().mayClick = [this] { return !this->parts.controlClicksLookUp(); };
    connect(&help.Pointed(), &PointedName::Clicked, this, &SymbolActions::GoToClicked);
    connect(&pause, &QuietTimer::Quiet, this, [this] {
        Feed();
        AskOutline();
    });
    connect(&parts.documents, &DocumentActions::Named, this, [this](long, const std::string& path) {
        if (CodeLexer::IsCode(path))
            engine.TextClosed(path); // the file counts until its text differs
        UpdateScopes();
    });
    connect(&parts.documents, &DocumentActions::Closing, this, [this](long id) {
        changed.erase(id);
        if (const Document* document = this->parts.host.AllDocuments().Find(id))
            engine.TextClosed(PathOf(*document));
    });
}

SymbolActions::~SymbolActions() = default;

// ------------------------------------------------------------------------------------------------------ What is asked

void SymbolActions::TextChanged(long document)
{
    changed.insert(document);
    pause.Happened();
    if (const Document* current = parts.host.Current(); current != nullptr && current->Id() == document)
        help.TextChanged();
}

void SymbolActions::Feed()
{
    for (const long id : std::exchange(changed, {})) {
        const Document* document = parts.host.AllDocuments().Find(id);
        if (document == nullptr || document->Length() > kLongestText || !CodeLexer::IsCode(document->Path()))
            continue;
        engine.TextChanged(document->Path(), std::make_shared<const std::string>(document->Text()));
    }
}

std::string SymbolActions::CurrentPath() const
{
    const Document* document = parts.host.Current();
    return document == nullptr ? "" : PathOf(*document);
}

SymbolActions::Asked SymbolActions::AboutCurrent()
{
    Feed();
    Asked asked;
    const Document* document = parts.host.Current();
    if (document == nullptr || document->Length() > kLongestText)
        return asked;
    asked.view = parts.window.Tabs().CurrentView();
    asked.text.path = PathOf(*document);
    asked.text.text = std::make_shared<const std::string>(document->Text());
    asked.text.offset = static_cast<size_t>(asked.view->Caret());
    asked.name = base::IdentifierAround(*asked.text.text, asked.text.offset);
    return asked;
}

std::optional<AskedText> SymbolActions::AboutName(long offset)
{
    const Document* document = parts.host.Current();
    if (document == nullptr || !CodeLexer::IsCode(document->Path()))
        return std::nullopt;
    Asked asked = AboutCurrent();
    if (asked.view == nullptr)
        return std::nullopt;
    asked.text.offset = static_cast<size_t>(offset);
    return asked.text;
}

void SymbolActions::GoTo(Wanted wanted)
{
    const Asked asked = AboutCurrent();
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

void SymbolActions::ListReferences()
{
    const Asked asked = AboutCurrent();
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
    Matches().Begin(title);
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
    if (std::exchange(updates, engine.Updates()) != updates && palette != nullptr)
        palette->AskAgain();
    parts.window.Status().ShowIndex(Shown(engine.Activity()), Shown(engine.Problem()), engine.IsStopped());
}

void SymbolActions::RefreshIndex()
{
    Feed();
    engine.RefreshIndex(CurrentPath());
}

void SymbolActions::StopIndexing()
{
    engine.StopIndexing();
    TakeNews();
}

bool SymbolActions::IsIdle() const
{
    return changed.empty() && engine.IsIdle();
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
    if (document != nullptr && PathOf(*document) == only.path &&
        document->LineAt(parts.window.Tabs().CurrentView()->Caret()) + 1 == only.line)
        Say(tr("\u201c%1\u201d stands here; no other place declares or defines it.").arg(shown));
    Land(only);
}

void SymbolActions::SayNotFound(Wanted wanted, const std::string& name)
{
    if (name.empty())
        return Say(tr("There is no name at the caret."));
    if (!CodeLexer::IsCode(CurrentPath()))
        return Say(tr("Names are understood in C, C++ and Objective-C."));
    QString text = tr("No %1 of \u201c%2\u201d was found in this text, its project and the system's headers.")
                       .arg(NounOf(wanted, true), Shown(name));
    if (!engine.Activity().empty())
        text += ' ' + tr("The index is still being made.");
    Say(text);
}

void SymbolActions::Land(const FoundPlace& place)
{
    parts.places.OpenMatch(place.path, place.line, place.column);
    const Document* document = parts.host.Current();
    if (place.column > 0 && document != nullptr && PathOf(*document) == place.path) {
        CodeView& view = *parts.window.Tabs().CurrentView();
        mark.Show(view, view.Caret(), static_cast<long>(place.nameSize));
    }
}

// The caret is where the plug-in was asked, so the name there is the one that it has found.
void SymbolActions::OpenMatch(const std::string& path, long line)
{
    const Document* asked = parts.host.Current();
    const std::string name = asked == nullptr ? "" : NameAt(*asked, parts.window.Tabs().CurrentView()->Caret());
    parts.places.OpenMatch(path, line);
    const Document* document = parts.host.Current();
    if (document == nullptr || document->Path() != AbsolutePath(path))
        return;
    if (const std::optional<long> offset = OffsetOfNameNear(*document, line, name)) {
        CodeView& view = *parts.window.Tabs().CurrentView();
        view.GoTo(*offset);
        mark.Show(view, *offset, static_cast<long>(name.size()));
    }
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

void SymbolActions::Say(const QString& text)
{
    parts.window.statusBar()->showMessage(text, kSaid);
}

void SymbolActions::GiveKeyboardBack()
{
    if (CodeView* view = parts.window.Tabs().CurrentView())
        view->setFocus();
}

MatchesPanel& SymbolActions::Matches()
{
    if (matches != nullptr)
        return *matches;
    matches = new MatchesPanel(&parts.window);
    parts.window.AddPanel(Qt::BottomDockWidgetArea, matches);
    connect(matches, &MatchesPanel::Chosen, this, [this](const FoundPlace& place) {
        Land(place);
        GiveKeyboardBack();
    });
    connect(matches, &MatchesPanel::Left, this, &SymbolActions::GiveKeyboardBack);
    connect(matches, &MatchesPanel::StopAsked, this, [this] {
        engine.Forget(SymbolEngine::Topic::List);
        matches->End(true);
    });
    return *matches;
}

// --------------------------------------------------------------------------------------------------------- The palette

Palette& SymbolActions::ThePalette()
{
    if (palette != nullptr)
        return *palette;
    palette = new Palette(&parts.window);
    connect(palette, &Palette::Closed, this, &SymbolActions::GiveKeyboardBack);
    return *palette;
}

void SymbolActions::Choose(const PaletteItem& item, long line)
{
    parts.places.OpenMatch(item.path, line > 0 ? line : item.line);
    const Document* document = parts.host.Current();
    CodeView* view = parts.window.Tabs().CurrentView();
    if (line > 0 || item.line == 0 || document == nullptr || document->Path() != item.path)
        return;
    const long start = document->LineStart(item.line - 1); // the index knows only lines
    const std::string text = document->Text(start, document->LineEnd(item.line - 1));
    const std::string word = item.name.substr(0, item.name.find(':'));
    view->GoTo(start + static_cast<long>(NameColumn(text, word)) - 1);
    mark.Show(*view, view->Caret(), static_cast<long>(word.size()));
}

void SymbolActions::GoToSymbol()
{
    Feed();
    PaletteUse use;
    use.title = tr("Go to symbol: letters of its name, Outer::name or path/name");
    use.ask = [this, path = CurrentPath()](const QString& letters) {
        engine.Ask(
            SymbolEngine::Topic::Palette, [this, path, wanted = letters.toStdString()](const Question& question) {
                PaletteAnswer answer = SymbolsLike(wanted, path, question);
                question.tell([this, answer = std::move(answer)]() mutable { palette->Show(std::move(answer)); });
            });
    };
    use.choose = [this](const PaletteItem& item, long) { Choose(item, 0); };
    ThePalette().Open(std::move(use));
}

void SymbolActions::GoToFile()
{
    Feed();
    PaletteUse use;
    use.title = tr("Go to file: letters of its name, directory/name or name:line");
    use.listsWithoutLetters = true;
    use.ask = [this, path = CurrentPath(), recent = parts.recentFiles()](const QString& letters) {
        const auto work = [this, path, recent, kept = names, wanted = letters.toStdString()](const Question& question) {
            PaletteAnswer answer = kept->Like(wanted, path, recent, question);
            question.tell([this, answer = std::move(answer)]() mutable { palette->Show(std::move(answer)); });
        };
        engine.Ask(SymbolEngine::Topic::Palette, work);
    };
    use.choose = [this](const PaletteItem& item, long line) { Choose(item, line); };
    ThePalette().Open(std::move(use));
}

void SymbolActions::GoToSymbolOfText()
{
    const Asked asked = AboutCurrent();
    if (asked.view == nullptr)
        return;
    PaletteUse use;
    use.title = tr("Go to symbol of this text");
    use.listsWithoutLetters = true;
    use.ask = [this, text = asked.text](const QString& letters) {
        engine.Ask(
            SymbolEngine::Topic::Palette, [this, text, wanted = letters.toStdString()](const Question& question) {
                PaletteAnswer answer = SymbolsOfText(wanted, text, question);
                question.tell([this, answer = std::move(answer)]() mutable { palette->Show(std::move(answer)); });
            });
    };
    use.choose = [this](const PaletteItem& item, long) { Choose(item, 0); };
    ThePalette().Open(std::move(use));
}

// --------------------------------------------------------------------------------------------------------- The outline

OutlinePanel& SymbolActions::Outline()
{
    if (outline != nullptr)
        return *outline;
    outline = new OutlinePanel(&parts.window);
    parts.window.AddPanel(Qt::LeftDockWidgetArea, outline);
    connect(outline, &OutlinePanel::Chosen, this, [this](const PaletteItem& item) {
        Choose(item, 0);
        GiveKeyboardBack();
    });
    connect(outline, &OutlinePanel::Left, this, &SymbolActions::GiveKeyboardBack);
    outline->hide();
    connect(outline, &OutlinePanel::visibilityChanged, this, [this] { emit OutlineShown(outline->isVisible()); });
    return *outline;
}

void SymbolActions::ShowOutline(bool shown)
{
    Outline().setVisible(shown);
    if (!shown)
        return GiveKeyboardBack();
    AskOutline();
    Outline().setFocus();
}

void SymbolActions::AskOutline()
{
    const bool isOutlined = outline != nullptr && outline->isVisible();
    if (!isOutlined && Scopes() == nullptr)
        return;
    const Asked asked = AboutCurrent();
    if (asked.view == nullptr) {
        if (isOutlined)
            outline->Show({});
        return;
    }
    const auto show = [this, view = QPointer(asked.view)](const std::vector<PaletteItem>& items) {
        if (outline != nullptr)
            outline->Show(items);
        if (ScopeBar* bar = view == nullptr ? nullptr : scopes.BarOf(*view))
            bar->Show(items);
    };
    engine.Ask(SymbolEngine::Topic::Text, [show, text = asked.text](const Question& question) {
        const PaletteAnswer answer = SymbolsOfText("", text, question);
        question.tell([show, items = answer.items] { show(items); });
    });
    CaretMoved();
}

void SymbolActions::Raised()
{
    UpdateScopes();
    AskOutline();
    help.Raised();
    completing.Close();
}

void SymbolActions::CaretMoved()
{
    help.CaretMoved();
    completing.CaretMoved();
    const Document* document = parts.host.Current();
    const CodeView* view = parts.window.Tabs().CurrentView();
    if (document == nullptr || view == nullptr)
        return;
    const long line = document->LineAt(view->Caret()) + 1;
    if (outline != nullptr && outline->isVisible())
        outline->FollowCaret(line);
    if (ScopeBar* bar = scopes.BarOf(*view))
        bar->FollowCaret(line);
}

// ---------------------------------------------------------------------------------------------------------- The scopes

void SymbolActions::ShowScopes(bool shown)
{
    showsScopes = shown;
    UpdateScopes();
    AskOutline();
}

void SymbolActions::UpdateScopes()
{
    const Document* document = parts.host.Current();
    CodeView* view = parts.window.Tabs().CurrentView();
    if (view != nullptr && document != nullptr)
        scopes.Update(*view, showsScopes && CodeLexer::IsCode(document->Path()));
}

const ScopeBar* SymbolActions::Scopes() const
{
    const CodeView* view = parts.window.Tabs().CurrentView();
    return view == nullptr ? nullptr : scopes.BarOf(*view);
}

void SymbolActions::OpenScope()
{
    const CodeView* view = parts.window.Tabs().CurrentView();
    if (ScopeBar* bar = view == nullptr ? nullptr : scopes.BarOf(*view))
        bar->OpenLast();
}

void SymbolActions::ChooseAmong(const std::vector<PaletteItem>& items)
{
    PaletteUse use;
    use.title = tr("Go to symbol of this scope");
    use.listsWithoutLetters = true;
    use.ask = [this, items](const QString& letters) {
        PaletteAnswer answer{items, false};
        if (!letters.isEmpty())
            Narrow(answer.items, letters.toStdString());
        palette->Show(std::move(answer));
    };
    use.choose = [this](const PaletteItem& item, long) { Choose(item, 0); };
    ThePalette().Open(std::move(use));
}

} // namespace wren
