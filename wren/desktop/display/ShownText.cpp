#include "wren/desktop/display/ShownText.h"

#include "base/Utf8.h"

#include <QTextDocument>

#include <string_view>

namespace wren {

namespace {

QString ShownCharacter(std::string_view character)
{
    if (base::IsStray(character))
        return QChar(QChar::ReplacementCharacter);
    return QString::fromUtf8(character.data(), static_cast<int>(character.size()));
}

} // namespace

// Not by QString::fromUtf8() alone, which may show several damaged bytes as one sign: offsets are counted as well.
QString ShownText(const std::string& bytes)
{
    QString shown;
    for (std::string_view rest = bytes; !rest.empty();) {
        const std::string_view character = base::FirstCharacter(rest);
        shown += ShownCharacter(character);
        rest.remove_prefix(character.size());
    }
    return shown;
}

QString ShownLabel(const std::string& bytes)
{
    return ShownText(bytes).replace('&', "&&").replace('\t', ' ');
}

QString PlainTip(const QString& text)
{
    return Qt::mightBeRichText(text) ? "<span>" + text.toHtmlEscaped() + "</span>" : text;
}

int UnitsBefore(const std::string& bytes, long offset)
{
    int units = 0;
    const std::string_view all = bytes;
    for (size_t at = 0; at < all.size() && static_cast<long>(at) < offset;) {
        const std::string_view character = base::FirstCharacter(all.substr(at));
        units += static_cast<int>(ShownCharacter(character).size());
        at += character.size();
    }
    return units;
}

long BytesBefore(const QString& text, int units)
{
    return static_cast<long>(text.left(units).toUtf8().size());
}

} // namespace wren
