#include "wren/desktop/PaletteActions.h"

#include "wren/desktop/AskedTexts.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/Landing.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/symbols/FileNames.h"
#include "wren/desktop/symbols/Palette.h"
#include "wren/desktop/symbols/SymbolEngine.h"

#include <utility>

namespace wren {

PaletteActions::PaletteActions(Parts parts) : parts(std::move(parts)), names(std::make_shared<FileNames>()) {}

Palette& PaletteActions::ThePalette()
{
    if (palette != nullptr)
        return *palette;
    palette = new Palette(&parts.window);
    connect(palette, &Palette::Closed, &parts.window.Tabs(), &EditorTabs::FocusCurrent);
    return *palette;
}

void PaletteActions::AskAgain()
{
    if (palette != nullptr)
        palette->AskAgain();
}

void PaletteActions::AskEngine(const QString& letters, Answer answer)
{
    const auto work = [this, answer = std::move(answer), wanted = letters.toStdString()](const Question& question) {
        PaletteAnswer found = answer(wanted, question);
        question.tell([this, found = std::move(found)]() mutable { palette->Show(std::move(found)); });
    };
    parts.engine.Ask(SymbolEngine::Topic::Palette, work);
}

void PaletteActions::GoToSymbol()
{
    parts.texts.Feed();
    PaletteUse use;
    use.title = tr("Go to symbol: letters of its name, Outer::name or path/name");
    use.ask = [this, path = parts.texts.CurrentPath()](const QString& letters) {
        AskEngine(letters, [path](const std::string& wanted, const Question& question) {
            return SymbolsLike(wanted, path, question);
        });
    };
    use.choose = [this](const PaletteItem& item, long) { parts.landing.GoTo(item); };
    ThePalette().Open(std::move(use));
}

void PaletteActions::GoToFile()
{
    parts.texts.Feed();
    PaletteUse use;
    use.title = tr("Go to file: letters of its name, directory/name or name:line");
    use.listsWithoutLetters = true;
    use.ask = [this, path = parts.texts.CurrentPath(), recent = parts.recentFiles()](const QString& letters) {
        AskEngine(letters, [path, recent, kept = names](const std::string& wanted, const Question& question) {
            return kept->Like(wanted, path, recent, question);
        });
    };
    use.choose = [this](const PaletteItem& item, long line) { parts.landing.GoTo(item, line); };
    ThePalette().Open(std::move(use));
}

void PaletteActions::GoToSymbolOfText()
{
    const AskedTexts::Asked asked = parts.texts.AboutCurrent();
    if (asked.view == nullptr)
        return;
    PaletteUse use;
    use.title = tr("Go to symbol of this text");
    use.listsWithoutLetters = true;
    use.ask = [this, text = asked.text](const QString& letters) {
        AskEngine(letters, [text](const std::string& wanted, const Question& question) {
            return SymbolsOfText(wanted, text, question);
        });
    };
    use.choose = [this](const PaletteItem& item, long) { parts.landing.GoTo(item); };
    ThePalette().Open(std::move(use));
}

void PaletteActions::GoToSymbolOfScope(const std::vector<PaletteItem>& siblings)
{
    PaletteUse use;
    use.title = tr("Go to symbol of this scope");
    use.listsWithoutLetters = true;
    use.ask = [this, siblings](const QString& letters) {
        PaletteAnswer answer{siblings, false};
        if (!letters.isEmpty())
            Narrow(answer.items, letters.toStdString());
        palette->Show(std::move(answer));
    };
    use.choose = [this](const PaletteItem& item, long) { parts.landing.GoTo(item); };
    ThePalette().Open(std::move(use));
}

} // namespace wren
