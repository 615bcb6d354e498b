// Turns files into sources for ctags.
#pragma once

#include "tagging/Settings.h"
#include "tagging/ctags/Source.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tagging {

// The family of a source, according to its name.
enum class Family { Other, Header, CplusplusHeader, ObjectiveC, ObjectiveCplusplus };

// Reads the Objective-C itself; ctags gets the rest of the text. One for each thread.
class SourceMaker {
public:
    explicit SourceMaker(const Settings& settings); // must outlive it

    // Nullopt, with '*error', when ctags cannot read the file.
    std::optional<Source> Make(unsigned number, const std::string& path, std::string* error);

private:
    bool Read(const std::string& path, std::string_view& text);
    bool TakeObjectiveC(Family family, std::string_view text, Source& source, std::string& rest);

    const Settings& settings;
    std::unique_ptr<char[]> buffer; // of the last file; a new one would be cleared each time
    size_t capacity = 0;
};

} // namespace tagging
