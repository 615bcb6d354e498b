// Parses sources: many files at a time, or one text.
#pragma once

#include "base/CancelToken.h"
#include "base/Result.h"
#include "tagging/ChangedFunction.h"
#include "tagging/FileStamp.h"
#include "tagging/Observer.h"
#include "tagging/ParsedSource.h"
#include "tagging/Settings.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tagging {

// Parses files with several ctags processes at a time. A file that crashes ctags or takes too long yields a source
// without symbols, but with its includes and names; the observer is told. Any other failure of ctags ends the work.
class SourceParser {
public:
    // Called on several threads at once, in any order, once for each file. A file that cannot be read has no 'source'.
    // The stamp is the file's from before it was read. If the file changed until ctags had read it, too, 'source' has
    // the hash of no content: neither stamp nor hash lets anybody believe that this is the file.
    using Sink = std::function<void(size_t number, const FileStamp& stamp, std::unique_ptr<ParsedSource> source)>;

    // All must outlive it. Cancelled work ends without a failure. The program must ignore SIGPIPE.
    SourceParser(const Settings& settings, Observer& observer, const base::CancelToken& cancel, Sink sink);
    ~SourceParser();

    void Add(const std::string& path); // absolute; numbers count from 0 in this order. Does not block
    bool GoesOn();                     // shows the progress; false when adding more is useless
    base::Result<void> Finish();       // waits for the end; the error when ctags failed as a whole

private:
    struct Contents;
    std::unique_ptr<Contents> contents;
};

// Parses texts with ctags processes kept at hand. Thread-safe; two texts at a time. The program must ignore SIGPIPE.
class TextParser {
public:
    enum class Locals { No, Yes }; // local variables, parameters, labels; not those of Objective-C's methods

    explicit TextParser(const Settings& settings);
    ~TextParser();

    void Stop(); // soon, and for good: whoever waits for ctags has an error. Any thread

    // 'path' is the file that the text belongs to, for its language; it need not exist. A crash or a hang of ctags is
    // an error, and leaves the parser usable. After a hang, texts of that path that differ little fail at once for a
    // while. A 'language' counts more than the path, except for a header "x.h": these may be of any language, so the
    // text decides, and editors do not know better.
    base::Result<std::unique_ptr<ParsedSource>> Parse(const std::string& path, std::string_view text, Locals locals,
                                                      std::optional<Language> language = std::nullopt);

    // The same, without locals, and sooner when the text differs from an earlier one in the body of one function. That
    // has the same path and language.
    base::Result<std::unique_ptr<ParsedSource>> ParseChanged(const std::string& path, std::string_view text,
                                                             const EarlierText& before,
                                                             std::optional<Language> language = std::nullopt);

private:
    struct Contents;
    std::unique_ptr<Contents> contents;
};

} // namespace tagging
