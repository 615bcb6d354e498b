// One text with its tokens and symbols: what several questions about the same text share.
#pragma once

#include "resolve/KnownFiles.h"
#include "resolve/ParsedTextPointer.h"
#include "resolve/Tokens.h"
#include "tagging/SourceParser.h"

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace resolve {

// Immutable; any thread. Holds a copy of the text: everything in it refers to that copy.
struct ParsedText {
    // 'language' as for the parser.
    ParsedText(std::string path, std::string_view text, tagging::TextParser& parser,
               std::optional<tagging::Language> language = std::nullopt);
    ParsedText(const ParsedText&) = delete;
    ParsedText& operator=(const ParsedText&) = delete;

    bool IsObjectiveC() const;
    bool IsCplusplus() const;
    bool IsC() const { return parsed->language == tagging::Language::C; }

    const std::string path;
    const std::optional<tagging::Language> givenLanguage;
    const std::string text;
    const Tokens tokens;
    std::unique_ptr<const tagging::ParsedSource> parsed; // without symbols when the parser failed
};

// The texts of the last questions. Any thread.
class ParsedTexts {
public:
    // The parser must outlive the call. Parses when the text is not among the last ones.
    ParsedTextPointer Get(const std::string& path, std::string_view text, tagging::TextParser& parser,
                          std::optional<tagging::Language> language = std::nullopt);

    KnownFiles& Files() { return files; } // for questions about these texts, and any others

private:
    static constexpr size_t kKept = 4;

    std::mutex mutex;
    std::vector<ParsedTextPointer> last; // the latest at the end
    KnownFiles files;
};

} // namespace resolve
