// The scopes around the caret, in a line above the text: "namespace > class > function".
#pragma once

#include "wren/desktop/symbols/PaletteItem.h"

#include <QFont>
#include <QWidget>

#include <cstddef>
#include <vector>

class QHBoxLayout;
class QToolButton;

namespace wren {

// A click on a scope asks for what stands beside it, a click on the last sign for what stands in the innermost scope.
// GUI thread.
class ScopeBar : public QWidget {
    Q_OBJECT
public:
    explicit ScopeBar(QWidget* parent);

    void SetLook(const QFont& font, const QColor& ink, const QColor& paper);
    void Show(std::vector<PaletteItem> symbols); // those of the text as it is now, in its order
    void FollowCaret(long line);                 // from 1

    void OpenLast(); // what stands beside the innermost scope, as if it were clicked

    QStringList Path() const; // as shown

signals:
    void Asked(const std::vector<PaletteItem>& siblings);

private:
    void Fill();
    QToolButton* Add(const QString& text, const std::vector<size_t>& asked);
    void Append(QWidget* part);
    void Ask(const std::vector<size_t>& asked);

    std::vector<PaletteItem> symbols;
    std::vector<size_t> scopes; // that are shown
    long caret = 0;             // its line
    QHBoxLayout* row;
    std::vector<QWidget*> parts; // the buttons, and the signs between them
    std::vector<QToolButton*> buttons;
};

} // namespace wren
