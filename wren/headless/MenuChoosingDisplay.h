// The headless display, whose menus can be answered by a label as well as by an index.
#pragma once

#include "vetch/display/HeadlessDisplay.h"

#include <optional>
#include <string>
#include <variant>

namespace wren {

using MenuChoice = std::variant<long, std::string>; // a row's index, or its label

class MenuChoosingDisplay : public vetch::HeadlessDisplay {
public:
    using HeadlessDisplay::HeadlessDisplay;

    // The answer to the next menu; nullopt dismisses it. A row that is missing or disabled cannot be chosen: the menu
    // is dismissed.
    void ChooseNext(std::optional<MenuChoice> choice) { next = std::move(choice); }

    std::optional<long> RunMenu(const vetch::MenuDescription& menu) override;

private:
    std::optional<MenuChoice> next; // document thread
};

} // namespace wren
