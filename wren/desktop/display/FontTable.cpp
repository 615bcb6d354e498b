#include "wren/desktop/display/FontTable.h"

#include "base/Utf8.h"

#include <QApplication>
#include <QFontMetricsF>

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

namespace wren {

namespace {

constexpr float kPlainSize = 12;
constexpr float kSmallSize = 10; // of the menu on the editor's button

float Width(const QFontMetricsF& metrics, char16_t character)
{
    return static_cast<float>(metrics.horizontalAdvance(QString(QChar(character))));
}

float WholePixels(double length)
{
    return static_cast<float>(std::ceil(length));
}

QFont Scaled(QFont font, float size)
{
    const double scale = size / kPlainSize;
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * scale);
    else
        font.setPixelSize(std::max(1, static_cast<int>(std::lround(font.pixelSize() * scale))));
    return font;
}

// U+0080 to U+00FF have two bytes, of which the first has the two highest bits.
unsigned Latin1(std::string_view character)
{
    const auto lead = static_cast<unsigned char>(character[0]);
    return character.size() == 1 ? lead : (lead & 0x03u) << 6 | (static_cast<unsigned char>(character[1]) & 0x3Fu);
}

bool IsLatin1(std::string_view character)
{
    const auto lead = static_cast<unsigned char>(character[0]);
    return lead < 0x80 || (character.size() == 2 && lead <= 0xC3);
}

} // namespace

FontTable::FontTable()
{
    Use(FontOf(kPlainSize));
}

void FontTable::Use(const QFont& font)
{
    listFont = font;
    auto measured = std::make_shared<const Sheets>(Sheets{Measure(font, kPlainSize), Measure(font, kSmallSize)});
    const std::lock_guard lock(mutex);
    sheets = std::move(measured);
}

float FontTable::StringWidth(const std::string& text, float size) const
{
    const std::shared_ptr<const Sheets> current = Current();
    const Sheet& sheet = Nearest(*current, size);
    return WidthOf(sheet, text) * size / sheet.size;
}

vetch::FontMetrics FontTable::Metrics(float size) const
{
    const std::shared_ptr<const Sheets> current = Current();
    const Sheet& sheet = Nearest(*current, size);
    if (sheet.size == size)
        return sheet.metrics;
    const float scale = size / sheet.size;
    const vetch::FontMetrics& metrics = sheet.metrics;
    return {WholePixels(metrics.ascent * scale), WholePixels(metrics.descent * scale),
            WholePixels(metrics.leading * scale)};
}

float FontTable::LineHeight(float size) const
{
    const vetch::FontMetrics metrics = Metrics(size);
    return metrics.ascent + metrics.descent + metrics.leading + 1;
}

QFont FontTable::ListFont(float size) const
{
    return Scaled(listFont, size);
}

QFont FontTable::FontOf(float size)
{
    return Scaled(QApplication::font(), size);
}

FontTable::Sheet FontTable::Measure(const QFont& plain, float size)
{
    const QFontMetricsF metrics(Scaled(plain, size));
    Sheet sheet;
    sheet.size = size;
    for (size_t character = 0; character < sheet.widths.size(); ++character)
        sheet.widths[character] = Width(metrics, static_cast<char16_t>(character));
    sheet.replacement = Width(metrics, QChar::ReplacementCharacter);
    // Signs of other scripts are as wide as they are high, and fonts that stand in for the desktop's may be larger.
    sheet.other = std::max({static_cast<float>(metrics.height()) * 1.25f, sheet.widths['W'], sheet.widths['M']});
    sheet.metrics = {WholePixels(metrics.ascent()), WholePixels(metrics.descent()),
                     WholePixels(std::max(0.0, metrics.leading()))};
    return sheet;
}

float FontTable::WidthOf(const Sheet& sheet, const std::string& text)
{
    float width = 0;
    for (std::string_view rest = text; !rest.empty();) {
        const std::string_view character = base::FirstCharacter(rest);
        if (base::IsStray(character))
            width += sheet.replacement;
        else
            width += IsLatin1(character) ? sheet.widths[Latin1(character)] : sheet.other;
        rest.remove_prefix(character.size());
    }
    return width;
}

std::shared_ptr<const FontTable::Sheets> FontTable::Current() const
{
    const std::lock_guard lock(mutex);
    return sheets;
}

const FontTable::Sheet& FontTable::Nearest(const Sheets& sheets, float size)
{
    return *std::ranges::min_element(sheets, {}, [size](const Sheet& sheet) { return std::abs(sheet.size - size); });
}

} // namespace wren
