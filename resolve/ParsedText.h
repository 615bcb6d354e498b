// One text with its tokens and symbols: what several questions about the same text share.
#pragma once

#include "base/Result.h"
#include "resolve/KnownFiles.h"
#include "resolve/ParsedTextPointer.h"
#include "resolve/Tokens.h"
#include "tagging/SourceParser.h"

#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace resolve {

// Immutable; any thread. Holds a copy of the text: everything in it refers to that copy.
struct ParsedText {
    // 'language' as for the parser. 'before' is an earlier text of the same path and language, or null.
    ParsedText(std::string path, std::string_view text, tagging::TextParser& parser,
               std::optional<tagging::Language> language = std::nullopt, const ParsedText* before = nullptr);
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
    std::optional<base::Error> problem;                  // why it failed
};

// The texts of the last questions. Any thread.
class ParsedTexts {
public:
    // The parser must outlive the call. Parses when the text is not among the last ones; who asks for a text that
    // another thread is parsing waits for that.
    ParsedTextPointer Get(const std::string& path, std::string_view text, tagging::TextParser& parser,
                          std::optional<tagging::Language> language = std::nullopt);

    KnownFiles& Files() { return files; } // for questions about these texts, and any others

private:
    static constexpr size_t kMostBytes = size_t(2) << 20; // of texts; tokens take some twenty times as much
    static constexpr size_t kMostTexts = 32;

    struct Kept {
        std::string path;
        std::optional<tagging::Language> language;
        std::string text;                           // until it is parsed
        std::shared_future<ParsedTextPointer> made; // null when there was no memory for it
        ParsedTextPointer done;                     // null until it is parsed
        size_t number = 0;

        std::string_view Text() const { return done != nullptr ? std::string_view(done->text) : text; }
    };

    std::shared_future<ParsedTextPointer> Find(const std::string& path, std::string_view text,
                                               std::optional<tagging::Language> language);
    ParsedTextPointer Before(const std::string& path, std::optional<tagging::Language> language) const;
    void Keep(size_t number, const ParsedTextPointer& made);
    void DropOldest();

    std::mutex mutex;       // guards the members below, but for 'files'
    std::vector<Kept> last; // the latest at the end; at most one parsed text for each path
    size_t numbers = 0;
    KnownFiles files;
};

} // namespace resolve
