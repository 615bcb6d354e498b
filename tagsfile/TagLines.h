// Reads the lines of a tags file, and skips to some of them without reading the lines before.
#pragma once

#include "tagsfile/KnownFiles.h"
#include "tagsfile/LineReader.h"
#include "tagsfile/NameOrder.h"

#include <atomic>
#include <optional>
#include <string>
#include <string_view>

namespace tagsfile {

// Reading a file from beginning to end determines whether its names are in order, and KnownFiles remembers the result.
// A reader that is closed far from the beginning reads on for this, once for each file. A file is bisected if it is
// known to be in order, or claims and proves it. Bisection changes only the time: the same relevant lines are found,
// and reading continues at the same line.
//
// Not thread-safe. As with LineReader, neither destruction nor opening again closes the file.
class TagLines {
public:
    // See LineReader.
    explicit TagLines(const std::atomic<bool>* isCancelled = nullptr) : reader(isCancelled) {}

    // Starts at the beginning; false when the file cannot be opened. A file that is not read (see UnreadFiles) has no
    // lines.
    bool Open(const char* path);
    void Close();

    // Why the last opened file is not read, as the end of a sentence about it; nullopt if it is read.
    const std::optional<std::string>& WhyUnread() const { return whyUnread; }

    // The next line or piece, as from LineReader. False at the end.
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

    // Skips unwanted lines as far as a quick check can decide.
    template <class IsWanted>
    void PassOver(IsWanted isWanted)
    {
        reader.PassOver([&](std::string_view previous, std::string_view line) {
            return !isWanted(line) && (!learns || order.GoesWithoutSaying(previous, line));
        });
    }

    // Skips lines whose names do not begin with 'start', at most all before the first that does. Returns true if it is
    // known that once a name sorts after 'start' without beginning with it, no later name begins with it. Until the
    // file is opened again, every call must have the same 'start'.
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
    NameOrder order; // of the lines read so far, while the order is learned
    bool learns = false;
    bool skipped = false;
};

} // namespace tagsfile
