// A text on paper, or in a PDF file.
#pragma once

#include <Qsci/qsciprinter.h>

namespace wren {

class CodeView;

// Prints with numbers of lines, in the colours of the light look, and wraps lines that are too long for it.
// Each page begins with the name of the text and the number of the page. The user's choices (printer, file, paper) are
// made in it before, as in any QPrinter. GUI thread.
class TextPrinter : public QsciPrinter {
public:
    explicit TextPrinter(const QString& name);

    // All of the text, or the lines of the selection when that was chosen. False when the printer or the file fails.
    // The view is as before.
    bool Print(CodeView& view);

    void formatPage(QPainter& painter, bool drawing, QRect& area, int page) override;

private:
    const QString name;
};

} // namespace wren
