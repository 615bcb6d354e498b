#include "wren/desktop/TextChooser.h"

#include "base/UserDirectories.h"
#include "wren/core/Host.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/TextSwitcher.h"
#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/symbols/Palette.h"

#include <QGuiApplication>

#include <algorithm>
#include <filesystem>
#include <utility>

namespace wren {

namespace {

constexpr Qt::KeyboardModifiers kHolding = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;

std::string ShortDirectory(const std::string& file)
{
    const std::string directory = std::filesystem::path(file).parent_path();
    const std::string home = base::Home();
    const bool isAtHome = !home.empty() && (directory + "/").starts_with(home);
    return isAtHome ? "~" + directory.substr(home.size() - 1) : directory;
}

} // namespace

TextChooser::TextChooser(Host& host, MainWindow& window) : host(host), window(window), tabs(window.Tabs())
{
    connect(&tabs, &EditorTabs::Raised, this, &TextChooser::Used);
    connect(&tabs, &EditorTabs::ListAsked, this, &TextChooser::List);
}

TextSwitcher& TextChooser::Switcher()
{
    if (switcher != nullptr)
        return *switcher;
    switcher = new TextSwitcher(&window);
    connect(switcher, &TextSwitcher::Closed, this, &TextChooser::GiveKeyboardBack);
    connect(switcher, &TextSwitcher::Chosen, this, [this](const PaletteItem& item) { Raise(item.document); });
    return *switcher;
}

Palette& TextChooser::Listing()
{
    if (listing != nullptr)
        return *listing;
    listing = new Palette(&window);
    listing->setObjectName("openTexts");
    connect(listing, &Palette::Closed, this, &TextChooser::GiveKeyboardBack);
    return *listing;
}

void TextChooser::Step(bool back)
{
    const int rows = back ? -1 : 1;
    if (Switcher().isVisible())
        return Switcher().Move(rows);
    const std::vector<long> all = ByLastUse();
    if (all.size() < 2)
        return;
    const Qt::KeyboardModifiers held = QGuiApplication::keyboardModifiers() & kHolding;
    if (held == Qt::NoModifier)
        return Raise(back ? all.back() : all[1]);
    Switcher().Open(Items(), held);
    Switcher().Move(rows);
}

void TextChooser::List()
{
    PaletteUse use;
    use.title = tr("Go to an open document: letters of its name");
    use.listsWithoutLetters = true;
    use.ask = [this](const QString& letters) {
        PaletteAnswer answer{Items(), false};
        if (!letters.isEmpty())
            Narrow(answer.items, letters.toStdString());
        listing->Show(std::move(answer));
    };
    use.choose = [this](const PaletteItem& item, long) { Raise(item.document); };
    Listing().Open(std::move(use));
}

std::vector<long> TextChooser::ByLastUse() const
{
    const std::vector<long> open = tabs.Documents();
    std::vector<long> ordered;
    for (const std::vector<long>* each : {&used, &open})
        for (const long document : *each)
            if (std::ranges::count(open, document) != 0 && std::ranges::count(ordered, document) == 0)
                ordered.push_back(document);
    return ordered;
}

void TextChooser::Used(long document)
{
    const std::vector<long> open = tabs.Documents();
    std::erase_if(used, [&](long each) { return each == document || std::ranges::count(open, each) == 0; });
    if (document != 0)
        used.insert(used.begin(), document);
}

void TextChooser::Raise(long document)
{
    if (tabs.ViewOf(document) != nullptr)
        tabs.Raise(document);
    else
        GiveKeyboardBack(); // it was closed while the list was open
}

void TextChooser::GiveKeyboardBack()
{
    if (CodeView* view = tabs.CurrentView())
        view->setFocus();
}

PaletteItem TextChooser::ItemFor(long id) const
{
    PaletteItem item;
    item.document = id;
    const Document* document = host.AllDocuments().Find(id);
    if (document == nullptr)
        return item;
    item.path = document->Path();
    if (document->IsWorksheet())
        item.name = tr("Worksheet").toStdString();
    else if (item.path.empty())
        item.name = tr("untitled").toStdString();
    else
        item.name = std::filesystem::path(item.path).filename();
    if (tabs.ViewOf(id)->IsModified())
        item.detail = "*";
    if (!document->IsWorksheet() && !item.path.empty())
        item.where = ShortDirectory(item.path);
    return item;
}

std::vector<PaletteItem> TextChooser::Items() const
{
    std::vector<PaletteItem> items;
    for (const long document : ByLastUse())
        items.push_back(ItemFor(document));
    return items;
}

} // namespace wren
