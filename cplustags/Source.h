// A source on its way to ctags.
#pragma once

#include "base/Descriptor.h"
#include "cplustags/Settings.h"
#include "cplustags/Tag.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace cplustags {

// How ctags is to take a source.
enum class Parser { ByName, C, Cplusplus };
inline constexpr size_t kParsers = 3;

struct Source {
    unsigned number = 0;
    std::string path;
    Parser parser = Parser::ByName;
    std::string name;                   // what ctags is given
    base::Descriptor text;              // what it reads there, unless it is the file itself; open for as long as it may
    Tags tags;                          // those that it is not asked for
    std::unique_ptr<char[]> textOfTags; // of which their texts are parts
};

// What a source is, by its name.
enum class Family { Other, Header, CplusplusHeader, ObjectiveC, ObjectiveCplusplus };

// Makes sources of files: Objective-C is read here, and ctags gets the rest of the text. One for each thread.
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

} // namespace cplustags
