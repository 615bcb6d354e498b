#include "wren/desktop/editor/TextPrinter.h"

#include "wren/desktop/editor/CodeView.h"

#include <QPainter>

namespace wren {

namespace {

constexpr int kHeaderSize = 9; // points
constexpr double kHeaderLines = 1.8;

struct LineRange {
    int first = -1; // of the text
    int last = -1;
};

// A line counts when a character of it is selected.
LineRange RangeOfSelection(const ViewText& text)
{
    const Selection selected = text.Selected();
    if (selected.start == selected.end)
        return {};
    const auto lineAt = [&](long offset) {
        return static_cast<int>(text.Send(QsciScintilla::SCI_LINEFROMPOSITION, offset));
    };
    return {lineAt(selected.start), lineAt(selected.end - 1)};
}

} // namespace

TextPrinter::TextPrinter(const QString& name) : QsciPrinter(QPrinter::HighResolution), name(name)
{
    setDocName(name);
    setWrapMode(QsciScintilla::WrapCharacter);
}

// The letters of a dark look are too light for paper.
bool TextPrinter::Print(CodeView& view)
{
    QPainter painter;
    if (!painter.begin(this))
        return false;
    const ViewText text(view);
    const EditorLook look = view.Look();
    EditorLook onPaper = look;
    onPaper.dark = false;
    view.setUpdatesEnabled(false);
    view.SetLook(onPaper);
    text.Send(QsciScintilla::SCI_SETPRINTCOLOURMODE, QsciScintilla::SC_PRINT_COLOURONWHITE);
    const LineRange lines = QPrinter::printRange() == QPrinter::Selection ? RangeOfSelection(text) : LineRange();
    const bool isPrinted = QsciPrinter::printRange(&view, painter, lines.first, lines.last) != 0;
    view.SetLook(look);
    view.setUpdatesEnabled(true);
    return painter.end() && isPrinted && printerState() != QPrinter::Error;
}

// Called for each page twice: first to learn how much room is left for the text.
void TextPrinter::formatPage(QPainter& painter, bool drawing, QRect& area, int page)
{
    const QFont font("DejaVu Sans", kHeaderSize);
    const QFontMetrics metrics(font, this);
    const int height = static_cast<int>(metrics.height() * kHeaderLines);
    const QRect header(area.left(), area.top(), area.width(), metrics.height());
    area.setTop(area.top() + height);
    if (!drawing)
        return;
    const QString number = QObject::tr("Page %1").arg(page);
    const int room = header.width() - metrics.horizontalAdvance(number) - metrics.averageCharWidth() * 2;
    painter.save();
    painter.setFont(font);
    painter.setPen(Qt::black);
    painter.drawText(header, Qt::AlignLeft | Qt::AlignTop | Qt::TextSingleLine,
                     metrics.elidedText(name, Qt::ElideMiddle, room));
    painter.drawText(header, Qt::AlignRight | Qt::AlignTop | Qt::TextSingleLine, number);
    painter.restore();
}

} // namespace wren
