// The bar below a text that finds and replaces in it.
#pragma once

#include "wren/desktop/editor/CodeView.h"

#include <QPointer>
#include <QWidget>

#include <optional>

class QHBoxLayout;
class QLabel;
class QLineEdit;
class QToolButton;

namespace wren {

// Hidden until it is opened. What is typed is found at once, from where the caret was. Enter finds the next match, and
// replaces the one before where it is said with what; Shift-Enter finds the one before; Escape closes the bar and gives
// the keyboard back to the text. GUI thread.
class FindBar : public QWidget {
    Q_OBJECT
public:
    explicit FindBar(QWidget* parent = nullptr);

    void SetView(CodeView* view); // borrowed, may be deleted at any time; null: finds nothing

    // Takes the keyboard. What is selected within a line is what is looked for, unless nothing is.
    void Open();
    void Close();

    void Next() { FindIn(false); }
    void Previous() { FindIn(true); }
    void Replace();
    void ReplaceAll();

    TextSearch Wanted() const;
    QString Message() const; // how many there are, or why none was found

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QWidget* MakeFindRow();
    QWidget* MakeReplaceRow();
    QToolButton* AddToggle(QHBoxLayout& row, const char* name, const QString& label, const QString& tip);
    void AddButton(QHBoxLayout& row, const char* name, const QString& label, void (FindBar::*pressed)());

    bool CanFind(); // and says why not
    void FindIn(bool backwards);
    void FindTyped();
    void TellCount();
    void Tell(const QString& message, bool wrong);

    QPointer<CodeView> view;
    long began = 0;                 // where what is being typed is looked for
    std::optional<Selection> shown; // what has been found of it
    QLineEdit* find;
    QLineEdit* with;
    QToolButton* expression;
    QToolButton* matchCase;
    QToolButton* wholeWords;
    QLabel* message;
};

} // namespace wren
