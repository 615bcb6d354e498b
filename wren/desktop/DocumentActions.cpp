#include "wren/desktop/DocumentActions.h"

#include "wren/core/Host.h"
#include "wren/desktop/DocumentLabels.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/FileKeeper.h"
#include "wren/desktop/GuiLoop.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/PlainBox.h"
#include "wren/desktop/WorksheetActions.h"
#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/editor/FindBar.h"

#include <QFileDialog>
#include <QStatusBar>

#include <algorithm>
#include <chrono>
#include <filesystem>

namespace wren {

namespace {

namespace fs = std::filesystem;

constexpr std::chrono::milliseconds kSavedShown{4000};
constexpr std::chrono::milliseconds kNewFileShown{8000};

bool Exists(const std::string& path)
{
    std::error_code unknown;
    return fs::exists(path, unknown);
}

void ShowMessage(MainWindow& window, const QString& text, std::chrono::milliseconds time)
{
    window.statusBar()->showMessage(text, static_cast<int>(time.count()));
}

} // namespace

std::string AbsolutePath(const std::string& path)
{
    std::error_code gone;
    const fs::path absolute = (fs::current_path(gone) / path).lexically_normal();
    return absolute.has_filename() ? absolute : absolute.parent_path();
}

DocumentActions::DocumentActions(const Parts& parts)
    : host(parts.host), window(parts.window), loop(parts.loop), files(parts.files), worksheet(parts.worksheet),
      labels(parts.labels), viewClient(parts.viewClient)
{
}

// ------------------------------------------------------------------------------------------------------------- Opening

Document* DocumentActions::LoadNew(const std::string& absolute)
{
    std::string error;
    return Adopt(host.Open(absolute, "", false, &error));
}

Document* DocumentActions::Load(const std::string& absolute, const TextEncoding& expected, std::string* error)
{
    std::optional<FileText> read = files.Read(absolute, expected, error);
    if (!read)
        return nullptr;
    Document* document = host.Open(absolute, std::move(read->decoded.text), false, error);
    document->SetEncoding(read->decoded.encoding);
    return Adopt(document, read->mark);
}

Document* DocumentActions::Adopt(Document* document, const std::optional<FileMark>& mark)
{
    if (document == nullptr)
        return nullptr;
    CodeView* view = window.Tabs().ViewOf(document->Id());
    view->SetClient(&viewClient);
    connect(view, &CodeView::ZoomAsked, this, &DocumentActions::ZoomAsked, Qt::UniqueConnection);
    connect(view, &CodeView::MenuAsked, this, &DocumentActions::MenuAsked, Qt::UniqueConnection);
    view->SetLanguageFor(document->Path());
    if (document->IsWorksheet())
        view->HideChangedLines(); // it is saved without a question
    labels.ShowName(*document, false);
    emit Loaded(document->Id());
    if (!document->Path().empty())
        emit Named(document->Id(), document->Path());
    files.Opened(*document, mark);
    return document;
}

bool DocumentActions::Open(const std::string& path, long line, long column)
{
    if (!OpenExpecting(path, {}))
        return false;
    if (line > 0) {
        CodeView* view = window.Tabs().CurrentView();
        view->GoToLine(line);
        if (column > 1)
            view->GoTo(std::min(view->Caret() + column - 1, host.Current()->LineEnd(line - 1)));
    }
    emit Changed();
    return true;
}

bool DocumentActions::OpenIn(const std::string& path, const TextEncoding& expected)
{
    const bool isOpen = OpenExpecting(path, expected);
    if (isOpen)
        emit Changed();
    return isOpen;
}

bool DocumentActions::OpenExpecting(const std::string& path, const TextEncoding& expected)
{
    const std::string absolute = AbsolutePath(path);
    Document* document = host.AllDocuments().FindByPath(absolute);
    if (document == nullptr) {
        const Document* untouched = host.Current();
        const bool replaces = untouched != nullptr && untouched->Path().empty() && untouched->Length() == 0 &&
                              !files.IsModified(*untouched);
        std::string error;
        document = Load(absolute, expected, &error);
        if (document == nullptr) {
            AskPlainly(QMessageBox::Critical, &window, QString::fromStdString(error));
            return false;
        }
        if (replaces)
            Close(untouched->Id());
    }
    window.Tabs().Raise(document->Id());
    emit Opened(absolute);
    return true;
}

void DocumentActions::OpenOrNew(const Place& place)
{
    const std::string absolute = AbsolutePath(place.file);
    std::error_code unknown;
    // The target of a dangling link does not exist either, but the link's name is taken.
    if (fs::symlink_status(absolute, unknown).type() == fs::file_type::not_found &&
        fs::is_directory(fs::path(absolute).parent_path(), unknown))
        OpenNew(absolute);
    else
        Open(place.file, place.line, place.column);
}

void DocumentActions::OpenNew(const std::string& absolute)
{
    Document* document = host.AllDocuments().FindByPath(absolute);
    if (document == nullptr)
        document = LoadNew(absolute);
    window.Tabs().Raise(document->Id());
    ShowMessage(window, tr("%1 is a new file: saving creates it").arg(QString::fromStdString(absolute)), kNewFileShown);
    emit Changed();
}

void DocumentActions::OpenChosen()
{
    const Document* current = host.Current();
    const std::string directory = current == nullptr ? "" : DirectoryOf(*current);
    for (const QString& path : QFileDialog::getOpenFileNames(&window, tr("Open"), QString::fromStdString(directory)))
        Open(path.toStdString());
}

bool DocumentActions::OpenUnsaved(const std::string& path, const std::string& text, const TextEncoding& encoding)
{
    Document* document = path.empty() ? Adopt(&host.New()) : host.AllDocuments().FindByPath(path);
    if (document == nullptr) {
        std::string error;
        const bool isWorksheet = path == WorksheetActions::File();
        if (Exists(path))
            document = isWorksheet ? Adopt(host.Open(path, std::nullopt, true, &error)) : Load(path, encoding, &error);
        if (document == nullptr)
            document = Adopt(host.Open(path, "", isWorksheet, &error));
    }
    if (document == nullptr)
        return false;
    window.Tabs().Raise(document->Id());
    document->SetEncoding(encoding);
    document->BeginUndo({}, "Recover");
    document->Delete(0, document->Length());
    document->Insert(0, text);
    document->CloseUndo();
    labels.ShowName(*document, true);
    return true;
}

void DocumentActions::OpenWorksheet()
{
    Document* document = host.AllDocuments().FindWorksheet();
    if (document != nullptr) {
        window.Tabs().Raise(document->Id());
    } else {
        std::string error;
        const std::string file = WorksheetActions::File();
        const bool isKept = !file.empty() && Exists(file);
        document = OpenAsWorksheet(file, isKept ? std::nullopt : std::optional<std::string>(""), &error);
        if (document == nullptr)
            return emit Warned(QString::fromStdString(error));
    }
    window.Tabs().CurrentView()->GoTo(document->Length());
    emit Changed();
}

Document* DocumentActions::OpenAsWorksheet(const std::string& path, const std::optional<std::string>& text,
                                           std::string* error)
{
    Document* document = Adopt(host.Open(path, text, true, error));
    if (document != nullptr)
        window.Tabs().Raise(document->Id());
    return document;
}

void DocumentActions::New()
{
    window.Tabs().Raise(Adopt(&host.New())->Id());
    emit Changed();
}

void DocumentActions::NewWithText(const std::string& text)
{
    New();
    window.Tabs().CurrentView()->SetBytes(text);
}

// -------------------------------------------------------------------------------------------------- Saving and closing

void DocumentActions::Save()
{
    if (Document* document = host.Current())
        files.Save(*document);
}

void DocumentActions::SaveAs()
{
    if (Document* document = host.Current())
        files.SaveAs(*document);
}

void DocumentActions::SaveAll()
{
    for (Document* document : host.AllDocuments().All())
        if (files.IsModified(*document) && !files.Save(*document))
            return;
}

void DocumentActions::Revert()
{
    if (Document* document = host.Current())
        files.Revert(*document);
}

void DocumentActions::ReloadIn(const TextEncoding& encoding)
{
    if (Document* document = host.Current())
        files.ReloadIn(*document, encoding);
}

void DocumentActions::SaveIn(const TextEncoding& encoding)
{
    if (Document* document = host.Current())
        files.SaveIn(*document, encoding);
}

void DocumentActions::CloseCurrent()
{
    if (const Document* document = host.Current())
        Close(document->Id());
}

bool DocumentActions::Close(long id)
{
    Document* document = host.AllDocuments().Find(id);
    if (document == nullptr || !files.MayGo(*document) || (document->IsWorksheet() && !worksheet.MayStop(&window)))
        return false;
    const bool wasCurrent = host.Current() == document;
    files.Closed(id);
    emit Settled(id);
    emit Closing(id);
    host.Close(*document);
    window.Tabs().Remove(id);
    labels.ShowTitle(); // its directory may have been there only to tell it from the closed one
    if (wasCurrent && host.Current() == nullptr && window.Tabs().count() == 0)
        New();
    emit Changed();
    return true;
}

// ---------------------------------------------------------------------------------------------------- What has
// happened

void DocumentActions::Raised(long id)
{
    Document* document = host.AllDocuments().Find(id);
    if (document == nullptr)
        return;
    host.MakeCurrent(*document);
    window.Find().SetView(window.Tabs().CurrentView());
    loop.LetThrough();
    labels.ShowTitle();
    labels.ShowCaret();
    emit Changed();
}

void DocumentActions::Saved(long id)
{
    const Document* document = host.AllDocuments().Find(id);
    labels.ShowName(*document, false);
    emit Named(id, document->Path());
    labels.ShowCaret(); // with the encoding that it has now
    emit Settled(id);
    if (!document->IsWorksheet())
        emit Opened(document->Path());
    ShowMessage(window, tr("Saved %1").arg(QString::fromStdString(document->Path())), kSavedShown);
    emit Changed();
}

void DocumentActions::ModifiedSet(long id, bool modified)
{
    if (const Document* document = host.AllDocuments().Find(id))
        labels.ShowName(*document, modified);
    if (!modified)
        emit Settled(id);
    emit Changed();
}

} // namespace wren
