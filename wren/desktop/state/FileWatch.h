// Tells when the files of open documents change on disk.
#pragma once

#include "wren/desktop/state/FileMark.h"

#include <QObject>
#include <QTimer>

#include <map>
#include <set>
#include <string>

class QSocketNotifier;

namespace wren {

// Watches files and the directories they are in, so that one that is replaced by a rename is followed, and one that
// went is found when it is back. The system reports what happens (inotify): nothing runs while nothing does. Reports
// are looked into a tenth of a second later, when most writers are done. A file whose stamp is the known one is not
// told of, nor one that was only touched or written again with the same content (FileMark). GUI thread.
class FileWatch : public QObject {
    Q_OBJECT
public:
    explicit FileWatch(QObject* parent = nullptr);
    ~FileWatch() override;

    // 'stamp' is that of the file when it was read; a document has one file, and the newest counts.
    void Watch(long document, const std::string& path, const FileMark& mark);
    void Unwatch(long document);
    void Saved(long document, const FileMark& mark); // by this editor, or read again

    // Looks at all files now: some file systems report nothing of what other machines do.
    void Check();

signals:
    void Changed(long document);  // the content is another than it was when last told of
    void Gone(long document);     // there is no file any more
    void CameBack(long document); // there is one again; Changed() follows if its content is another

private:
    struct File {
        std::string path;
        FileMark known; // when last told of
        bool gone = false;
    };

    void Take(File* file, const FileMark& mark);
    void CheckOne(long document);
    void ReadReports();
    bool Concerns(const std::string& name) const;
    void WatchPlaces();
    std::set<std::string> Places() const;

    int reports = -1; // of inotify; -1 where the system gives none, and then only Check() finds anything
    QSocketNotifier* notifier = nullptr;
    QTimer soon;
    std::map<long, File> files;
    std::map<std::string, int> watched; // a place and the number by which it is reported
};

} // namespace wren
