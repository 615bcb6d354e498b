// Reports changes to the files of open documents.
#pragma once

#include "base/Descriptor.h"
#include "wren/desktop/state/FileMark.h"

#include <QObject>
#include <QTimer>

#include <map>
#include <set>
#include <string>

class QSocketNotifier;

namespace wren {

// Watches files and their directories, so that it follows a file that is replaced by a rename, and finds a removed file
// when it is back. The system reports changes (inotify): nothing runs while nothing changes. It looks into a report a
// tenth of a second later, when most writers are done. It does not report a file with the known stamp, nor one that was
// only touched or rewritten with the same content (FileMark). GUI thread.
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
    void Changed(long document);  // the content differs from the last one that was reported or saved
    void Gone(long document);     // the file no longer exists
    void CameBack(long document); // the file exists again; Changed() follows if its content differs

private:
    struct File {
        std::string path;
        FileMark known; // as last reported or saved
        bool gone = false;
    };

    void Take(File* file, const FileMark& mark);
    void CheckOne(long document);
    void ReadReports();
    bool Concerns(const std::string& name) const;
    void WatchPlaces();
    std::set<std::string> Places() const;

    base::Descriptor reports; // of inotify; none where the system gives none, and then only Check() finds anything
    QSocketNotifier* notifier = nullptr;
    QTimer soon;
    std::map<long, File> files;
    std::map<std::string, int> watched; // a place and the number by which it is reported
};

} // namespace wren
