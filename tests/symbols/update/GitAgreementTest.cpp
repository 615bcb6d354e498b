// Compares what counts as a source in a git work tree with what git itself says.
#include "base/Paths.h"
#include "symbols/update/SourceNames.h"
#include "tests/support/FileContent.h"
#include "tests/support/GitRepository.h"
#include "tests/symbols/update/PathsFound.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace symbols {

namespace {

// Tracked files, and untracked ones that are not ignored.
std::vector<std::string> SourcesOfGit(const GitRepository& repository)
{
    const std::string output = repository.Git({"ls-files", "-z", "--cached", "--others", "--exclude-standard"});
    std::vector<std::string> paths;
    for (size_t start = 0, end; (end = output.find('\0', start)) != std::string::npos; start = end + 1)
        if (const std::string path = output.substr(start, end - start);
            IsSourceName(path.substr(path.rfind('/') + 1)) && std::filesystem::exists(repository.Top() + "/" + path))
            paths.push_back(path);
    std::ranges::sort(paths);
    paths.erase(std::unique(paths.begin(), paths.end()), paths.end());
    return paths;
}

class Random {
public:
    explicit Random(unsigned seed) : engine(seed) {}
    size_t Below(size_t end) { return std::uniform_int_distribution<size_t>(0, end - 1)(engine); }
    template <class List>
    auto OneOf(const List& list)
    {
        return list[Below(std::size(list))];
    }

private:
    std::mt19937 engine;
};

std::string RandomPattern(Random& random)
{
    static const std::string kParts[] = {"a",           "b",       "ab",    "d",     "*",   "?",    "[ab]", "[!a]",
                                         "[a-d]",       "**",      "/",     "/",     ".c",  ".h",   "\\*",  "x y",
                                         "[[:alpha:]]", "**/",     "/**",   "\\[",   "]",   "[]a]", "\\a",  "-",
                                         "[b-]",        "[[:d:]]", "[[:a]", "[^/b]", "***", "[a"};
    std::string pattern = random.Below(5) == 0 ? "!" : "";
    for (size_t i = 0, length = 1 + random.Below(5); i < length; ++i)
        pattern += random.OneOf(kParts);
    static const std::string kEnds[] = {"", "", "", "", "/", " ", "\\ ", "\r", "\\"};
    return pattern + random.OneOf(kEnds);
}

std::string RandomIgnoreFile(Random& random)
{
    std::string text = random.Below(8) == 0 ? "\xef\xbb\xbf" : "";
    for (size_t i = 0, lines = random.Below(6); i < lines; ++i)
        text += RandomPattern(random) + "\n";
    return text;
}

void WriteTree(const GitRepository& repository)
{
    const std::string directories[] = {"",     "a/",     "b/",   "ab/",    "d/",   "a/b/",      "a/d/",
                                       "d/a/", "d/a/b/", "x y/", "d/x y/", "[a]/", "a/b/ab/d/", "a*/"};
    for (const std::string& directory : directories)
        for (const char* leaf : {"a.c", "b.c", "ab.c", "a.h", "x y.c", "[a].c", "*.c", "].c", "-.c", "\\.c"})
            repository.Write(directory + leaf, "");
}

} // namespace

TEST(GitAgreement, HoldsForRandomIgnoreFiles)
{
    if (!GitRepository::IsPossible())
        GTEST_SKIP() << "git is not installed";
    const GitRepository repository;
    WriteTree(repository);
    repository.Git({"add", "-f", "a/b/a.c", "d/x y/b.c", "ab.c"}); // tracked, whatever is ignored
    Random random(17);
    constexpr size_t kRounds = 80;
    for (size_t round = 0; round < kRounds; ++round) {
        std::string all;
        for (const char* file : {".gitignore", "a/.gitignore", "d/a/.gitignore", ".git/info/exclude"})
            all.append(file).append(":\n").append(Content(repository.Write(file, RandomIgnoreFile(random))));
        ASSERT_EQ(PathsIn(repository.Top()), SourcesOfGit(repository)) << base::ShownLines(all);
    }
}

TEST(GitAgreement, HoldsForTheUsersOwnFile)
{
    if (!GitRepository::IsPossible())
        GTEST_SKIP() << "git is not installed";
    const GitRepository repository;
    WriteTree(repository);
    std::filesystem::create_directories(repository.Home() + "/.config/git");
    std::ofstream(repository.Home() + "/.config/git/ignore") << "a.*\n";
    EXPECT_EQ(PathsIn(repository.Top()), SourcesOfGit(repository));
    std::ofstream(repository.Home() + "/.gitconfig") << "[user]\nname = A\n[Core]\n\texcludesFile = \"~/own\"\n";
    std::ofstream(repository.Home() + "/own") << "b.*\n/d\n";
    const std::vector<std::string> found = PathsIn(repository.Top());
    EXPECT_EQ(found, SourcesOfGit(repository));
    EXPECT_FALSE(std::ranges::count(found, "b.c"));
    EXPECT_TRUE(std::ranges::count(found, "a.c"));
}

TEST(GitAgreement, HoldsForAllFormsOfTheIndex)
{
    if (!GitRepository::IsPossible())
        GTEST_SKIP() << "git is not installed";
    struct Form {
        const char* why;
        std::vector<std::string> options;
        std::vector<std::string> command;
    };
    const Form kForms[] = {{"version 2", {}, {"update-index", "--index-version", "2"}},
                           {"version 3", {}, {"add", "-N", "-f", "d/a.h"}},
                           {"version 4", {}, {"update-index", "--index-version", "4"}},
                           {"a split index", {}, {"update-index", "--split-index"}},
                           {"SHA-256", {"--object-format=sha256"}, {"status"}}};
    for (const Form& form : kForms) {
        const GitRepository repository(form.options);
        WriteTree(repository);
        repository.Write(".gitignore", "*\n");
        repository.Git({"add", "-f", "a", "d/a/b.c", "ab.c", "x y", "b/b.c"});
        repository.Git(form.command);
        repository.Git({"add", "-f", "d/a/b/ab.c"});
        const std::vector<std::string> found = PathsIn(repository.Top());
        EXPECT_EQ(found, SourcesOfGit(repository)) << form.why;
        EXPECT_GT(found.size(), 30u) << form.why;
    }
}

TEST(GitAgreement, HoldsForWorkTreesOfOneRepository)
{
    if (!GitRepository::IsPossible())
        GTEST_SKIP() << "git is not installed";
    const GitRepository repository;
    repository.Write("a.c", "");
    repository.Write("b.c", "");
    repository.Commit("both");
    repository.Write(".git/info/exclude", "*.c\n");
    repository.Git({"worktree", "add", "-q", "../other"});
    const std::string other = base::DirectoryOf(repository.Top()) + "/other";
    std::ofstream(other + "/c.c") << "";
    EXPECT_EQ(PathsIn(other), (std::vector<std::string>{"a.c", "b.c"}));
    EXPECT_EQ(repository.Git({"-C", other, "ls-files", "-co", "--exclude-standard"}), "a.c\nb.c\n");
}

} // namespace symbols
