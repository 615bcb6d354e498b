// The editor's texts, as questions about names need them.
#pragma once

#include "wren/desktop/state/QuietTimer.h"
#include "wren/desktop/symbols/AskedText.h"

#include <QObject>

#include <optional>
#include <set>
#include <string>

namespace wren {

class CodeView;
class Document;
class DocumentActions;
class Host;
class MainWindow;
class SymbolEngine;

// Gives the engine the texts that differ from their files, in a pause of typing and before each question. GUI thread.
class AskedTexts : public QObject {
    Q_OBJECT
public:
    AskedTexts(Host& host, MainWindow& window, DocumentActions& documents, SymbolEngine& engine); // all borrowed

    void Changed(long document);
    void Feed(); // the engine, now
    bool IsFed() const { return changed.empty(); }

    struct Asked { // about the current text; without a view there is none, or it is too long
        CodeView* view = nullptr;
        AskedText text;
        std::string name; // the word at the caret
    };
    Asked AboutCurrent();
    std::optional<AskedText> AboutName(long offset); // in the current text; absent unless it is code
    std::string CurrentPath() const;                 // of the text; "" for none

    // A text without a file has a path that is not absolute.
    static std::string PathOf(const Document& document);

signals:
    void Settled(); // what was typed has been fed

private:
    Host& host;
    MainWindow& window;
    SymbolEngine& engine;
    std::set<long> changed; // documents whose text the engine does not know yet
    QuietTimer pause;
};

} // namespace wren
