// The bar below a text that finds and replaces in it.
#pragma once

#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/editor/MatchMarks.h"

#include <QPointer>
#include <QWidget>

#include <optional>

class QHBoxLayout;
class QLabel;
class QLineEdit;
class QToolButton;

namespace wren {

// Hidden until it is opened. Typing finds at once, from the place where the caret was. Enter finds the next match; in
// the replacement's field it first replaces the match before. Shift-Enter finds the match before. Escape closes the bar
// and gives the keyboard back to the text. While the bar is open all matches are marked. GUI thread.
class FindBar : public QWidget {
    Q_OBJECT
public:
    explicit FindBar(QWidget* parent = nullptr);

    void SetView(CodeView* view); // borrowed, may be deleted at any time; null: finds nothing

    // Takes the keyboard. A selection within a line becomes the text to find.
    void Open();
    void Close();

    void Next() { FindIn(false); }
    void Previous() { FindIn(true); }
    void Replace();
    void ReplaceAll();

    TextSearch Wanted() const;
    QString Message() const; // which match of how many is selected, or why there is none

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QWidget* MakeFindRow();
    QWidget* MakeReplaceRow();
    QToolButton* AddToggle(QHBoxLayout& row, const char* name, const QString& label, const QString& tip);
    void AddButton(QHBoxLayout& row, const char* name, const QString& label, void (FindBar::*pressed)());

    bool CanFind(); // else shows why not
    void FindIn(bool backwards);
    void FindTyped();
    void TellCount();
    QString CountMessage() const;
    void CountChanged();
    void EndMarks();
    void Tell(const QString& message, bool wrong);

    QPointer<CodeView> view;
    QPointer<MatchMarks> marks; // of the view; while the bar is open
    bool countIsTold = false;
    long began = 0;                 // the search for the typed text starts here
    std::optional<Selection> shown; // the match of the typed text
    QLineEdit* find;
    QLineEdit* with;
    QToolButton* expression;
    QToolButton* matchCase;
    QToolButton* wholeWords;
    QLabel* message;
};

} // namespace wren
