// What names say where the user looks at them: their meaning under the mouse or at the caret, and what a call takes
// while its arguments are typed.
#pragma once

#include "wren/desktop/editor/NameCard.h"
#include "wren/desktop/editor/PointedName.h"
#include "wren/desktop/symbols/AskedText.h"
#include "wren/desktop/symbols/SymbolEngine.h"
#include "wren/symbols/CallHelp.h"
#include "wren/symbols/MeaningCard.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <optional>

namespace wren {

class CodeView;

// Answers come later; one that the user no longer waits for shows nothing. GUI thread.
class NameHelp : public QObject {
    Q_OBJECT
public:
    struct Parts {
        SymbolEngine& engine;                                       // borrowed
        std::function<std::optional<AskedText>(long offset)> about; // the current text; nullopt for none
        std::function<CodeView*()> view;                            // the current one, or null
        std::function<void(const QString&)> say;                    // in the status line
    };
    explicit NameHelp(Parts parts);
    ~NameHelp() override;

    PointedName& Pointed() { return pointed; }

    void ShowMeaning(); // of the name at the caret
    void ShowCall();    // that the caret is in
    void TextChanged(); // by a key: "(" and "," ask what the call takes
    void CaretMoved();
    void Raised(); // another text is the current one

    const NameCard* Meaning() const { return meaning; } // null when it was never shown
    const NameCard* Call() const { return call; }

private:
    void AskMeaning(long offset, bool isByKey);
    void AskCall(bool isByKey);
    NameCard* CardIn(CodeView& view, QPointer<NameCard>& card, const QString& name);
    void Close();

    const Parts parts;
    PointedName pointed;
    QPointer<NameCard> meaning; // these belong to their view
    QPointer<NameCard> call;
};

} // namespace wren
