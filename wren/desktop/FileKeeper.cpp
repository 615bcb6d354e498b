#include "wren/desktop/FileKeeper.h"

#include "wren/core/Host.h"
#include "wren/core/TemporaryFile.h"
#include "wren/core/TextFile.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/NoticeBar.h"
#include "wren/desktop/PlainBox.h"
#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/state/FileWatch.h"
#include "wren/text/TextChange.h"

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

// The Worksheet has a file of its own in the state directory, if there is one, and is saved without a question.
bool HasItsOwnPlace(const Document& document)
{
    return document.IsWorksheet() && !document.Path().empty();
}

// The panel takes names as characters: a name that is not UTF-8 would come back changed. Then a directory is proposed.
QString ProposalFor(const std::string& path)
{
    std::string proposal = path;
    while (QString::fromStdString(proposal).toStdString() != proposal)
        proposal.resize(proposal.find_last_of('/', proposal.size() - 2) + 1);
    return QString::fromStdString(proposal);
}

std::string ContentOf(const std::string& file) // "" when there is none
{
    std::string ignored;
    return ReadWholeFile(file, &ignored).value_or("");
}

std::string WithLineEnded(const std::string& text)
{
    return text.empty() || text.ends_with('\n') ? text : text + '\n';
}

// The lines of 'now' that differ from 'before'.
std::string LinesThatCame(const std::string& before, const std::string& now)
{
    const TextChange change = ChangeBetween(WithLineEnded(before), WithLineEnded(now));
    return WithLineEnded(now).substr(static_cast<size_t>(change.offset), static_cast<size_t>(change.inserted));
}

// A text in UTF-8 may have got bytes that are not, or have lost the last one of them.
TextEncoding DetectedAfter(const std::string& bytes, const TextEncoding& encoding)
{
    const TextEncoding usual;
    const bool isOther = encoding.hasMark || (encoding != usual && !encoding.name.empty());
    return isOther ? encoding : PlainEncodingOf(bytes);
}

// A document's notices have one subject, so that the newest replaces the others.
QString SubjectOf(long document)
{
    return QString("document %1").arg(document);
}

} // namespace

FileKeeper::FileKeeper(Host& host, EditorTabs& tabs, NoticeBar& notices, QWidget& window)
    : host(host), tabs(tabs), notices(notices), window(window), watch(new FileWatch(this))
{
    connect(watch, &FileWatch::Changed, this, &FileKeeper::ChangedOnDisk);
    connect(watch, &FileWatch::Gone, this, &FileKeeper::GoneFromDisk);
    connect(watch, &FileWatch::CameBack, this, &FileKeeper::BackOnDisk);
}

FileKeeper::~FileKeeper() = default;

std::optional<FileText> FileKeeper::Read(const std::string& path, const TextEncoding& expected,
                                         std::string* error) const
{
    std::optional<FileText> read = ReadFileText(path, expected, error);
    if (read && read->decoded.encoding.name.empty() && configured)
        read->decoded = DecodeAs(std::move(read->decoded.text), configured(path));
    return read;
}

void FileKeeper::Opened(Document& document, const std::optional<FileMark>& read)
{
    RemoveLeftTemporaries(); // an editor may have been killed since
    if (document.Path().empty())
        return;
    if (document.IsWorksheet()) {
        knownWorksheet = ContentOf(document.Path());
        known[document.Id()] = MarkOf(base::FileIdentity::At(document.Path()), knownWorksheet);
        return;
    }
    const FileMark& mark = known[document.Id()] =
        read ? *read : MarkOf(base::FileIdentity::At(document.Path()), ViewOf(document)->Bytes());
    watch->Watch(document.Id(), document.Path(), mark);
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
    if (!base::FileIdentity::At(document.Path()) || !HasChanged(document.Path(), was))
        return;
    if (document.IsWorksheet())
        knownWorksheet = ViewOf(document)->Bytes(); // any other lines of the file are another editor's
    else
        notices.Tell(tr("%1 was changed by another program since your unsaved text was kept. Save to overwrite it, or "
                        "choose File > Revert to load its text.")
                         .arg(QString::fromStdString(document.Path())),
                     SubjectOf(document.Id()));
}

void FileKeeper::Check()
{
    watch->Check();
}

void FileKeeper::Closed(long document)
{
    watch->Unwatch(document);
    known.erase(document);
    notices.Withdraw(SubjectOf(document));
}

bool FileKeeper::Save(Document& document)
{
    if (document.Path().empty())
        return SaveAs(document);
    return (HasItsOwnPlace(document) || MayOverwrite(document)) && Write(document, document.Path());
}

// The Worksheet stays where it is: what is saved under a name is a copy of it.
bool FileKeeper::SaveAs(Document& document)
{
    const QString path = QFileDialog::getSaveFileName(&window, tr("Save As"), ProposalFor(document.Path()));
    if (path.isEmpty())
        return false;
    if (Document* other = host.AllDocuments().FindByPath(path.toStdString()); other != nullptr && other != &document) {
        Complain(path.toStdString() + ": it is open in another tab; close that one first");
        return false;
    }
    const bool copies = HasItsOwnPlace(document) && path.toStdString() != document.Path();
    return copies ? WriteText(path.toStdString(), ViewOf(document)->Bytes()) : Write(document, path.toStdString());
}

void FileKeeper::Revert(Document& document)
{
    if (!document.Path().empty() && MayDiscard(document))
        Reload(document);
}

bool FileKeeper::MayDiscard(const Document& document)
{
    return !IsModified(document) ||
           AskPlainly(QMessageBox::Question, &window,
                      tr("Discard your changes to %1 and load the file's text?").arg(NameOf(document)),
                      QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}

// The Worksheet's file is the editor's own.
void FileKeeper::ReloadIn(Document& document, const TextEncoding& encoding)
{
    if (document.Path().empty() || document.IsWorksheet() || !MayDiscard(document))
        return;
    std::string error;
    if (const std::optional<FileText> read = ReadFileTextIn(document.Path(), encoding, &error))
        TakeAgain(document, *read);
    else
        Complain(error);
}

bool FileKeeper::SaveIn(Document& document, const TextEncoding& encoding)
{
    if (document.IsWorksheet())
        return false;
    const TextEncoding before = document.Encoding();
    document.SetEncoding(encoding);
    const bool isSaved = Save(document);
    if (!isSaved)
        document.SetEncoding(before);
    return isSaved;
}

bool FileKeeper::MayGo(Document& document)
{
    const bool isModified = IsModified(document);
    if (!isModified && !IsGone(document))
        return true;
    if (isModified && HasItsOwnPlace(document) && Write(document, document.Path()))
        return true;
    tabs.Raise(document.Id());
    const QString question = isModified ? tr("Save the changes to %1?")
                                        : tr("%1 is no longer there. Save its text, which now exists only here?");
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
    return !document.IsWorksheet() && Known(document.Id()).stamp && !base::FileIdentity::At(document.Path());
}

bool FileKeeper::Write(Document& document, const std::string& path)
{
    const bool renamed = path != document.Path();
    if (HasItsOwnPlace(document))
        TakeInOthersLines(document);
    CodeView* view = ViewOf(document);
    if (!document.IsWorksheet())
        view->TidyForSaving();
    const base::Result<std::string> bytes = Encode(view->Bytes(), document.Encoding());
    if (!bytes) {
        Complain(path + ": not saved: " + bytes.Failure().Message() +
                 "; choose an encoding that has it in the menu Edit, Encoding");
        return false;
    }
    if (!WriteText(path, *bytes))
        return false;
    document.SetEncoding(DetectedAfter(*bytes, document.Encoding()));
    const FileMark mark = MarkOf(base::FileIdentity::At(path), *bytes);
    if (renamed) {
        Closed(document.Id());
        document.SetPath(path);
        view->SetLanguageFor(path);
        Opened(document, mark);
    } else {
        KnowAs(document, mark);
        if (document.IsWorksheet())
            knownWorksheet = *bytes;
    }
    view->MarkSaved();
    emit Saved(document.Id());
    return true;
}

bool FileKeeper::WriteText(const std::string& path, const std::string& text)
{
    std::string error;
    const bool written = WriteWholeFile(path, text, &error);
    if (!written)
        Complain(error);
    return written;
}

bool FileKeeper::MayOverwrite(const Document& document)
{
    if (!known.contains(document.Id()) || !base::FileIdentity::At(document.Path()) ||
        !HasChanged(document.Path(), known[document.Id()]))
        return true;
    return AskPlainly(QMessageBox::Warning, &window,
                      tr("Another program has changed %1 since it was read here. Overwrite it?")
                          .arg(QString::fromStdString(document.Path())),
                      QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::Yes;
}

// They are added at the end. A line may then stand there twice, but none is lost.
void FileKeeper::TakeInOthersLines(Document& worksheet)
{
    if (!HasChanged(worksheet.Path(), Known(worksheet.Id())))
        return;
    const std::string theirs = ContentOf(worksheet.Path());
    const std::string came = LinesThatCame(knownWorksheet, theirs);
    const std::string mine = ViewOf(worksheet)->Bytes();
    knownWorksheet = theirs;
    if (came.empty())
        return;
    worksheet.BeginUndo({}, "Take In");
    worksheet.Insert(worksheet.Length(), WithLineEnded(mine).substr(mine.size()) + came);
    worksheet.CloseUndo();
}

void FileKeeper::Reload(Document& document)
{
    std::string error;
    if (const std::optional<FileText> read = Read(document.Path(), document.Encoding(), &error))
        TakeAgain(document, *read);
    else
        Complain(error);
}

void FileKeeper::TakeAgain(Document& document, const FileText& read)
{
    host.Events().DocumentChanged(); // the plug-in's windows point into the text that goes
    ViewOf(document)->ReadAgain(read.decoded.text);
    document.SetEncoding(read.decoded.encoding);
    KnowAs(document, read.mark);
    if (document.IsWorksheet())
        knownWorksheet = read.decoded.text;
    emit ReadAgain(document.Id());
}

// The text and its file are the same.
void FileKeeper::KnowAs(const Document& document, const FileMark& mark)
{
    known[document.Id()] = mark;
    watch->Saved(document.Id(), known[document.Id()]);
    notices.Withdraw(SubjectOf(document.Id()));
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
    if (HasChanged(document->Path(), Known(id)))
        notices.Tell(tr("%1 was changed by another program. Your unsaved changes are kept: save to overwrite it, or "
                        "choose File > Revert to load its text.")
                         .arg(QString::fromStdString(document->Path())),
                     SubjectOf(id));
    else
        notices.Withdraw(SubjectOf(id)); // another program has restored the old text
}

void FileKeeper::GoneFromDisk(long id)
{
    const Document* document = host.AllDocuments().Find(id);
    if (document != nullptr)
        notices.Tell(tr("%1 is no longer there. Its text is kept here: save to write it again.")
                         .arg(QString::fromStdString(document->Path())),
                     SubjectOf(id));
}

// A file that comes back with another text counts as changed as well.
void FileKeeper::BackOnDisk(long id)
{
    const Document* document = host.AllDocuments().Find(id);
    if (document == nullptr)
        return;
    notices.Withdraw(SubjectOf(id));
    if (IsModified(*document))
        ChangedOnDisk(id);
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
