#include "wren/cli/Lookup.h"

#include "vetch/app/Loop.h"
#include "wren/cli/SymbolText.h"
#include "wren/cli/SystemTagsHome.h"
#include "wren/core/Host.h"
#include "wren/core/HostWitness.h"
#include "wren/core/PluginBundle.h"

#include <cstdlib>
#include <filesystem>

namespace wren {

namespace {

namespace fs = std::filesystem;

using Outcome = LookupResult::Outcome;
using WindowState = vetch::HeadlessDisplay::WindowState;

// The items of the symbol dialog in the plug-in's interface file.
constexpr long kSymbolField = 1;
constexpr long kLookUpButton = 2;

const char* CommandFor(LookupKind kind)
{
    switch (kind) {
    case LookupKind::Declaration:
        return "DeclarationLookup";
    case LookupKind::Definition:
        return "DefinitionLookup";
    default:
        return "SymbolLookup";
    }
}

// The document that is looked up in, and where in it.
struct Question {
    std::string path;
    std::optional<std::string> text; // instead of the file's
    long caret = 0;
    std::string typed; // goes into the dialog instead
};

// One lookup in a host of its own.
class LookupSession {
public:
    explicit LookupSession(PluginBundle& bundle) : display(&face)
    {
        vetch::SetDisplay(&display);
        vetch::SetTurns(true);
        host.emplace(bundle, face, witness, "");
        host->Start();
        // A question changes nothing on the disk.
        host->Events().SettingsCommand({"DeclAutomaticallyRebuild", "off"});
    }

    LookupResult Ask(const LookupOptions& options)
    {
        LookupResult result;
        const std::optional<Question> question =
            options.place ? AtPlace(*options.place) : ForSymbol(options, &result.error);
        if (!question)
            return result;
        result.directory = fs::path(question->path).parent_path();
        if (!Open(*question, options, &result.error))
            return result;
        if (question->typed.empty())
            host->Events().Command(CommandFor(options.kind));
        else
            TypeIntoDialog(question->typed);
        vetch::Settle();
        const bool dialogOpened = question->typed.empty() && FindDialog().has_value();
        Collect(result.matches);
        result.outcome = face.WasAsked()           ? Outcome::NoTags
                         : !result.matches.empty() ? Outcome::Matches
                         : dialogOpened            ? Outcome::NothingThere
                                                   : Outcome::NoMatch;
        return result;
    }

private:
    // Where the caret goes is known once the file has been read.
    static Question AtPlace(const Place& place)
    {
        Question question;
        question.path = fs::absolute(place.file);
        return question;
    }

    static std::optional<Question> ForSymbol(const LookupOptions& options, std::string* error)
    {
        const fs::path directory = options.directory.empty() ? fs::current_path() : fs::absolute(options.directory);
        if (!fs::is_directory(directory)) {
            *error = directory.string() + " is no directory";
            return std::nullopt;
        }
        Question question;
        question.path = directory / "symbol"; // need not exist: the text does not come from there
        if (const std::optional<SymbolText> written = TextForSymbol(*options.symbol)) {
            question.text = written->text;
            question.caret = written->caret;
            return question;
        }
        if (options.kind != LookupKind::Any) {
            *error = "\"" + *options.symbol + "\" can be looked up only without --declaration and --definition";
            return std::nullopt;
        }
        question.text = "";
        question.typed = *options.symbol;
        return question;
    }

    bool Open(const Question& question, const LookupOptions& options, std::string* error)
    {
        Document* document = host->Open(question.path, question.text, false, error);
        if (document == nullptr)
            return false;
        long caret = question.caret;
        if (options.place) {
            const std::optional<long> offset = OffsetOf(*options.place, document->Text(), error);
            if (!offset)
                return false;
            caret = *offset;
        }
        document->Select(caret, caret);
        return true;
    }

    void TypeIntoDialog(const std::string& symbol)
    {
        host->Events().Command("SymbolLookupDialog");
        vetch::Settle();
        const std::optional<WindowState> dialog = FindDialog();
        if (!dialog)
            return;
        display.Enter(dialog->number, kSymbolField, symbol);
        display.Press(dialog->number, kLookUpButton);
    }

    std::optional<WindowState> FindDialog() const
    {
        for (const WindowState& window : display.Windows())
            if (window.visible && !window.controls.empty())
                return window;
        return std::nullopt;
    }

    // Opens every entry of a list that is shown; a single match has been opened already.
    void Collect(std::vector<Match>& matches)
    {
        const std::vector<std::string> items = display.LastItems();
        for (const WindowState& window : display.Windows()) {
            if (!window.visible || !window.list)
                continue;
            // All at once: the first one that is opened closes the list.
            for (size_t index = 0; index < window.list->items.size(); ++index)
                display.InvokeItem(window.number, static_cast<long>(index));
            vetch::Settle();
            break;
        }
        matches = face.Opened();
        for (size_t index = 0; index < matches.size() && index < items.size(); ++index)
            matches[index].item = items[index];
    }

    LookupFace face;
    HostWitness witness;
    LookupDisplay display;
    std::optional<Host> host;
};

} // namespace

LookupResult LookUp(const LookupOptions& options)
{
    if (!options.home.empty())
        ::setenv("HOME", fs::absolute(options.home).c_str(), 1);
    LookupResult result;
    const SystemTagsHome home(options.systemTags, &result.error);
    if (!result.error.empty())
        return result;
    const std::unique_ptr<PluginBundle> bundle =
        PluginBundle::Load(options.bundle.empty() ? PluginBundle::DefaultDirectory() : options.bundle, &result.error);
    if (bundle == nullptr)
        return result;
    return LookupSession(*bundle).Ask(options);
}

} // namespace wren
