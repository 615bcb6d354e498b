// Turns files into sources for ctags.
#pragma once

#include "tagging/FileReader.h"
#include "tagging/Settings.h"
#include "tagging/ctags/Source.h"
#include "tagsfile/Tag.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tagging {

// The family of a source, according to its name.
enum class Family { Other, Header, CplusplusHeader, ObjectiveC, ObjectiveCplusplus };

// Tags that were found here, not by ctags.
struct FoundTags {
    tagsfile::Tags tags;
    std::unique_ptr<char[]> text; // contains their texts
};

// Reads the Objective-C itself; ctags gets the rest of the text. One for each thread.
class SourceMaker {
public:
    explicit SourceMaker(const Settings& settings); // must outlive it

    // Nullopt, with '*error', when ctags cannot read the file.
    std::optional<Source> Make(unsigned number, const std::string& path, FoundTags& found, std::string* error);

private:
    bool TakeObjectiveC(Family family, std::string_view text, FoundTags& found, std::string& rest);

    const Settings& settings;
    FileReader reader;
};

} // namespace tagging
