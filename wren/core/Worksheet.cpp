#include "wren/core/Worksheet.h"

#include "vetch/storage/BEntry.h"
#include "vetch/storage/BPath.h"
#include "vetch/storage/Home.h"
#include "vetch/support/Strings.h"
#include "wren/core/Documents.h"

namespace wren {

namespace {

bool EndsInALine(const std::string& text)
{
    return !text.empty() && text.back() != '\n';
}

bool EndsInALine(const Document& document)
{
    return document.Length() > 0 && document.CharAt(document.Length() - 1) != '\n';
}

void AppendTo(Document& document, const std::string& text)
{
    if (!text.empty())
        document.Insert(document.Length(), EndsInALine(document) ? "\n" + text : text);
}

} // namespace

// Each text is a command, or several, and whoever adds it need not end it with a line break: it starts a line of its own,
// or two commands would run as one.
void Worksheet::Append(const std::string& text)
{
    if (Document* document = documents.FindWorksheet())
        AppendTo(*document, text);
    else if (!text.empty())
        waiting += EndsInALine(waiting) ? "\n" + text : text;
}

std::string Worksheet::Text() const
{
    const Document* document = documents.FindWorksheet();
    return document == nullptr ? waiting : document->Text();
}

std::string Worksheet::Directory() const
{
    const Document* document = documents.FindWorksheet();
    if (document == nullptr || document->Path().empty())
        return BPath(Home().c_str()).Path();
    BEntry directory;
    BEntry(&document->Ref()).GetParent(&directory);
    return BPath(&directory).Path();
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
