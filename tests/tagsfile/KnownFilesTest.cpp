#include "tagsfile/KnownFiles.h"

#include "tests/support/FileContent.h"
#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <filesystem>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace tagsfile {

namespace {

namespace fs = std::filesystem;

// A different file for each inode, settled and worth keeping.
base::FileIdentity File(uint64_t inode, off_t size = 1'000'000)
{
    return {12, inode, size, {1'700'000'000, 123'456'789}};
}

constexpr FileOrder kInOrder = {true, 77};
constexpr FileOrder kNotInOrder = {false, 0};

size_t CountFiles(const std::string& directory)
{
    return static_cast<size_t>(std::distance(fs::directory_iterator(directory), fs::directory_iterator()));
}

std::string OnlyFile(const std::string& directory)
{
    EXPECT_EQ(CountFiles(directory), 1u);
    return fs::directory_iterator(directory)->path();
}

// Looks the file up with an empty memory, as a new process does.
std::optional<FileOrder> FoundElsewhere(const std::string& directory, const base::FileIdentity& file)
{
    return KnownFiles(directory).Find(file);
}

} // namespace

TEST(KnownFiles, AreForgottenAfterAnyChange)
{
    KnownFiles known("");
    const base::FileIdentity file = File(1);
    EXPECT_FALSE(known.Find(file));
    known.Remember(file, kInOrder);
    EXPECT_EQ(known.Find(file), kInOrder);

    base::FileIdentity others[] = {file, file, file, file, file};
    ++others[0].device;
    ++others[1].inode;
    ++others[2].size;
    ++others[3].modified.tv_sec;
    ++others[4].modified.tv_nsec;
    for (const base::FileIdentity& other : others)
        EXPECT_FALSE(known.Find(other)) << &other - others;

    known.Remember(file, kNotInOrder);
    EXPECT_EQ(known.Find(file), kNotInOrder);
    known.Forget(file);
    EXPECT_FALSE(known.Find(file));
}

TEST(KnownFiles, AreKnownToOtherProcesses)
{
    const TempDirectory directory;
    const std::string cache = directory / "not/there/yet";
    KnownFiles known(cache);
    known.Remember(File(1), kInOrder);
    known.Remember(File(2), kNotInOrder);
    EXPECT_EQ(FoundElsewhere(cache, File(1)), kInOrder);
    EXPECT_EQ(FoundElsewhere(cache, File(2)), kNotInOrder);
    EXPECT_FALSE(FoundElsewhere(cache, File(3)));
    known.Forget(File(1));
    EXPECT_FALSE(FoundElsewhere(cache, File(1)));
    EXPECT_EQ(FoundElsewhere(cache, File(2)), kNotInOrder);
}

TEST(KnownFiles, SmallFilesAreKnownToThisProcessOnly)
{
    const TempDirectory directory;
    KnownFiles known(directory.Path());
    known.Remember(File(1, KnownFiles::kWorthKeeping - 1), kInOrder);
    EXPECT_EQ(CountFiles(directory.Path()), 0u);
    EXPECT_EQ(known.Find(File(1, KnownFiles::kWorthKeeping - 1)), kInOrder);
    known.Remember(File(1, KnownFiles::kWorthKeeping), kInOrder);
    EXPECT_EQ(CountFiles(directory.Path()), 1u);
}

TEST(KnownFiles, DamagedRecordsAreIgnored)
{
    const TempDirectory directory;
    KnownFiles(directory.Path()).Remember(File(1), kInOrder);
    const std::string path = OnlyFile(directory.Path());
    const std::string record = Content(path);
    ASSERT_GT(record.length(), 40u);
    const auto isKnownWith = [&](const std::string& content) {
        fs::remove(path);
        std::ofstream(path, std::ios::binary) << content;
        return FoundElsewhere(directory.Path(), File(1)).has_value();
    };
    EXPECT_TRUE(isKnownWith(record));
    for (size_t length = 0; length < record.length(); ++length)
        EXPECT_FALSE(isKnownWith(record.substr(0, length))) << length;
    for (size_t place = 0; place < record.length(); ++place) {
        for (int bit = 0; bit < 8; ++bit) {
            std::string damaged = record;
            damaged[place] = static_cast<char>(damaged[place] ^ (1 << bit));
            EXPECT_FALSE(isKnownWith(damaged)) << place << ", bit " << bit;
        }
    }
    EXPECT_FALSE(isKnownWith(record + "\n"));
    EXPECT_FALSE(isKnownWith(record + std::string(100'000, 'x')));
    EXPECT_FALSE(isKnownWith(std::string(record.length(), '\0')));
}

TEST(KnownFiles, ARecordUnderAnotherFilesNameIsIgnored)
{
    const TempDirectory directory;
    const std::string one = directory / "one";
    const std::string other = directory / "other";
    KnownFiles(one).Remember(File(1), kInOrder);
    KnownFiles(other).Remember(File(2), kInOrder);
    fs::copy_file(OnlyFile(one), OnlyFile(other), fs::copy_options::overwrite_existing);
    EXPECT_FALSE(FoundElsewhere(other, File(2)));
}

TEST(KnownFiles, OnlyTheProcessRemembersWithoutAUsableDirectory)
{
    const TempDirectory directory;
    fs::create_directory(directory / "read-only");
    fs::permissions(directory / "read-only", fs::perms::owner_read | fs::perms::owner_exec);
    const struct {
        const char* why;
        std::string directory;
    } kCases[] = {
        {"none", ""},
        {"a file in its place", directory.Write("file", "content")},
        {"a file in its parent's place", directory / "file/cache"},
        {"not writable", directory / "read-only/cache"},
        {"a device that is full", "/dev/full/cache"},
        {"what no system can make", "/proc/cache"},
    };
    for (const auto& c : kCases) {
        KnownFiles known(c.directory);
        known.Remember(File(1), kInOrder);
        EXPECT_EQ(known.Find(File(1)), kInOrder) << c.why;
        known.Forget(File(1));
        EXPECT_FALSE(known.Find(File(1))) << c.why;
    }
    EXPECT_EQ(Content(directory / "file"), "content");
}

TEST(KnownFiles, OtherFilesInPlaceOfARecordAreLeftAlone)
{
    const TempDirectory directory;
    KnownFiles(directory.Path()).Remember(File(1), kInOrder);
    const std::string path = OnlyFile(directory.Path());
    fs::remove(path);
    fs::create_directory(path);
    KnownFiles known(directory.Path());
    known.Remember(File(1), kInOrder);
    EXPECT_EQ(known.Find(File(1)), kInOrder);
    EXPECT_FALSE(FoundElsewhere(directory.Path(), File(1)));
    EXPECT_EQ(CountFiles(directory.Path()), 1u) << "and no unfinished file stays";

    fs::remove(path);
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    EXPECT_FALSE(FoundElsewhere(directory.Path(), File(1))) << "a pipe that nobody writes keeps nobody waiting";
}

TEST(KnownFiles, TheOldestRecordsAreRemoved)
{
    const TempDirectory directory;
    directory.Write("of-the-user", "stays");
    KnownFiles known(directory.Path());
    const auto age = [&](int hours) {
        for (const fs::directory_entry& entry : fs::directory_iterator(directory.Path()))
            fs::last_write_time(entry, entry.last_write_time() - std::chrono::hours(hours));
    };
    for (uint64_t i = 0; i < KnownFiles::kMostKept + 10; ++i) {
        known.Remember(File(i), kInOrder);
        age(1);
    }
    EXPECT_EQ(CountFiles(directory.Path()), KnownFiles::kMostKept + 1);
    EXPECT_EQ(Content(directory / "of-the-user"), "stays");
    EXPECT_FALSE(FoundElsewhere(directory.Path(), File(0)));
    EXPECT_FALSE(FoundElsewhere(directory.Path(), File(9)));
    EXPECT_TRUE(FoundElsewhere(directory.Path(), File(10)));
    EXPECT_TRUE(FoundElsewhere(directory.Path(), File(KnownFiles::kMostKept + 9)));
}

TEST(KnownFiles, LeftoversOfAKilledProcessAreRemovedAfterAWhile)
{
    const TempDirectory directory;
    directory.Write("new-aBcDeF", "half of a record");
    directory.Write("new-gHiJkL", "of a process that is at it");
    fs::last_write_time(directory / "new-aBcDeF", fs::file_time_type::clock::now() - std::chrono::hours(2));
    KnownFiles(directory.Path()).Remember(File(1), kInOrder);
    EXPECT_FALSE(fs::exists(directory / "new-aBcDeF"));
    EXPECT_TRUE(fs::exists(directory / "new-gHiJkL"));
    EXPECT_EQ(CountFiles(directory.Path()), 2u);
}

TEST(KnownFiles, TheProcessForgetsTheOldestOfVeryMany)
{
    KnownFiles known("");
    for (uint64_t i = 0; i < 10'000; ++i)
        known.Remember(File(i), kInOrder);
    EXPECT_FALSE(known.Find(File(0)));
    EXPECT_EQ(known.Find(File(9'999)), kInOrder);
}

TEST(KnownFiles, ProcessesDoNotDisturbOneAnother)
{
    const TempDirectory directory;
    std::vector<pid_t> processes;
    for (int process = 0; process < 4; ++process) {
        processes.push_back(::fork());
        if (processes.back() != 0)
            continue;
        bool good = true;
        for (uint64_t i = 0; i < 300; ++i) {
            KnownFiles(directory.Path()).Remember(File(i % 20), {true, static_cast<off_t>(i % 20)});
            if (i % 7 == 0)
                KnownFiles(directory.Path()).Forget(File(i % 20));
            const std::optional<FileOrder> found = KnownFiles(directory.Path()).Find(File((i + 3) % 20));
            good = good && (!found || *found == FileOrder{true, static_cast<off_t>((i + 3) % 20)});
        }
        ::_exit(good ? 0 : 1);
    }
    for (const pid_t process : processes) {
        int status = -1;
        ::waitpid(process, &status, 0);
        EXPECT_EQ(status, 0);
    }
    EXPECT_LE(CountFiles(directory.Path()), 20u) << "nothing unfinished stays";
}

TEST(KnownFiles, ThreadsMayAskConcurrently)
{
    const TempDirectory directory;
    KnownFiles known(directory.Path());
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&known] {
            for (uint64_t i = 0; i < 200; ++i) {
                known.Remember(File(i % 9), kInOrder);
                EXPECT_EQ(known.Find(File((i + 1) % 9)).value_or(kInOrder), kInOrder);
                known.Forget(File(i % 5));
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
}

} // namespace tagsfile
