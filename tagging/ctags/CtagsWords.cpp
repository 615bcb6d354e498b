#include "tagging/ctags/CtagsWords.h"

#include "tagging/ctags/CtagsOutput.h"

namespace tagging {

std::vector<std::string> CtagsWords(const CtagsSettings& settings, Parser parser)
{
    std::vector<std::string> words = OptionsForOutput();
    words.insert(words.begin(), settings.program);
    // The default excludes would skip some files because of their names.
    words.insert(words.end(), {"--exclude=", "--map-C++=+.pch", "--map-C++=+.ipp"});
    if (settings.prototypes)
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
