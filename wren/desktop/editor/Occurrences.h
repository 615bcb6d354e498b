// The name at the caret, marked wherever it stands in the text.
#pragma once

#include "wren/desktop/editor/MatchMarks.h"

#include <QObject>
#include <QTimer>

#include <string>

namespace wren {

class CodeView;

// After a pause of the caret, so that moving it over a text costs nothing. A keyword, a number, a word of a comment or
// of a string is no name. GUI thread.
class Occurrences : public QObject {
    Q_OBJECT
public:
    explicit Occurrences(CodeView& view); // a child of the view

    void LookNow(); // without the pause

private:
    std::string NameAtCaret() const; // empty when there is none

    CodeView& view;
    MatchMarks& marks;
    QTimer pause;
};

} // namespace wren
