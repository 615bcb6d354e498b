// The lines of a tags file, and how to come to some of them without reading those in front.
#pragma once

#include "tagsfile/KnownFiles.h"
#include "tagsfile/LineReader.h"
#include "tagsfile/NameOrder.h"

#include <atomic>
#include <optional>
#include <string>
#include <string_view>

namespace tagsfile {

// Reads one after the other; to read a file from its beginning to its end finds out whether its names are in order, and
// KnownFiles remembers that. A reader that is closed far from the beginning reads on for it, once for each file. A file
// that is known to be in order, or says so itself and proves that nobody has changed it since, is bisected. With and
// without that the same lines are met where it matters, and reading goes on at the same one.
//
// Not thread-safe. As with LineReader, neither destruction nor opening once more closes the file.
class TagLines {
public:
    // See LineReader.
    explicit TagLines(const std::atomic<bool>* isCancelled = nullptr) : reader(isCancelled) {}

    // At the beginning; false when it cannot be opened. A file that is not read (see UnreadFiles) has no lines.
    bool Open(const char* path);
    void Close();

    // Why the file that was opened last is not read, as the rest of a sentence about it; nothing for one that is.
    const std::optional<std::string>& WhyUnread() const { return whyUnread; }

    // The next line or piece of one, as LineReader has them. False at the end.
    bool Next(std::string_view& line)
    {
        if (!reader.Next(line)) {
            RememberOrder();
            return false;
        }
        if (learns)
            order.Add(reader.Previous(), line);
        return true;
    }

    // Passes over lines that are not wanted, as many as it takes no closer look to pass over.
    template <class IsWanted>
    void PassOver(IsWanted isWanted)
    {
        reader.PassOver([&](std::string_view previous, std::string_view line) {
            return !isWanted(line) && (!learns || order.GoesWithoutSaying(previous, line));
        });
    }

    // Passes over lines whose names do not begin with 'start', at most all in front of the first that does. True when
    // it is known that behind a name that sorts after 'start', and does not begin with it, no line does any more. Any
    // call after the first has to be for the same start, until the file is opened again.
    bool SkipTo(std::string_view start);
    void GoToEnd() { reader.GoToEnd(); } // as after the last line

private:
    void FindOrder();
    void ReadOnForOrder();
    void RememberOrder();
    void Bisect(std::string_view start);

    LineReader reader;
    std::optional<base::FileIdentity> identity; // when it was opened
    std::optional<std::string> whyUnread;
    std::optional<FileOrder> known;
    NameOrder order; // of what has been read so far, while it is learned
    bool learns = false;
    bool skipped = false;
};

} // namespace tagsfile
