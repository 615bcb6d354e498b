// Keeps the tags files of projects current while the user works.
#pragma once

#include "wren/core/Preferences.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QObject>
#include <QProcess>
#include <QTimer>

#include <functional>
#include <map>
#include <set>
#include <string>

namespace wren {

// The command line's program makes them, from the index, at a low priority: nothing waits for it, and what is in a tree
// cannot bring the editor down. It starts some seconds after the last change. The old file stays until the new one
// takes its place.
//
// Only a file is replaced that the user owns, that our own tags program has made, and that is no larger than
// kLargestTags. GUI thread.
class TagsRefresher : public QObject {
    Q_OBJECT
public:
    struct Parts {
        std::string program;  // "wren" by its path
        std::string settings; // the file of stored settings, which say what is tagged; "" for none
        std::function<PreferenceValues::KeepTags()> wanted;
        std::function<bool(const std::string& file)> isMade; // by the plug-in, now
    };
    explicit TagsRefresher(Parts parts);
    ~TagsRefresher() override; // ends what runs

    static constexpr long kLargestTags = 64L << 20; // bytes

    void FileChanged(const std::string& path); // a source; absolute
    bool IsBusy() const { return !waiting.empty() || process.state() != QProcess::NotRunning; }

signals:
    void Made(); // a tags file is new

private:
    std::string PlaceFor(const std::string& path) const; // the directory whose tags are to be made; "" for none
    bool MayReplace(const std::string& directory) const;
    void StartNext();
    void Ended();

    const Parts parts;
    std::set<std::string> waiting; // directories
    std::string current;
    std::map<std::string, QDeadlineTimer> notBefore; // directories that lately took long, or failed
    QTimer pause;
    QElapsedTimer since; // the process has started
    QProcess process;
};

} // namespace wren
