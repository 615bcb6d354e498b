#include "tagging/ctags/CtagsWords.h"

#include "tagging/ctags/CtagsOutput.h"

namespace tagging {

namespace {

constexpr const char* kFieldsOfBoth = "{properties}";
constexpr const char* kFieldsOfCplusplus = "{properties}{template}{specialization}{name}";

// These exclude ctags' configuration files, too.
std::vector<std::string> OptionsForSymbols(bool withLocals)
{
    std::vector<std::string> words = {"--options=NONE",
                                      "--quiet=yes",
                                      "--sort=no",
                                      "--excmd=number",
                                      "--fields=KsSaefit", // letters of kinds mean something else to Qt's parser
                                      std::string("--fields-C=+") + kFieldsOfBoth,
                                      std::string("--fields-C++=+") + kFieldsOfCplusplus,
                                      "--kinds-C=+px",
                                      "--kinds-C++=+pxANU",
                                      "--languages=-ObjectiveC,-MatLab"};
    if (withLocals)
        words.insert(words.end(), {"--kinds-C=+lzLD", "--kinds-C++=+lzLDZ"});
    return words;
}

} // namespace

std::vector<std::string> CtagsWords(const CtagsSettings& settings, Parser parser)
{
    using Output = CtagsSettings::Output;
    std::vector<std::string> words = settings.output == Output::Tags
                                         ? OptionsForOutput()
                                         : OptionsForSymbols(settings.output == Output::SymbolsWithLocals);
    words.insert(words.begin(), settings.program);
    // The default excludes would skip some files because of their names.
    words.insert(words.end(), {"--exclude=", "--map-C++=+.pch", "--map-C++=+.ipp", "--map-C++=+.tpp"});
    if (settings.prototypes && settings.output == Output::Tags)
        words.insert(words.end(), {"--kinds-C=+p", "--kinds-C++=+p"});
    if (!settings.ignored.empty())
        words.insert(words.end(), {"-I", settings.ignored});
    if (parser != Parser::ByName)
        words.push_back(parser == Parser::C ? "--language-force=C" : "--language-force=C++");
    else if (!settings.language.empty())
        words.push_back("--language-force=" + settings.language);
    return words;
}

} // namespace tagging
