// Going to what a name means, and to symbols and files by a few letters.
#pragma once

#include "wren/desktop/Completing.h"
#include "wren/desktop/NameHelp.h"
#include "wren/desktop/ScopeBars.h"
#include "wren/desktop/editor/LandingMark.h"
#include "wren/desktop/state/QuietTimer.h"
#include "wren/desktop/symbols/PaletteQuestions.h"
#include "wren/desktop/symbols/PlaceQuestions.h"
#include "wren/desktop/symbols/SymbolEngine.h"

#include <QObject>

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace wren {

class CodeView;
class DocumentActions;
class Host;
class MainWindow;
class MatchesPanel;
class OutlinePanel;
class Palette;
class PlaceActions;

// Answers come from the engine, later; what the user does meanwhile counts more. GUI thread.
class SymbolActions : public QObject {
    Q_OBJECT
public:
    struct Parts { // all borrowed
        Host& host;
        MainWindow& window;
        DocumentActions& documents;
        PlaceActions& places;
        std::function<std::vector<std::string>()> recentFiles; // the last one first
        std::function<bool()> controlClicksLookUp;             // in the tags files: Control-click is the plug-in's
    };
    SymbolActions(const Parts& parts, SymbolEngineOptions options);
    ~SymbolActions() override;

    // Of the name at the caret: goes there when its meaning is sure and there is one; else lists what it may be.
    void GoTo(Wanted wanted);
    void ListReferences();
    // Lists what 'find' finds in the panel of matches, instead of what was listed before. It runs on a thread of the
    // engine, hands over parts as they come, and returns whether there are more.
    using PartSink = std::function<void(std::vector<FoundPlace> part)>;
    void ListPlaces(const QString& title, std::function<bool(const Question&, const PartSink&)> find);
    void GoToClicked(CodeView& view, long offset);      // to the definition of the name there
    void Land(const FoundPlace& place);                 // goes there, and marks the name
    void Step(bool backwards);                          // to the next place of the list; beeps at its end
    void OpenMatch(const std::string& path, long line); // that the plug-in has found: at the name, and marks it

    void GoToSymbol(); // of the project and the system
    void GoToFile();   // of the project
    void GoToSymbolOfText();

    void ShowOutline(bool shown); // and gives it the keyboard

    void RefreshIndex(); // of the current text's project
    void StopIndexing();

    void ShowScopes(bool shown); // above the texts, in their look as it is now
    void OpenScope();            // lists what stands beside the scope of the caret

    void TextChanged(long document);
    void Raised(); // another text is the current one
    void CaretMoved();
    void TakeNews();

    bool IsIdle() const; // no answer is to come
    SymbolEngine& Engine() { return engine; }
    MatchesPanel& Matches();
    Palette& ThePalette();
    OutlinePanel& Outline();
    NameHelp& Help() { return help; }
    Completing& Completion() { return completing; }
    const ScopeBar* Scopes() const; // of the current text; null for none

signals:
    void OutlineShown(bool shown);

private:
    struct Asked { // about the current text; without a view there is none
        CodeView* view = nullptr;
        AskedText text;
        std::string name; // the word at the caret
    };
    Asked AboutCurrent();
    std::optional<AskedText> AboutName(long offset);
    std::string CurrentPath() const; // of the text; "" for none
    void Feed();
    void AskOutline();
    void UpdateScopes();
    void ChooseAmong(const std::vector<PaletteItem>& items);
    void Heard(const FoundPlaces& places, Wanted wanted, const std::string& name);
    void SayNotFound(Wanted wanted, const std::string& name);
    void List(const FoundPlaces& places, Wanted wanted);
    void Choose(const PaletteItem& item, long line);
    void Say(const QString& text);
    void GiveKeyboardBack();

    const Parts parts;
    SymbolEngine engine;
    size_t updates = 0;     // of indexes, that the palette has seen
    std::set<long> changed; // documents whose text the engine does not know yet
    QuietTimer pause;
    std::shared_ptr<FileNames> names; // used by one question at a time
    NameHelp help;
    Completing completing;
    ScopeBars scopes;
    bool showsScopes = false;
    LandingMark mark;
    MatchesPanel* matches = nullptr; // made when they are needed
    Palette* palette = nullptr;
    OutlinePanel* outline = nullptr;
};

} // namespace wren
