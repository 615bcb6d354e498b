#include "wren/headless/MenuChoosingDisplay.h"

#include <algorithm>
#include <utility>

namespace wren {

namespace {

std::optional<long> RowOf(const vetch::MenuDescription& menu, const std::optional<MenuChoice>& choice)
{
    if (!choice)
        return std::nullopt;
    const long count = static_cast<long>(menu.rows.size());
    long row = count;
    if (const long* index = std::get_if<long>(&*choice)) {
        row = *index;
    } else {
        const auto found = std::find_if(menu.rows.begin(), menu.rows.end(), [&](const vetch::MenuRow& each) {
            return each.label == std::get<std::string>(*choice);
        });
        row = found - menu.rows.begin();
    }
    const bool choosable = row >= 0 && row < count && menu.rows[row].enabled && !menu.rows[row].label.empty();
    return choosable ? std::optional(row) : std::nullopt;
}

} // namespace

std::optional<long> MenuChoosingDisplay::RunMenu(const vetch::MenuDescription& menu)
{
    AnswerMenu(RowOf(menu, std::exchange(next, std::nullopt)));
    return HeadlessDisplay::RunMenu(menu);
}

} // namespace wren
