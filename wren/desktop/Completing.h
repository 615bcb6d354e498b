// The editor's own completion: names by what they mean at the caret, beside the plug-in's by tags.
#pragma once

#include "wren/core/Preferences.h"
#include "wren/desktop/CompletionList.h"
#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/symbols/AskedText.h"
#include "wren/desktop/symbols/CompletionQuestions.h"
#include "wren/desktop/symbols/SymbolEngine.h"
#include "wren/symbols/LinePlace.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <optional>
#include <string>

class QKeyEvent;

namespace wren {

// One list at a time: while this one is shown, or is about to come behind an operator, the plug-in does not hear of
// typing. The letters that are typed on narrow the list here; an answer to another word shows nothing. GUI thread.
class Completing : public QObject {
    Q_OBJECT
public:
    struct Parts {
        SymbolEngine& engine;                                       // borrowed
        std::function<std::optional<AskedText>(long offset)> about; // the current text; nullopt for none
        std::function<CodeView*()> view;                            // the current one, or null
        std::function<void(const QString&)> say;                    // in the status line
    };
    explicit Completing(Parts parts);
    ~Completing() override;

    void Use(PreferenceValues::Completion which) { uses = which; }
    // Of the plug-in.
    std::function<bool()> pluginLists;     // whether any list of its is shown
    std::function<bool()> pluginOffers;    // whether it is that of completions
    std::function<void()> pluginCompletes; // by its command, which also takes the marked entry of its list
    std::function<void()> pluginLeaves;    // closes its completions

    bool KeyPressed(CodeView& view, const QKeyEvent& event); // true: it was for the list
    bool Typed(CodeView& view);                              // a key has been applied. true: the plug-in must not list
    bool Asked();                                            // by the command. true: the list comes from here
    void CaretMoved();
    void Close();

    const CompletionList* List() const { return list; } // null when it was never shown

private:
    struct Word {
        QPointer<CodeView> view;
        long start = -1;
        LinePlace place;
        bool isAsked = false; // by the command

        bool IsSame(const Word& other) const { return view == other.view && start == other.start; }
    };
    Word WordAt(CodeView& view) const;
    std::string TypedPart() const;
    bool IsOwn(const LinePlace& place) const;
    bool KeyForPlugin(int key);
    bool IsShown() const { return list != nullptr && list->isVisible(); }
    bool ListsLocalsOnly() const;
    void Ask(const Word& wanted);
    void Heard(const Word& asked, CompletionAnswer heard);
    void Narrow();
    void NothingFits();
    void Take();
    std::string Insertion(const PaletteItem& item, long end) const;

    const Parts parts;
    PreferenceValues::Completion uses = PreferenceValues::Completion::Both;
    Word word;              // that was asked about last
    bool isPending = false; // its answer is to come
    bool isClosed = false;  // by the user, while it is typed
    CompletionAnswer answer;
    QPointer<CompletionList> list; // belongs to its view
};

} // namespace wren
