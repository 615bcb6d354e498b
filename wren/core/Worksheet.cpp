#include "wren/core/Worksheet.h"

#include "vetch/storage/BEntry.h"
#include "vetch/storage/BPath.h"
#include "vetch/storage/Home.h"
#include "vetch/support/Strings.h"
#include "wren/core/Documents.h"

namespace wren {

void Worksheet::Append(const std::string& text)
{
    if (Document* document = documents.FindWorksheet())
        document->Insert(document->Length(), text);
    else
        waiting += text;
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
    document.Insert(document.Length(), waiting);
    waiting.clear();
}

std::string ExpandVariables(const std::string& text, const Worksheet& worksheet)
{
    std::string expanded = text;
    ReplaceAll(expanded, "$WORKSHEET_DIR", worksheet.Directory().c_str());
    return expanded;
}

} // namespace wren
