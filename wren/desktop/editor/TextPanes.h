// The view of a text, and beside or below it another part of the same text when the user wants to see two.
//
// Commands, the line of status, the scopes and the plug-in know one view of a text, with one caret. So the other part
// never takes the keyboard: at a click in it, both exchange their places, carets and folds, and the click is the
// view's.
#pragma once

#include <QSplitter>

class QMouseEvent;

namespace wren {

class CodeView;

enum class Split { None, Beside, Below };

// Owns both. GUI thread.
class TextPanes : public QSplitter {
    Q_OBJECT
public:
    explicit TextPanes(CodeView* adopted);
    ~TextPanes() override;

    CodeView* View() const { return view; }   // always the same one
    CodeView* Other() const { return other; } // null while there is none; never edited through

    void SetSplit(Split split); // the other part begins where the view is
    Split IsSplit() const;
    void Exchange(); // does nothing while there is no other part

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool Forward(QEvent& event);
    void ForwardMouse(const QMouseEvent& event);
    void FollowView();

    CodeView* const view;
    CodeView* other = nullptr;
    bool pressed = false; // in the other part: the mouse is the view's until it is released
};

} // namespace wren
