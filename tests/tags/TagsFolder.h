// A directory with a tags file and its sources, and functions that show what is read from it.
#pragma once

#include "tags/TagFile.h"
#include "tests/support/HeldFile.h"
#include "tests/support/TempDirectory.h"
#include "tests/support/WaitLimit.h"
#include "tests/tagsfile/OwnCache.h"
#include "vetch/storage/BEntry.h"
#include "vetch/storage/EntryRef.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/stat.h>
#include <vector>

// A line in ctags' form; 'scope' as "class:Bar".
inline std::string TagLine(const std::string& name, const std::string& file, int line, const std::string& kind,
                           const std::string& scope = "")
{
    return name + "\t" + file + "\t" + std::to_string(line) + ";\"\t" + kind + (scope.empty() ? "" : "\t" + scope) +
           "\n";
}

inline void SetTime(const std::string& path, time_t seconds)
{
    const timespec times[] = {{seconds, 0}, {seconds, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, AT_SYMLINK_NOFOLLOW), 0) << path;
}

// A time that no other file of this process has: path caches tell files apart only by their times.
inline time_t NewTime()
{
    static time_t last = 1'000'000'000;
    return ++last;
}

class TagsFolder {
public:
    // The tags file is "tags"; the sources a.cpp and b.h exist.
    explicit TagsFolder(const std::string& tags = "")
    {
        directory.Write("a.cpp", "int a = 1 + 1;\n");
        directory.Write("b.h", "extern int b;\n");
        WriteTags(tags);
    }

    void WriteTags(const std::string& tags) const
    {
        directory.Write("tags", tags);
        SetTime(Tags(), NewTime());
    }
    std::string Tags() const { return directory / "tags"; }
    BEntry Entry() const { return BEntry(Tags().c_str()); }

    TempDirectory directory;
};

// A tags file whose reader waits until the test continues it.
class HeldTagsFile {
public:
    HeldTagsFile() { EXPECT_TRUE(MakeHeldFile(Path())); }

    BEntry Entry() const { return BEntry(Path().c_str()); }
    std::string Path() const { return directory / "tags"; }

    // Returns when the reader has opened the file too; the file ends when the returned stream is closed.
    std::ofstream Open() const
    {
        const WaitLimit limit("the held tags file had been opened by its reader");
        return std::ofstream(Path());
    }

private:
    TempDirectory directory;
};

// "Bar::Foo f a.cpp:12": a match in the tests' form. Includes the rest of a qualifier that contains further fields.
inline std::string Shown(const std::string& name, const std::string& qualifier, char kind, const EntryRef& ref,
                         int line)
{
    return (qualifier.empty() ? "" : qualifier + "::") + name + " " + kind + " " +
           (ref.name == nullptr ? "(unset)" : ref.name) + ":" + std::to_string(line);
}

using Lines = std::vector<std::string>;

// All matches in a tags file.
template <class Match = TagFile::ExactMatch>
Lines Matches(const BEntry& tags, const std::string& pattern, Match match = {}, bool stopAtMismatch = false)
{
    TagFile file(&tags, pattern, false);
    Lines found;
    if (!file.Rewind())
        return {"(cannot be opened)"};
    std::string name;
    std::string qualifier;
    char kind;
    EntryRef ref;
    int line;
    while (file.NextMatch(name, qualifier, kind, ref, line, stopAtMismatch, match))
        found.push_back(Shown(name, qualifier, kind, ref, line));
    file.Done();
    return found;
}

// All names with their qualifiers, as read by completion.
inline Lines Names(const BEntry& tags)
{
    TagFile file(&tags, "", false);
    Lines found;
    if (!file.Rewind())
        return {"(cannot be opened)"};
    std::string name;
    std::string qualifier;
    while (file.Next(name, qualifier))
        found.push_back(qualifier.empty() ? name : qualifier + "::" + name);
    file.Done();
    return found;
}

// All paths, as read by path caches.
inline Lines Paths(const BEntry& tags)
{
    TagFile file(&tags, "", false);
    Lines found;
    if (!file.Rewind())
        return {"(cannot be opened)"};
    std::vector<char*> paths;
    file.LoadPathCache(paths);
    file.Done();
    for (char* path : paths) {
        found.push_back(path);
        std::free(path);
    }
    return found;
}

inline long OpenDescriptors()
{
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return std::distance(begin(all), end(all));
}
