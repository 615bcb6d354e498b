#include "base/Paths.h"
#include "tagging/SlowTexts.h"
#include "tagging/SourceParser.h"
#include "tagging/SourceReader.h"
#include "tagging/ctags/CtagsAtHand.h"

#include <mutex>

namespace tagging {

namespace {

struct SettingsOfBoth {
    explicit SettingsOfBoth(const Settings& given) : all(given), plain(given.ctags), withLocals(given.ctags)
    {
        plain.output = CtagsSettings::Output::Symbols;
        withLocals.output = CtagsSettings::Output::SymbolsWithLocals;
    }

    const Settings all;
    CtagsSettings plain;
    CtagsSettings withLocals;
};

// What reads one text at a time.
class Lane {
public:
    Lane(const SettingsOfBoth& settings, SlowTexts& slow, int stop)
        : slow(slow), reader(settings.all), c(settings.plain, Parser::C, stop),
          cplusplus(settings.plain, Parser::Cplusplus, stop), localsOfC(settings.withLocals, Parser::C, stop),
          localsOfCplusplus(settings.withLocals, Parser::Cplusplus, stop)
    {
    }

    base::Result<std::unique_ptr<ParsedSource>> Parse(const std::string& path, std::string_view text,
                                                      const EarlierText* before, TextParser::Locals locals,
                                                      std::optional<Language> language)
    {
        HalfParsed half = reader.Read(path, text, language);
        CtagsAtHand& ctags = CtagsFor(half.parser, locals);
        if (before != nullptr && TakeOver(half, *before, text, ctags))
            return std::move(half.source);
        const base::Result<std::string> output = Output(ctags, path, half.rest ? *half.rest : text);
        if (!output)
            return base::Error{"cannot parse " + base::Shown(path) + ": " + output.Failure().Message()};
        if (!half.repaired)
            return half.With(*output);
        const base::Result<std::string> more = Output(ctags, path + " (repaired)", half.repaired->text);
        return half.With(*output, more ? *more : "");
    }

private:
    base::Result<std::string> Output(CtagsAtHand& ctags, const std::string& name, std::string_view text)
    {
        if (slow.Has(name, text, SlowTexts::Clock::now()))
            return base::Error{"ctags took too long for a text like it"};
        base::Result<std::string> output = ctags.OutputFor(text);
        if (ctags.TookTooLong())
            slow.Add(name, text, SlowTexts::Clock::now());
        else if (output)
            slow.Remove(name);
        return output;
    }

    // The symbols of the earlier text, if only the body of a function has changed.
    static bool TakeOver(HalfParsed& half, const EarlierText& before, std::string_view text, CtagsAtHand& ctags)
    {
        ParsedSource& source = *half.source;
        if (half.rest || source.language != before.source.language)
            return false;
        const std::optional<ChangedFunction> changed = ChangedFunction::Find(before, text);
        if (!changed || (half.repaired && RepairCplusplus(changed->Excerpt())))
            return false;
        const base::Result<std::string> output = ctags.OutputFor(changed->Excerpt());
        std::optional<std::vector<Symbol>> symbols = output ? changed->Symbols(*output, source.texts) : std::nullopt;
        if (!symbols)
            return false;
        source.symbols = *std::move(symbols);
        return true;
    }

    CtagsAtHand& CtagsFor(Parser parser, TextParser::Locals locals)
    {
        if (parser == Parser::C)
            return locals == TextParser::Locals::Yes ? localsOfC : c;
        return locals == TextParser::Locals::Yes ? localsOfCplusplus : cplusplus;
    }

    SlowTexts& slow;
    SourceReader reader;
    CtagsAtHand c;
    CtagsAtHand cplusplus;
    CtagsAtHand localsOfC;
    CtagsAtHand localsOfCplusplus;
};

} // namespace

// The second lane is for who asks while a text is read that nobody waits for.
struct TextParser::Contents {
    explicit Contents(const Settings& given) : settings(given) {}

    base::Result<std::unique_ptr<ParsedSource>> Parse(const std::string& path, std::string_view text,
                                                      const EarlierText* before, Locals locals,
                                                      std::optional<Language> language)
    {
        if (const std::unique_lock lock(firstMutex, std::try_to_lock); lock.owns_lock())
            return first.Parse(path, text, before, locals, language);
        const std::lock_guard lock(secondMutex);
        return second.Parse(path, text, before, locals, language);
    }

    void Stop() { stop.Cancel(); }

private:
    const SettingsOfBoth settings;
    SlowTexts slow;
    base::CancelToken stop;
    std::mutex firstMutex;
    Lane first{settings, slow, stop.Descriptor()};
    std::mutex secondMutex;
    Lane second{settings, slow, stop.Descriptor()};
};

TextParser::TextParser(const Settings& settings) : contents(std::make_unique<Contents>(settings)) {}
TextParser::~TextParser() = default;

void TextParser::Stop()
{
    contents->Stop();
}

base::Result<std::unique_ptr<ParsedSource>> TextParser::Parse(const std::string& path, std::string_view text,
                                                              Locals locals, std::optional<Language> language)
{
    return contents->Parse(path, text, nullptr, locals, language);
}

base::Result<std::unique_ptr<ParsedSource>> TextParser::ParseChanged(const std::string& path, std::string_view text,
                                                                     const EarlierText& before,
                                                                     std::optional<Language> language)
{
    return contents->Parse(path, text, &before, Locals::No, language);
}

} // namespace tagging
