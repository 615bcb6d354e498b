// Printing a text, into a PDF file.
#include "wren/desktop/editor/TextPrinter.h"

#include "wren/desktop/editor/CodeView.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace wren {

namespace {

std::string Lines(int count)
{
    std::string lines;
    for (int line = 0; line < count; line++)
        lines += "int count" + std::to_string(line) + "; // a line\n";
    return lines;
}

class Printed : public testing::Test {
protected:
    // Pages of the file; 0 when it is not a PDF file.
    qsizetype PagesOf(const QString& path)
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly) || file.peek(5) != "%PDF-")
            return 0;
        return QString::fromLatin1(file.readAll()).count(QRegularExpression("/Type\\s*/Page\\b"));
    }
    qsizetype Print(CodeView& view, QPrinter::PrintRange range = QPrinter::AllPages)
    {
        TextPrinter printer("a.c");
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(directory.filePath("out.pdf"));
        printer.setPageSize(QPageSize(QPageSize::A4));
        printer.setPrintRange(range);
        EXPECT_TRUE(printer.Print(view));
        return PagesOf(directory.filePath("out.pdf"));
    }

    QTemporaryDir directory;
};

} // namespace

TEST_F(Printed, AShortTextIsOnePage)
{
    CodeView view;
    view.SetBytes(Lines(3));
    EXPECT_EQ(Print(view), 1);
}

TEST_F(Printed, ALongTextHasMorePages)
{
    CodeView view;
    view.SetBytes(Lines(400));
    const qsizetype pages = Print(view);
    EXPECT_GT(pages, 3);
    EXPECT_LT(pages, 40);
}

TEST_F(Printed, TheSelectionIsPrintedAlone)
{
    CodeView view;
    view.SetBytes(Lines(400));
    ViewText(view).Select(0, 40);
    EXPECT_EQ(Print(view, QPrinter::Selection), 1);
}

TEST_F(Printed, ADarkViewStaysDarkAndUnmodified)
{
    CodeView view;
    EditorLook look = view.Look();
    look.dark = true;
    view.SetLook(look);
    view.SetBytes(Lines(3));
    view.GoTo(5);
    EXPECT_EQ(Print(view), 1);
    EXPECT_TRUE(view.Look().dark);
    EXPECT_EQ(view.Bytes(), Lines(3));
    EXPECT_EQ(view.Caret(), 5);
    EXPECT_FALSE(view.IsModified());
}

TEST_F(Printed, AFileThatCannotBeMadeIsReported)
{
    CodeView view;
    view.SetBytes(Lines(3));
    TextPrinter printer("a.c");
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(directory.filePath("none/out.pdf"));
    EXPECT_FALSE(printer.Print(view));
}

} // namespace wren
