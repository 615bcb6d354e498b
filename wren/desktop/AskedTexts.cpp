#include "wren/desktop/AskedTexts.h"

#include "base/Identifier.h"
#include "wren/core/Host.h"
#include "wren/desktop/DocumentActions.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/editor/CodeLexer.h"
#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/symbols/SymbolEngine.h"

#include <chrono>
#include <memory>
#include <utility>

namespace wren {

namespace {

using namespace std::chrono_literals;

constexpr long kLongestText = 16L << 20; // bytes; a longer one is data

} // namespace

AskedTexts::AskedTexts(Host& host, MainWindow& window, DocumentActions& documents, SymbolEngine& engine)
    : host(host), window(window), engine(engine), pause(200ms, 1000ms)
{
    connect(&pause, &QuietTimer::Quiet, this, [this] {
        Feed();
        emit Settled();
    });
    connect(&documents, &DocumentActions::Named, this, [this](long, const std::string& path) {
        if (CodeLexer::IsCode(path))
            this->engine.TextClosed(path); // the file counts until its text differs
    });
    connect(&documents, &DocumentActions::Closing, this, [this](long id) {
        changed.erase(id);
        if (const Document* document = this->host.AllDocuments().Find(id))
            this->engine.TextClosed(PathOf(*document));
    });
}

void AskedTexts::Changed(long document)
{
    changed.insert(document);
    pause.Happened();
}

void AskedTexts::Feed()
{
    for (const long id : std::exchange(changed, {})) {
        const Document* document = host.AllDocuments().Find(id);
        if (document == nullptr || document->Length() > kLongestText || !CodeLexer::IsCode(document->Path()))
            continue;
        engine.TextChanged(document->Path(), std::make_shared<const std::string>(document->Text()));
    }
}

AskedTexts::Asked AskedTexts::AboutCurrent()
{
    Feed();
    Asked asked;
    const Document* document = host.Current();
    if (document == nullptr || document->Length() > kLongestText)
        return asked;
    asked.view = window.Tabs().CurrentView();
    asked.text.path = PathOf(*document);
    asked.text.text = std::make_shared<const std::string>(document->Text());
    asked.text.offset = static_cast<size_t>(asked.view->Caret());
    asked.name = base::IdentifierAround(*asked.text.text, asked.text.offset);
    return asked;
}

std::optional<AskedText> AskedTexts::AboutName(long offset)
{
    const Document* document = host.Current();
    if (document == nullptr || !CodeLexer::IsCode(document->Path()))
        return std::nullopt;
    Asked asked = AboutCurrent();
    if (asked.view == nullptr)
        return std::nullopt;
    asked.text.offset = static_cast<size_t>(offset);
    return asked.text;
}

std::string AskedTexts::CurrentPath() const
{
    const Document* document = host.Current();
    return document == nullptr ? "" : PathOf(*document);
}

std::string AskedTexts::PathOf(const Document& document)
{
    const std::string path = document.Path();
    return path.empty() ? "untitled:" + std::to_string(document.Id()) : path;
}

} // namespace wren
