#include "wren/desktop/SessionKeeper.h"

#include "wren/core/Host.h"
#include "wren/core/TemporaryFile.h"
#include "wren/core/UserDirectories.h"
#include "wren/desktop/DocumentActions.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/FileKeeper.h"
#include "wren/desktop/GuiLoop.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/NoticeBar.h"
#include "wren/desktop/editor/CodeView.h"

#include <QAbstractButton>
#include <QMessageBox>
#include <QPushButton>
#include <QTabBar>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <utility>

namespace wren {

namespace {

using namespace std::chrono_literals;

constexpr auto kAgain = 5s;          // until a copy that failed is tried again
constexpr long kUsual = 1024 * 1024; // bytes, for each of which more a copy waits longer
constexpr auto kMore = 10ms;         // for as many
constexpr const char* kUnsafe = "unsafe";

// A paragraph, and the texts below it; "" when there are none.
QString ListOf(const std::vector<UnsavedText>& texts, bool areOld, const QString& paragraph)
{
    QStringList lines;
    for (const UnsavedText& text : texts)
        if (text.isOld == areOld)
            lines.append(SessionKeeper::tr("%1 (%2)").arg(text.path.empty() ? SessionKeeper::tr("untitled")
                                                                            : QString::fromStdString(text.path),
                                                          QString::fromStdString(text.savedAt)));
    return lines.isEmpty() ? "" : paragraph + "\n\n" + lines.join('\n') + "\n\n";
}

QString QuestionAbout(const std::vector<UnsavedText>& left)
{
    return ListOf(left, false, SessionKeeper::tr("Wren ended without saving these texts:")) +
           ListOf(
               left, true,
               SessionKeeper::tr("Wren ended while it was saving these files, which now hold neither the old text nor "
                                 "the new one. The old texts were kept:")) +
           SessionKeeper::tr("Open them as they were?");
}

bool IsTorn(const std::string& path, const std::vector<UnsavedText>& left)
{
    return std::any_of(left.begin(), left.end(),
                       [&](const UnsavedText& each) { return each.isOld && each.path == path; });
}

// The unsaved text has the file's tab, or else the last of the old ones.
bool HasTheTab(const UnsavedText& text, const std::vector<UnsavedText>& left)
{
    return !text.isOld || std::none_of(left.begin(), left.end(), [&](const UnsavedText& each) {
        return each.path == text.path && (!each.isOld || &each > &text);
    });
}

} // namespace

SessionKeeper::SessionKeeper(const Parts& parts)
    : host(parts.host), window(parts.window), folder(parts.folder), tabs(parts.tabs), notices(parts.notices),
      files(parts.files), documents(parts.documents), state(LoadSession(parts.folder)), quiet(kPause, kLongest),
      recovery([this](long document, const std::string& problem) {
          news.Add({document, problem});
      })
{
    KeepRecordsOfSaves();
    news.SetWakeUp(&GuiLoop::Wake);
    again.setSingleShot(true);
    again.setInterval(kAgain);
    connect(&quiet, &QuietTimer::Quiet, this, &SessionKeeper::KeepChanged);
    connect(&again, &QTimer::timeout, this, &SessionKeeper::KeepChanged);
    connect(&documents, &DocumentActions::Changed, this, &SessionKeeper::FilesChanged);
    connect(&documents, &DocumentActions::Opened, this, &SessionKeeper::Opened);
    connect(&documents, &DocumentActions::Settled, this, &SessionKeeper::Settled);
    connect(&documents, &DocumentActions::Closing, this, &SessionKeeper::KeepBookmarks);
    connect(&documents, &DocumentActions::Loaded, this, &SessionKeeper::FindBookmarks);
    connect(tabs.tabBar(), &QTabBar::tabMoved, this, &SessionKeeper::FilesChanged);
}

void SessionKeeper::TakeNews()
{
    news.Drain([this](const WrittenCopy& copy) { Kept(copy); });
}

void SessionKeeper::Opened(const std::string& path)
{
    if (restoring)
        return; // the user has not chosen it now
    state.Opened(path);
    std::erase(opened, path);
    opened.push_back(path);
}

void SessionKeeper::Restore()
{
    const SessionState last = state;
    ownsFiles = true;
    restoring = true;
    for (const SessionState::OpenFile& file : last.files) {
        std::error_code unknown;
        if (file.worksheet) {
            documents.OpenWorksheet();
        } else if (!std::filesystem::exists(file.path, unknown) || !documents.OpenIn(file.path, file.encoding)) {
            continue; // it no longer exists, and the user has not asked for it now
        }
        if (tabs.CurrentView()->Bookmarks().empty()) // else they were found in the text as it is now
            tabs.CurrentView()->SetBookmarks(file.bookmarks);
        tabs.CurrentView()->GoTo(file.caret);
        tabs.CurrentView()->ShowFromLine(file.firstLine);
    }
    if (last.current >= 0 && last.current < static_cast<int>(last.files.size()))
        if (Document* current = host.AllDocuments().FindByPath(last.files[last.current].path))
            tabs.Raise(current->Id());
    restoring = false;
    FilesChanged();
}

void SessionKeeper::OfferRecovery()
{
    const std::vector<UnsavedText> left = recovery.Left();
    if (!recovery.Problem().empty())
        TellUnsafe(recovery.Problem());
    if (left.empty())
        return;
    QMessageBox question(QMessageBox::Question, tr("Wren"), QuestionAbout(left), QMessageBox::NoButton, &window);
    question.setTextFormat(Qt::PlainText); // names of files may look like markup
    QAbstractButton* open = question.addButton(tr("Open"), QMessageBox::AcceptRole);
    QAbstractButton* discard = question.addButton(tr("Discard"), QMessageBox::DestructiveRole);
    QAbstractButton* later = question.addButton(tr("Ask Later"), QMessageBox::RejectRole);
    question.setEscapeButton(later);
    question.exec();
    if (question.clickedButton() == open)
        OpenLeft(left);
    else if (question.clickedButton() == discard)
        for (const UnsavedText& text : left)
            recovery.Discard(text);
}

// A text that was left is discarded once this editor has a copy of its own.
void SessionKeeper::OpenLeft(const std::vector<UnsavedText>& left)
{
    std::vector<std::pair<const Document*, const UnsavedText*>> open;
    for (const UnsavedText& text : left) {
        const Document* document = OpenLeftText(text, left);
        if (document == nullptr)
            continue;
        Keep(document->Id());
        open.emplace_back(document, &text);
    }
    recovery.Finish();
    for (const auto& [document, text] : open)
        if (!files.IsModified(*document) || recovery.Holds(document->Id(), text->text))
            recovery.Discard(*text);
}

// An old text gets a tab without a file when its file's tab holds another text. A torn file differs from its old state
// because of this editor, so the user is not told that another program has changed it.
const Document* SessionKeeper::OpenLeftText(const UnsavedText& text, const std::vector<UnsavedText>& left)
{
    const bool isAtHome = HasTheTab(text, left);
    if (!documents.OpenUnsaved(isAtHome ? text.path : "", text.text, text.encoding))
        return nullptr;
    const Document* document = host.Current();
    FindBookmarks(document->Id()); // the text that was read has lost them to this one
    if (!IsTorn(text.path, left))
        files.Recovered(*document, text.was);
    if (!text.isOld) {
        tabs.ViewOf(document->Id())->GoTo(text.seen.caret);
        tabs.ViewOf(document->Id())->ShowFromLine(text.seen.firstLine);
    }
    if (text.isOld)
        notices.Tell(
            (isAtHome
                 ? tr("%1 is damaged on the disk: saving it was cut short. Its old text is open here: save to write "
                      "it.")
                 : tr("%1 is damaged on the disk: saving it was cut short. Its old text is open here without a name, "
                      "beside the text that was being saved."))
                .arg(QString::fromStdString(text.path)));
    return document;
}

bool SessionKeeper::Save()
{
    sessionWriter.Finish();
    TakeState(LoadSession(folder));
    std::string error;
    return SaveSession(state, &error, folder);
}

// Another editor may have stored its session meanwhile.
void SessionKeeper::TakeState(const SessionState& stored)
{
    state.geometry = window.saveGeometry().toBase64().toStdString();
    state.layout = window.saveState().toBase64().toStdString();
    state.panels = window.OpenPanels();
    state.recentFiles = stored.recentFiles;
    for (const std::string& path : opened)
        state.Opened(path);
    for (const long document : tabs.Documents())
        KeepBookmarks(document);
    state.marked = stored.marked;
    for (const SessionState::MarkedFile& file : marked)
        state.SetBookmarks(file.path, file.bookmarks);
    ownsFiles = ownsFiles || stored.files.empty();
    if (ownsFiles) {
        TakeOpenFiles();
    } else {
        state.files = stored.files;
        state.current = stored.current;
    }
}

// The Worksheet is open for long, and changes by what runs in it.
void SessionKeeper::KeepBookmarks(long id)
{
    const Document* document = host.AllDocuments().Find(id);
    const CodeView* view = tabs.ViewOf(id);
    if (document == nullptr || view == nullptr || document->Path().empty() || document->IsWorksheet())
        return;
    const std::vector<long> lines = view->Bookmarks();
    const std::vector<KeptBookmark> kept =
        lines.empty() ? std::vector<KeptBookmark>() : BookmarksIn(view->Bytes(), lines);
    if (!state.SetBookmarks(document->Path(), kept))
        return;
    std::erase_if(marked, [&](const SessionState::MarkedFile& file) { return file.path == document->Path(); });
    marked.push_back({document->Path(), kept});
}

void SessionKeeper::FindBookmarks(long id)
{
    const Document* document = host.AllDocuments().Find(id);
    CodeView* view = tabs.ViewOf(id);
    if (document == nullptr || view == nullptr)
        return;
    if (const std::vector<KeptBookmark> kept = state.BookmarksOf(document->Path()); !kept.empty())
        view->SetBookmarks(LinesOf(kept, view->Bytes()));
}

void SessionKeeper::TakeOpenFiles()
{
    state.files.clear();
    state.current = -1;
    for (const long id : tabs.Documents()) {
        const Document* document = host.AllDocuments().Find(id);
        if (document == nullptr || document->Path().empty())
            continue;
        const CodeView* view = tabs.ViewOf(id);
        if (document == host.Current())
            state.current = static_cast<int>(state.files.size());
        state.files.push_back({document->Path(), view->Caret(), view->FirstVisibleLine(), document->IsWorksheet(),
                               view->Bookmarks(), document->Encoding()});
    }
}

void SessionKeeper::KeepUnsaved()
{
    for (const Document* document : host.AllDocuments().All())
        if (files.IsModified(*document))
            Keep(document->Id());
    recovery.Finish();
}

void SessionKeeper::TextChanged(long document)
{
    changed.insert(document);
    const Document* text = host.AllDocuments().Find(document);
    quiet.Happened(MoreFor(text == nullptr ? 0 : text->Length()));
}

std::chrono::milliseconds SessionKeeper::MoreFor(long bytes)
{
    return bytes / kUsual * kMore;
}

void SessionKeeper::FilesChanged()
{
    filesChanged = true;
    quiet.Happened();
}

void SessionKeeper::Settled(long document)
{
    changed.erase(document);
    recovery.Forget(document);
    Safe(document);
}

void SessionKeeper::KeepChanged()
{
    RetryPlace();
    for (const long document : std::exchange(changed, {}))
        Keep(document);
    if (!restoring &&
        std::exchange(filesChanged, false)) // a session that is only half restored must not replace the stored one
        KeepSession();
}

void SessionKeeper::KeepSession()
{
    const SessionState stored = LoadSession(folder);
    TakeState(stored);
    std::string ignored;
    if (state != stored && !SessionFile(folder).empty() && MakeUserDirectory(StateDirectory(), &ignored))
        sessionWriter.Write(SessionFile(folder), "", FormOf(state));
}

void SessionKeeper::Keep(long id)
{
    const Document* document = host.AllDocuments().Find(id);
    if (document != nullptr && files.IsModified(*document)) {
        if (!recovery.Problem().empty())
            return Unsafe(id, recovery.Problem());
        const CodeView& view = *tabs.ViewOf(id);
        recovery.Keep(id, document->Path(), view.Bytes(), files.Known(id), {view.Caret(), view.FirstVisibleLine()},
                      document->Encoding());
    } else {
        recovery.Forget(id);
        Safe(id);
    }
}

void SessionKeeper::Kept(const WrittenCopy& copy)
{
    if (copy.problem.empty())
        Safe(copy.document);
    else
        Unsafe(copy.document, copy.problem);
}

void SessionKeeper::Unsafe(long document, const std::string& reason)
{
    unsafe.insert(document);
    changed.insert(document);
    if (!again.isActive())
        again.start();
    TellUnsafe(reason);
}

// Once for each reason: a notice that the user has dismissed comes back only with another reason.
void SessionKeeper::TellUnsafe(const std::string& reason)
{
    if (std::exchange(told, reason) == reason)
        return;
    QStringList sentences(tr("Unsaved texts are not safe from a crash: %1.").arg(QString::fromStdString(reason)));
    if (Recovery::Place().empty()) {
        sentences.append(tr("Set HOME, or XDG_STATE_HOME, to a directory and start Wren again."));
    } else {
        sentences.append(tr("Copies of unsaved texts belong in %1.").arg(QString::fromStdString(Recovery::Place())));
        sentences.append(QString::fromStdString(AdviceAbout(Recovery::Place())));
        sentences.append(tr("Wren tries again while there are unsaved texts."));
    }
    sentences.removeAll("");
    notices.Tell(sentences.join(' '), kUnsafe);
}

// When the directory was removed, the copies in it are gone too.
void SessionKeeper::RetryPlace()
{
    const bool hadNone = !recovery.Problem().empty();
    if (changed.empty() || !recovery.Retry())
        return;
    for (const Document* document : host.AllDocuments().All())
        if (files.IsModified(*document))
            changed.insert(document->Id());
    if (hadNone && unsafe.empty())
        Withdraw();
}

void SessionKeeper::Safe(long document)
{
    if (unsafe.erase(document) != 0 && unsafe.empty() && recovery.Problem().empty())
        Withdraw();
}

void SessionKeeper::Withdraw()
{
    told.clear();
    notices.Withdraw(kUnsafe);
}

} // namespace wren
