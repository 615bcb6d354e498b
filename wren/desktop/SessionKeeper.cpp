#include "wren/desktop/SessionKeeper.h"

#include "wren/core/Host.h"
#include "wren/desktop/Editor.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/FileKeeper.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/NoticeBar.h"
#include "wren/desktop/WorksheetActions.h"
#include "wren/desktop/editor/CodeView.h"

#include <QAbstractButton>
#include <QMessageBox>
#include <QPushButton>

#include <filesystem>
#include <utility>

namespace wren {

namespace {

constexpr int kQuiet = 2000; // milliseconds without a change before a copy is written

QString ListOf(const std::vector<UnsavedText>& texts)
{
    QStringList lines;
    for (const UnsavedText& text : texts)
        lines.append(SessionKeeper::tr("%1 (%2)")
                         .arg(text.path.empty() ? SessionKeeper::tr("untitled") : QString::fromStdString(text.path),
                              QString::fromStdString(text.savedAt)));
    return lines.join('\n');
}

} // namespace

SessionKeeper::SessionKeeper(Editor& editor)
    : editor(editor), state(LoadSession()), recovery([this](const std::string& problem) {
          const auto tell = [this, problem] {
              if (std::exchange(told, problem) != problem)
                  this->editor.Window().Notices().Tell(tr("What is not saved is not safe from a crash: %1")
                                                           .arg(QString::fromStdString(problem)));
          };
          QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
      })
{
    quiet.setSingleShot(true);
    quiet.setInterval(kQuiet);
    connect(&quiet, &QTimer::timeout, this, &SessionKeeper::KeepChanged);
}

void SessionKeeper::Opened(const std::string& path)
{
    state.Opened(path);
    std::erase(opened, path);
    opened.push_back(path);
}

void SessionKeeper::Restore()
{
    const SessionState last = state;
    restored = true;
    for (const SessionState::OpenFile& file : last.files) {
        std::error_code unknown;
        if (file.worksheet) {
            editor.OpenWorksheet();
        } else if (!std::filesystem::exists(file.path, unknown) || !editor.Open(file.path)) {
            continue; // it went meanwhile: nobody asked for it now
        }
        editor.CurrentView()->GoTo(file.caret);
        editor.CurrentView()->ShowFromLine(file.firstLine);
    }
    if (last.current >= 0 && last.current < static_cast<int>(last.files.size()))
        if (Document* current = editor.TheHost().AllDocuments().FindByPath(last.files[last.current].path))
            editor.Window().Tabs().Raise(current->Id());
}

void SessionKeeper::OfferRecovery()
{
    const std::vector<UnsavedText> left = recovery.Left();
    if (!recovery.Problem().empty())
        editor.Window().Notices().Tell(QString::fromStdString(recovery.Problem()));
    if (left.empty())
        return;
    QMessageBox question(QMessageBox::Question, tr("Wren"),
                         tr("Wren ended without saving these texts:\n\n%1\n\nOpen them as they were?").arg(ListOf(left)),
                         QMessageBox::NoButton, &editor.Window());
    question.setTextFormat(Qt::PlainText); // names of files may look like markup
    QAbstractButton* open = question.addButton(tr("Open"), QMessageBox::AcceptRole);
    QAbstractButton* discard = question.addButton(tr("Discard"), QMessageBox::DestructiveRole);
    QAbstractButton* later = question.addButton(tr("Ask Later"), QMessageBox::RejectRole);
    question.setEscapeButton(later);
    question.exec();
    for (const UnsavedText& text : left) {
        if (question.clickedButton() == open && editor.OpenUnsaved(text.path, text.text)) {
            editor.Files().Recovered(*editor.Current(), text.was);
            Keep(editor.Current()->Id());
            recovery.Discard(text);
        } else if (question.clickedButton() == discard) {
            recovery.Discard(text);
        }
    }
}

bool SessionKeeper::Save()
{
    state.geometry = editor.Window().saveGeometry().toBase64().toStdString();
    const SessionState stored = LoadSession(); // by another editor, meanwhile
    state.recentFiles = stored.recentFiles;
    for (const std::string& path : opened)
        state.Opened(path);
    if (restored || stored.files.empty()) {
        TakeOpenFiles();
    } else {
        state.files = stored.files;
        state.current = stored.current;
    }
    std::string error;
    return SaveSession(state, &error);
}

void SessionKeeper::TakeOpenFiles()
{
    Host& host = editor.TheHost();
    state.files.clear();
    state.current = -1;
    for (const long id : editor.Window().Tabs().Documents()) {
        const Document* document = host.AllDocuments().Find(id);
        if (document == nullptr || document->Path().empty())
            continue;
        const CodeView* view = editor.Window().Tabs().ViewOf(id);
        if (document == host.Current())
            state.current = static_cast<int>(state.files.size());
        state.files.push_back({document->Path(), view->Caret(), view->FirstVisibleLine(), document->IsWorksheet()});
    }
}

void SessionKeeper::KeepUnsaved()
{
    for (const Document* document : editor.TheHost().AllDocuments().All())
        if (editor.Files().IsModified(*document))
            Keep(document->Id());
    recovery.Finish();
}

void SessionKeeper::TextChanged(long document)
{
    changed.insert(document);
    quiet.start();
}

void SessionKeeper::Settled(long document)
{
    changed.erase(document);
    recovery.Forget(document);
}

void SessionKeeper::KeepChanged()
{
    for (const long document : std::exchange(changed, {}))
        Keep(document);
}

void SessionKeeper::Keep(long id)
{
    const Document* document = editor.TheHost().AllDocuments().Find(id);
    if (document == nullptr)
        return;
    if (editor.Files().IsModified(*document))
        recovery.Keep(id, document->Path(), editor.Window().Tabs().ViewOf(id)->Bytes(),
                      editor.Files().Known(id));
    else
        recovery.Forget(id);
}

} // namespace wren
