#include "wren/cli/Lookup.h"

#include "vetch/app/Loop.h"
#include "vetch/support/ThreadStart.h"
#include "wren/cli/SymbolText.h"

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

class LookupSession {
public:
    LookupSession() : display(&face), editor(face, display) {}

    LookupResult Ask(const LookupOptions& options)
    {
        LookupResult result;
        if (!editor.Start(options.editor, &result.error))
            return result;
        std::string typed;
        const Document* document = options.place
                                       ? editor.OpenAt(*options.place, WithoutColumn::FirstIdentifier, &result.error)
                                       : OpenForSymbol(options, &typed, &result.error);
        if (document == nullptr)
            return result;
        result.directory = DirectoryOf(*document);
        if (typed.empty())
            editor.TheHost().Events().Command(CommandFor(options.kind));
        else
            TypeIntoDialog(typed);
        vetch::Settle();
        const bool dialogOpened = typed.empty() && FindDialog().has_value();
        Collect(result.matches);
        result.outcome = face.WasAsked()               ? Outcome::NoTags
                         : !result.matches.empty()     ? Outcome::Matches
                         : vetch::ThreadsWereRefused() ? Outcome::Unusable
                         : dialogOpened                ? Outcome::NothingThere
                                                       : Outcome::NoMatch;
        if (result.outcome == Outcome::Unusable)
            result.error = "the matches cannot be listed without another thread";
        return result;
    }

private:
    // A document that stands for the symbol; what cannot be written in one goes to '*typed', for the dialog.
    Document* OpenForSymbol(const LookupOptions& options, std::string* typed, std::string* error)
    {
        const fs::path directory = options.directory.empty() ? fs::current_path() : fs::absolute(options.directory);
        if (!fs::is_directory(directory)) {
            *error = directory.string() + " is no directory";
            return nullptr;
        }
        const std::optional<SymbolText> written = TextForSymbol(*options.symbol);
        if (!written && options.kind != LookupKind::Any) {
            *error = "\"" + *options.symbol + "\" can be looked up only without --declaration and --definition";
            return nullptr;
        }
        if (!written)
            *typed = *options.symbol;
        const SymbolText content = written.value_or(SymbolText());
        // The file need not exist: the text does not come from there.
        Document* document = editor.TheHost().Open(directory / "symbol", content.text, false, error);
        if (document != nullptr)
            document->Select(content.caret, content.caret);
        return document;
    }

    void TypeIntoDialog(const std::string& symbol)
    {
        editor.TheHost().Events().Command("SymbolLookupDialog");
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
    LookupDisplay display;
    AskedEditor editor;
};

} // namespace

LookupResult LookUp(const LookupOptions& options)
{
    return LookupSession().Ask(options);
}

} // namespace wren
