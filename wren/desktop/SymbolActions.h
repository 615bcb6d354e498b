// Going to what a name means, and listing where it is used.
#pragma once

#include "wren/desktop/AskedTexts.h"
#include "wren/desktop/Completing.h"
#include "wren/desktop/Landing.h"
#include "wren/desktop/NameHelp.h"
#include "wren/desktop/OutlineActions.h"
#include "wren/desktop/PaletteActions.h"
#include "wren/desktop/symbols/MatchesPanel.h"
#include "wren/desktop/symbols/PlaceQuestions.h"
#include "wren/desktop/symbols/SymbolEngine.h"

#include <QObject>

#include <functional>
#include <string>
#include <vector>

namespace wren {

class CodeView;
class DocumentActions;
class Host;
class MainWindow;
class PlaceActions;

// Owns the engine, and what asks it about the text: help, completion, palette and outline. Answers come later; what the
// user does meanwhile counts more. GUI thread.
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
    void GoToOtherHalf(); // from a source to its header, and back
    // Lists what 'find' finds in the panel of matches, instead of what was listed before. It runs on a thread of the
    // engine, hands over parts as they come, and returns whether there are more.
    using PartSink = std::function<void(std::vector<FoundPlace> part)>;
    void ListPlaces(const QString& title, std::function<bool(const Question&, const PartSink&)> find);
    void GoToClicked(CodeView& view, long offset); // to the definition of the name there
    void Step(bool backwards);                     // to the next place of the list; beeps at its end

    void RefreshIndex(); // of the current text's project
    void StopIndexing();

    void TextChanged(long document);
    void Raised(); // another text is the current one
    void CaretMoved();
    void TakeNews();

    bool IsIdle() const; // no answer is to come
    SymbolEngine& Engine() { return engine; }
    MatchesPanel& Matches();
    Landing& TheLanding() { return landing; }
    PaletteActions& Palettes() { return palettes; }
    OutlineActions& Outlines() { return outlines; }
    NameHelp& Help() { return help; }
    Completing& Completion() { return completing; }

private:
    void Heard(const FoundPlaces& places, Wanted wanted, const std::string& name);
    void SayNotFound(Wanted wanted, const std::string& name);
    void List(const FoundPlaces& places, Wanted wanted);
    void Say(const QString& text);
    CaretPlace AtCaret() const;

    const Parts parts;
    SymbolEngine engine;
    size_t updates = 0; // of indexes, that the palette has seen
    AskedTexts texts;
    Landing landing;
    NameHelp help;
    Completing completing;
    PaletteActions palettes;
    OutlineActions outlines;
    MatchesPanel* matches = nullptr; // made when it is needed; owned by the window
};

} // namespace wren
