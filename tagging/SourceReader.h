// Reads everything of a source but what ctags finds.
#pragma once

#include "tagging/CplusplusRepair.h"
#include "tagging/ParsedSource.h"
#include "tagging/Settings.h"
#include "tagging/ctags/Source.h"
#include "tagging/tokens/Facts.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tagging {

// A source on its way through ctags.
struct HalfParsed {
    std::unique_ptr<ParsedSource> source; // without what ctags finds
    Parser parser = Parser::Cplusplus;
    std::optional<std::string> rest;      // the text for ctags; none for the text itself
    std::optional<RepairedText> repaired; // another one, in which ctags finds more

    // What "using" declarations name in full: ctags reports the last part.
    struct Using {
        std::string what;
        unsigned line;
    };
    std::vector<Using> usings;
    std::vector<Symbol> macros; // all of the source: ctags leaves out some branches of conditions
    bool isHeader = false;

    // Adds the symbols in ctags' output; 'more' is that for the repaired text. Ends the parse.
    std::unique_ptr<ParsedSource> With(std::string_view output, std::string_view more = "");

private:
    void Add(Symbol symbol);
    void AddMore(std::string_view output);
    std::string_view TemplateParameters(const Symbol& symbol);
    void AddMissingMacros();
};

// One for each thread.
class SourceReader {
public:
    explicit SourceReader(const Settings& settings) : settings(settings) {} // must outlive it

    // Copies what it needs of the text. See TextParser for the language.
    HalfParsed Read(std::string_view path, std::string_view text, std::optional<Language> language = std::nullopt);

private:
    const Settings& settings;
    FactFinder finder;
};

} // namespace tagging
