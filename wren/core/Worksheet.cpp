#include "wren/core/Worksheet.h"

#include "vetch/storage/BEntry.h"
#include "vetch/storage/BPath.h"
#include "vetch/storage/Home.h"
#include "vetch/support/ShellEscape.h"
#include "wren/core/Documents.h"

namespace wren {

namespace {

// Each text is one or more commands and may lack a line break. It starts on a new line, or two commands would run as
// one.
std::string OnItsOwnLine(const std::string& text, bool lineIsOpen)
{
    return lineIsOpen && !text.empty() && text.front() != '\n' ? "\n" + text : text;
}

void AppendTo(Document& document, const std::string& text)
{
    const long end = document.Length();
    document.Insert(end, OnItsOwnLine(text, end > 0 && document.CharAt(end - 1) != '\n'));
}

} // namespace

void Worksheet::Append(const std::string& text)
{
    if (Document* document = documents.FindWorksheet())
        AppendTo(*document, text);
    else
        waiting += OnItsOwnLine(text, !waiting.empty() && waiting.back() != '\n');
}

std::string Worksheet::Text() const
{
    const Document* document = documents.FindWorksheet();
    return document == nullptr ? waiting : document->Text();
}

std::string Worksheet::Directory() const
{
    if (!directory.empty())
        return directory;
    const Document* document = documents.FindWorksheet();
    if (document == nullptr || document->Path().empty())
        return BPath(Home().c_str()).Path();
    BEntry parent;
    BEntry(&document->Ref()).GetParent(&parent);
    return BPath(&parent).Path();
}

void Worksheet::Opened(Document& document)
{
    AppendTo(document, waiting);
    waiting.clear();
}

std::string ExpandVariables(const std::string& text, const Worksheet& worksheet)
{
    std::string expanded = text;
    ReplaceAll(expanded, "$WORKSHEET_DIR", worksheet.Directory().c_str());
    return expanded;
}

} // namespace wren
