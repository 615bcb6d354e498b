#include "vetch/interface/BListItem.h"

BListItem::BListItem(uint32 level, bool expanded) : level(level), expanded(expanded) {}

BListItem::~BListItem() = default;

BStringItem::BStringItem(const char* text, uint32 level, bool expanded)
    : BListItem(level, expanded), text(text == nullptr ? "" : text)
{
}

BStringItem::~BStringItem() = default;

void BStringItem::SetText(const char* newText)
{
    text = newText == nullptr ? "" : newText;
}
