// The menu behind the state of the index in the status line.
#pragma once

#include <QMenu>

#include <functional>
#include <string>

class QAction;

namespace wren {

class SymbolActions;

// Says what the index does, and which tags files serve the current text. GUI thread.
class IndexMenu : public QMenu {
    Q_OBJECT
public:
    // Borrows the symbols and the actions, which it shows. 'current' is the path of the current text, "" for none.
    IndexMenu(SymbolActions& symbols, std::function<std::string()> current, QAction* refresh, QAction* stop);

    void Fill(); // with how things are now; each opening does

private:
    QString State() const;
    void AddLine(const QString& text);

    SymbolActions& symbols;
    const std::function<std::string()> current;
    QAction* refresh;
    QAction* stop;
};

// The tags files that a lookup from a text there reads, in their order; "" for none of a sort. The nearest entry called
// "tags" at or above the text counts, whatever it is.
struct TextTags {
    std::string project;
    std::string system;
};
TextTags TagsServing(const std::string& path);

} // namespace wren
