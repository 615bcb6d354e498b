#include "wren/desktop/CommandChooser.h"

#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/symbols/Palette.h"
#include "wren/desktop/symbols/PaletteItem.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace wren {

namespace {

constexpr qsizetype kRemembered = 10; // commands

QString TitleOf(const NamedCommand& command)
{
    return command.menu + ": " + command.name;
}

PaletteItem ItemFor(const NamedCommand& command, size_t number)
{
    PaletteItem item;
    item.document = static_cast<long>(number);
    if (command.action->isChecked())
        item.detail = CommandChooser::tr("on").toStdString();
    item.where = command.keys.toStdString();
    return item;
}

// The name begins behind its menu's.
void PutMenuBefore(PaletteItem& item, const QString& menu)
{
    const std::string before = menu.toStdString() + ": ";
    item.name.insert(0, before);
    for (unsigned& position : item.positions)
        position += static_cast<unsigned>(before.size());
}

} // namespace

CommandChooser::CommandChooser(MainWindow& window, std::function<std::vector<NamedCommand>()> commands)
    : window(window), commands(std::move(commands))
{
}

Palette& CommandChooser::Listing()
{
    if (listing != nullptr)
        return *listing;
    listing = new Palette(&window);
    listing->setObjectName("commands");
    connect(listing, &Palette::Closed, &window.Tabs(), &EditorTabs::FocusCurrent);
    return *listing;
}

void CommandChooser::Open()
{
    offered = commands();
    PutLastFirst();
    PaletteUse use;
    use.title = tr("Run a command: letters of its name");
    use.listsWithoutLetters = true;
    use.ask = [this](const QString& letters) {
        listing->Show({Matching(QString(letters).remove(' ').toStdString()), false});
    };
    use.choose = [this](const PaletteItem& item, long) { Run(static_cast<size_t>(item.document)); };
    Listing().Open(std::move(use));
}

void CommandChooser::PutLastFirst()
{
    std::ranges::stable_sort(offered, {}, [this](const NamedCommand& command) {
        const qsizetype at = last.indexOf(TitleOf(command));
        return at < 0 ? kRemembered : at;
    });
}

std::vector<PaletteItem> CommandChooser::Matching(const std::string& letters) const
{
    std::vector<PaletteItem> byName;
    for (size_t number = 0; number < offered.size(); ++number) {
        byName.push_back(ItemFor(offered[number], number));
        byName.back().name = offered[number].name.toStdString();
    }
    std::vector<PaletteItem> byMenu = byName;
    for (PaletteItem& item : byMenu)
        PutMenuBefore(item, offered[static_cast<size_t>(item.document)].menu);
    if (letters.empty())
        return byMenu;
    Narrow(byName, letters);
    Narrow(byMenu, letters);
    for (PaletteItem& item : byName) {
        PutMenuBefore(item, offered[static_cast<size_t>(item.document)].menu);
        std::erase_if(byMenu, [&item](const PaletteItem& other) { return other.document == item.document; });
    }
    std::ranges::move(byMenu, std::back_inserter(byName));
    return byName;
}

void CommandChooser::Run(size_t number)
{
    const NamedCommand& command = offered[number];
    last.removeAll(TitleOf(command));
    last.prepend(TitleOf(command));
    last = last.mid(0, kRemembered);
    if (const QPointer<QAction> action = command.action)
        action->trigger();
}

} // namespace wren
