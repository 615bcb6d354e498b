#include "base/Paths.h"
#include "tagging/SourceParser.h"
#include "tagging/SourceReader.h"
#include "tagging/ctags/CtagsAtHand.h"

#include <mutex>

namespace tagging {

struct TextParser::Contents {
    explicit Contents(const Settings& given) : settings(given), plain(given.ctags), withLocals(given.ctags)
    {
        plain.output = CtagsSettings::Output::Symbols;
        withLocals.output = CtagsSettings::Output::SymbolsWithLocals;
    }

    CtagsAtHand& CtagsFor(Parser parser, Locals locals)
    {
        if (parser == Parser::C)
            return locals == Locals::Yes ? localsOfC : c;
        return locals == Locals::Yes ? localsOfCplusplus : cplusplus;
    }

    const Settings settings;
    CtagsSettings plain;
    CtagsSettings withLocals;
    std::mutex mutex; // for all members below
    SourceReader reader{settings};
    CtagsAtHand c{plain, Parser::C};
    CtagsAtHand cplusplus{plain, Parser::Cplusplus};
    CtagsAtHand localsOfC{withLocals, Parser::C};
    CtagsAtHand localsOfCplusplus{withLocals, Parser::Cplusplus};
};

TextParser::TextParser(const Settings& settings) : contents(std::make_unique<Contents>(settings)) {}
TextParser::~TextParser() = default;

base::Result<std::unique_ptr<ParsedSource>> TextParser::Parse(const std::string& path, std::string_view text,
                                                              Locals locals, std::optional<Language> language)
{
    const std::lock_guard lock(contents->mutex);
    HalfParsed half = contents->reader.Read(path, text, language);
    CtagsAtHand& ctags = contents->CtagsFor(half.parser, locals);
    const base::Result<std::string> output = ctags.OutputFor(half.rest ? *half.rest : text);
    if (!output)
        return base::Error{"cannot parse " + base::Shown(path) + ": " + output.Failure().Message()};
    if (!half.repaired)
        return half.With(*output);
    const base::Result<std::string> more = ctags.OutputFor(half.repaired->text);
    return half.With(*output, more ? *more : "");
}

} // namespace tagging
