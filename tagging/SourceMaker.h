// Makes sources for ctags of files.
#pragma once

#include "tagging/Settings.h"
#include "tagging/ctags/Source.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tagging {

// What a source is, by its name.
enum class Family { Other, Header, CplusplusHeader, ObjectiveC, ObjectiveCplusplus };

// Objective-C is read here, and ctags gets the rest of the text. One for each thread.
class SourceMaker {
public:
    explicit SourceMaker(const Settings& settings); // which must outlive it

    // Nothing when ctags cannot be given the file; then '*error' says why.
    std::optional<Source> Make(unsigned number, const std::string& path, std::string* error);

private:
    bool Read(const std::string& path, std::string_view& text);
    bool TakeObjectiveC(Family family, std::string_view text, Source& source, std::string& rest);

    const Settings& settings;
    std::unique_ptr<char[]> buffer; // of the last file; new ones would be cleared each time
    size_t capacity = 0;
};

} // namespace tagging
