// One line of a .gitignore.
#pragma once

#include <bitset>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace symbols {

// Matches as git does. The time is bounded by the product of the lengths for each "**/" of the pattern, whatever the
// pattern: it may come from a stranger.
class IgnorePattern {
public:
    // Nullopt for a line without a pattern: an empty line or a comment.
    static std::optional<IgnorePattern> Parse(std::string_view line);

    bool IsNegative() const { return isNegative; } // "!": takes back what earlier patterns ignore

    // 'path' is relative to the directory of the pattern's file.
    bool Matches(std::string_view path, bool isDirectory) const;

private:
    using Set = std::bitset<256>;

    enum class Kind : std::uint8_t {
        Character,
        AnyCharacter, // "?": all but "/"
        OneOf,
        Star,           // any characters but "/"
        AnyDirectories, // "**/": none, or some with a "/" behind each
        Everything      // "**" at the end
    };
    struct Part {
        Kind kind;
        unsigned char character = 0;
        std::uint16_t set = 0; // index in 'sets'
    };

    bool ReadParts(std::string_view text);
    bool ReadStars(std::string_view text, size_t& at);
    bool ReadSet(std::string_view text, size_t& at);
    void FindFastForm(std::string_view text);
    bool TakesCharacter(const Part& part, char character) const;
    bool MatchesParts(std::string_view path) const;

    enum class Form : std::uint8_t { Never, Literal, Ending, Parts };

    bool isNegative = false;
    bool directoriesOnly = false;
    bool comparesNames = false; // without a "/": compared with the last part of the path
    Form form = Form::Parts;
    std::string literal; // for the forms Literal and Ending
    std::vector<Part> parts;
    std::vector<Set> sets;
};

} // namespace symbols
