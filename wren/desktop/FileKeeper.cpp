#include "wren/desktop/FileKeeper.h"

#include "wren/core/Host.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/NoticeBar.h"
#include "wren/desktop/PlainBox.h"
#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/state/FileWatch.h"

#include <QFileDialog>
#include <QFileInfo>

namespace wren {

namespace {

QString NameOf(const Document& document)
{
    if (document.IsWorksheet())
        return FileKeeper::tr("Worksheet");
    return document.Path().empty() ? FileKeeper::tr("untitled")
                                   : QFileInfo(QString::fromStdString(document.Path())).fileName();
}

// The Worksheet is nobody's file: it is kept for the user without a question, where there is a place for it.
bool HasItsOwnPlace(const Document& document)
{
    return document.IsWorksheet() && !document.Path().empty();
}

} // namespace

FileKeeper::FileKeeper(Host& host, EditorTabs& tabs, NoticeBar& notices, QWidget& window)
    : host(host), tabs(tabs), notices(notices), window(window), watch(new FileWatch(this))
{
    connect(watch, &FileWatch::Changed, this, &FileKeeper::ChangedOnDisk);
    connect(watch, &FileWatch::Gone, this, &FileKeeper::GoneFromDisk);
}

FileKeeper::~FileKeeper() = default;

void FileKeeper::Opened(Document& document)
{
    if (document.Path().empty() || document.IsWorksheet())
        return;
    const FileMark& mark = known[document.Id()] = MarkOf(StampOf(document.Path()), ViewOf(document)->Bytes());
    watch->Watch(document.Id(), document.Path(), mark.stamp);
}

FileMark FileKeeper::Known(long document) const
{
    const auto found = known.find(document);
    return found == known.end() ? FileMark() : found->second;
}

void FileKeeper::Recovered(const Document& document, const FileMark& was)
{
    if (!known.contains(document.Id()))
        return;
    known[document.Id()] = was;
    if (StampOf(document.Path()).exists && HasChanged(document.Path(), was))
        notices.Tell(tr("%1 was changed by another program since your unsaved text was kept. Save to write over it, or "
                        "choose File > Revert to take its text.")
                         .arg(QString::fromStdString(document.Path())));
}

void FileKeeper::Check()
{
    watch->Check();
}

void FileKeeper::Closed(long document)
{
    watch->Unwatch(document);
    known.erase(document);
}

bool FileKeeper::Save(Document& document)
{
    if (document.Path().empty())
        return SaveAs(document);
    return MayOverwrite(document) && Write(document, document.Path());
}

// The Worksheet stays where it is: what is saved under a name is a copy of it.
bool FileKeeper::SaveAs(Document& document)
{
    const QString path = QFileDialog::getSaveFileName(&window, tr("Save As"), QString::fromStdString(document.Path()));
    if (path.isEmpty())
        return false;
    if (Document* other = host.AllDocuments().FindByPath(path.toStdString()); other != nullptr && other != &document) {
        Complain(path.toStdString() + ": it is open in another tab; close that one first");
        return false;
    }
    return HasItsOwnPlace(document) ? WriteText(document, path.toStdString()) : Write(document, path.toStdString());
}

void FileKeeper::Revert(Document& document)
{
    if (document.Path().empty())
        return;
    if (IsModified(document) &&
        AskPlainly(QMessageBox::Question, &window,
                   tr("Give up your changes of %1 and take the file's text?").arg(NameOf(document)),
                   QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return;
    Reload(document);
}

bool FileKeeper::MayGo(Document& document)
{
    const bool isModified = IsModified(document);
    if (!isModified && !IsGone(document))
        return true;
    if (isModified && HasItsOwnPlace(document) && Write(document, document.Path()))
        return true;
    tabs.Raise(document.Id());
    const QString question =
        isModified ? tr("Save the changes of %1?") : tr("%1 is no longer there. Save its text, which is only here now?");
    switch (AskPlainly(QMessageBox::Question, &window, question.arg(NameOf(document)),
                       QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save)) {
    case QMessageBox::Save:
        return Save(document);
    case QMessageBox::Discard:
        return true;
    default:
        return false;
    }
}

bool FileKeeper::IsModified(const Document& document) const
{
    const CodeView* view = ViewOf(document);
    return view != nullptr && view->IsModified();
}

bool FileKeeper::IsGone(const Document& document) const
{
    return Known(document.Id()).stamp.exists && !StampOf(document.Path()).exists;
}

bool FileKeeper::Write(Document& document, const std::string& path)
{
    if (!WriteText(document, path))
        return false;
    CodeView* view = ViewOf(document);
    const bool renamed = path != document.Path();
    if (renamed) {
        Closed(document.Id());
        document.SetPath(path);
        view->SetLanguageFor(path);
        Opened(document);
    } else if (!document.IsWorksheet()) {
        known[document.Id()] = MarkOf(StampOf(path), view->Bytes());
        watch->Saved(document.Id(), known[document.Id()].stamp);
    }
    view->MarkSaved();
    emit Saved(document.Id());
    return true;
}

bool FileKeeper::WriteText(const Document& document, const std::string& path)
{
    std::string error;
    const bool written = WriteWholeFile(path, ViewOf(document)->Bytes(), &error);
    if (!written)
        Complain(error);
    return written;
}

bool FileKeeper::MayOverwrite(const Document& document)
{
    if (!known.contains(document.Id()) || !StampOf(document.Path()).exists ||
        !HasChanged(document.Path(), known[document.Id()]))
        return true;
    return AskPlainly(QMessageBox::Warning, &window,
                      tr("Another program has changed %1 since it was read here. Write over it?")
                          .arg(QString::fromStdString(document.Path())),
                      QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::Yes;
}

bool FileKeeper::Reload(Document& document)
{
    std::string error;
    const FileStamp stamp = StampOf(document.Path());
    const std::optional<std::string> text = ReadWholeFile(document.Path(), &error);
    if (!text) {
        Complain(error);
        return false;
    }
    host.Events().DocumentChanged(); // the plug-in's windows point into the text that goes
    ViewOf(document)->ReadAgain(*text);
    known[document.Id()] = MarkOf(stamp, *text);
    watch->Saved(document.Id(), known[document.Id()].stamp);
    return true;
}

void FileKeeper::ChangedOnDisk(long id)
{
    Document* document = host.AllDocuments().Find(id);
    if (document == nullptr)
        return;
    if (!IsModified(*document)) {
        Reload(*document);
        return;
    }
    notices.Tell(tr("%1 was changed by another program. Your unsaved changes are kept: save to write over it, or choose "
                    "File > Revert to take its text.")
                     .arg(QString::fromStdString(document->Path())));
}

void FileKeeper::GoneFromDisk(long id)
{
    const Document* document = host.AllDocuments().Find(id);
    if (document != nullptr)
        notices.Tell(tr("%1 is no longer there. Its text is kept here: save to write it again.")
                         .arg(QString::fromStdString(document->Path())));
}

void FileKeeper::Complain(const std::string& error)
{
    AskPlainly(QMessageBox::Critical, &window, QString::fromStdString(error));
}

CodeView* FileKeeper::ViewOf(const Document& document) const
{
    return tabs.ViewOf(document.Id());
}

} // namespace wren
