#include "vetch/interface/BFont.h"

#include "vetch/display/Display.h"

namespace {

const BFont kPlainFont;

} // namespace

const BFont* be_plain_font = &kPlainFont;

void BFont::GetHeight(font_height* height) const
{
    const vetch::FontMetrics metrics = vetch::CurrentDisplay()->Metrics(size);
    *height = {metrics.ascent, metrics.descent, metrics.leading};
}
