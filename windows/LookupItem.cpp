#include "windows/LookupItem.h"

#include "tags/MatchText.h"
#include "vetch/storage/Home.h"

LookupItem::LookupItem(const std::string& name, const std::string& qualifier, char kind, int line, const EntryRef& file,
                       bool showDirectory)
    : BStringItem(""), entry{name, qualifier, file, line, kind}
{
    SetText(MatchText({name, qualifier, file, line, kind}, showDirectory, Home()).c_str());
}

LookupItem::~LookupItem() = default;
