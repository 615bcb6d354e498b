#include "tests/symbols/robust/SourceTree.h"

#include "tests/support/RunProgram.h"

#include <algorithm>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr const char* kDirectories[] = {"", "core/", "core/text/", "gui/", "gui/old/"};
constexpr const char* kSuffixes[] = {".h", ".cpp", ".c", ".hpp", ".m", ""}; // the last: a header if it looks like one

std::string Numbered(const char* word, unsigned long number)
{
    return word + std::to_string(number);
}

} // namespace

SourceTree::SourceTree(unsigned long seed, size_t files, bool withGit) : withGit(withGit), random(seed)
{
    fs::create_directories(root);
    fs::create_directories(directory / "home");
    for (size_t file = 0; file < files; ++file)
        Add();
    if (!withGit)
        return;
    Git({"init", "--quiet", "--initial-branch=one"});
    Commit("two");
    for (int change = 0; change < 4; ++change)
        Edit();
    Add();
    Remove();
    Commit("three");
}

std::set<std::string> SourceTree::Words()
{
    std::set<std::string> words = {"return", "helper", "absent", "int"};
    for (unsigned long number = 0; number < 12; ++number)
        words.insert({Numbered("use_", number), Numbered("Shape", number), Numbered("LIMIT_", number)});
    return words;
}

std::string SourceTree::Source(unsigned long number)
{
    const auto n = [number](unsigned long factor) { return std::to_string(number * factor % 11); };
    std::string text = "#include \"part" + n(3) + ".h\"\n#include <core/part" + n(5) + ".hpp>\n#define LIMIT_" + n(2) +
                       " 3\n/* absent in comments */\nstatic int helper;\nint function_" + n(7) +
                       "(int a, char* b);\n" + "struct Record" + n(4) + " { int first; struct Record" + n(4) +
                       "* next_" + n(6) + "; };\n" + "enum Colour" + n(9) + " { RED_" + n(1) + ", GREEN_" + n(8) +
                       " };\ntypedef struct Record" + n(4) + " Alias" + n(2) + ";\nint function_" + n(7) +
                       "(int a, char* b) { return a + use_" + n(10) + "(LIMIT_" + n(2) + ", \"absent\"); }\n";
    if (number % 3 != 0)
        return text;
    text += "#ifdef __cplusplus\nnamespace outer { namespace inner" + n(3) + " {\nclass Shape" + n(1) +
            " : public Shape" + n(2) + ", private Base<int> {\npublic:\n    virtual int area_" + n(4) +
            "() const { return 0; }\nprotected:\n    int member" + n(6) + ";\n};\ntemplate <class T> T pick" + n(5) +
            "(T one, int other = 0);\n} }\nusing outer::inner" + n(3) + "::Shape" + n(1) + ";\n#endif\n";
    return text;
}

std::string SourceTree::Step()
{
    // Usual changes come more often.
    static constexpr Action kActions[] = {
        &SourceTree::Edit,     &SourceTree::Edit,   &SourceTree::Edit,     &SourceTree::EditAtOldTime,
        &SourceTree::Add,      &SourceTree::Add,    &SourceTree::Remove,   &SourceTree::Rename,
        &SourceTree::Rename,   &SourceTree::Touch,  &SourceTree::Touch,    &SourceTree::RenameDirectory,
        &SourceTree::Replace,  &SourceTree::Ignore, &SourceTree::Checkout, &SourceTree::Link,
        &SourceTree::Restrict,
    };
    return (this->*kActions[Below(std::size(kActions))])();
}

std::vector<std::string> SourceTree::Files() const
{
    std::vector<std::string> files;
    std::error_code ignored;
    for (fs::recursive_directory_iterator i(root, fs::directory_options::skip_permission_denied, ignored), end;
         i != end; i.increment(ignored)) {
        if (i->path().filename() == ".git")
            i.disable_recursion_pending();
        else if (fs::is_regular_file(fs::symlink_status(i->path(), ignored)) && i->path().filename() != ".wrenignore")
            files.push_back(i->path());
    }
    std::ranges::sort(files); // the order of a directory depends on the file system
    return files;
}

std::string SourceTree::AFile()
{
    const std::vector<std::string> files = Files();
    return files.empty() ? "" : files[Below(files.size())];
}

std::string SourceTree::ANewName()
{
    const std::string suffix = kSuffixes[Below(std::size(kSuffixes))];
    return root + "/" + kDirectories[Below(std::size(kDirectories))] + "part" + std::to_string(Below(30)) + suffix;
}

void SourceTree::Write(const std::string& path, const std::string& text)
{
    std::error_code ignored;
    fs::create_directories(fs::path(path).parent_path(), ignored);
    std::ofstream(path, std::ios::binary) << text;
    // A file that has just been written is compared by its content: most have to be old for their times to count.
    if (random() % 4 != 0)
        SetOldTime(path);
}

void SourceTree::SetOldTime(const std::string& path)
{
    const timespec when = {1'000'000'000 + static_cast<time_t>(++serial), static_cast<long>(Below(1'000'000'000))};
    const timespec times[2] = {when, when};
    ::utimensat(AT_FDCWD, path.c_str(), times, 0);
}

std::string SourceTree::Edit()
{
    const std::string path = AFile();
    if (!path.empty())
        Write(path, Below(6) == 0 ? "no code\n" : Source(++serial));
    return "edit " + path;
}

// An editor's clock, or an archive, may set any time.
std::string SourceTree::EditAtOldTime()
{
    const std::string path = AFile();
    if (path.empty())
        return "";
    Write(path, Source(++serial));
    SetOldTime(path);
    return "edit with an old time " + path;
}

std::string SourceTree::Add()
{
    const std::string path = ANewName();
    Write(path, Source(++serial));
    return "write " + path;
}

std::string SourceTree::Remove()
{
    const std::string path = AFile();
    ::unlink(path.c_str());
    return "remove " + path;
}

std::string SourceTree::Rename()
{
    const std::string from = AFile();
    const std::string to = ANewName();
    std::error_code ignored;
    fs::create_directories(fs::path(to).parent_path(), ignored);
    fs::rename(from, to, ignored);
    return "rename " + from + " " + to;
}

std::string SourceTree::RenameDirectory()
{
    const std::string from = root + "/gui";
    const std::string to = root + "/core/widgets";
    std::error_code failed;
    fs::rename(from, to, failed);
    if (!failed)
        return "rename " + from + " " + to;
    fs::rename(to, from, failed);
    return "rename " + to + " " + from;
}

std::string SourceTree::Touch()
{
    const std::string path = AFile();
    ::utimensat(AT_FDCWD, path.c_str(), nullptr, 0);
    return "touch " + path;
}

// As editors save: another file takes the name.
std::string SourceTree::Replace()
{
    const std::string path = AFile();
    if (path.empty())
        return "";
    Write(path + "~", Source(++serial));
    std::error_code ignored;
    fs::rename(path + "~", path, ignored);
    return "replace " + path;
}

std::string SourceTree::Ignore()
{
    static constexpr const char* kRules[] = {"", "part1*\n", "/core/text/\n!*.h\n", "*.c\n!part2.c\n"};
    const char* rule = kRules[Below(std::size(kRules))];
    Write(root + (Below(2) == 0 ? "/.wrenignore" : "/core/.wrenignore"), rule);
    return std::string("ignore ") + rule;
}

std::string SourceTree::Link()
{
    const std::string target = AFile();
    const std::string link = ANewName();
    if (target.empty())
        return "";
    std::error_code ignored;
    fs::create_directories(fs::path(link).parent_path(), ignored);
    Below(2) == 0 ? fs::create_symlink(target, link, ignored) : fs::create_hard_link(target, link, ignored);
    return "link " + target + " " + link;
}

std::string SourceTree::Restrict()
{
    if (IsRestricted()) {
        Restore();
        return "restore permissions";
    }
    const std::string path = Below(3) == 0 ? root + "/core" : AFile();
    if (::chmod(path.c_str(), 0) == 0)
        restricted.insert(path);
    return "restrict " + path;
}

void SourceTree::Restore()
{
    for (const std::string& path : restricted)
        ::chmod(path.c_str(), 0700);
    restricted.clear();
}

std::string SourceTree::Checkout()
{
    if (!withGit)
        return "";
    static constexpr const char* kBranches[] = {"one", "two", "three"};
    const char* branch = kBranches[Below(std::size(kBranches))];
    Restore();
    Git({"checkout", "--quiet", "--force", branch});
    return std::string("checkout ") + branch;
}

bool SourceTree::Git(const std::vector<std::string>& words) const
{
    std::vector<std::string> command = {"/usr/bin/git", "-c", "user.name=Tester", "-c",
                                        "user.email=tester@example.org"};
    command.insert(command.end(), words.begin(), words.end());
    return RunProgram(command, root, {{"HOME", directory / "home"}, {"GIT_CONFIG_NOSYSTEM", "1"}}).status == 0;
}

void SourceTree::Commit(const char* branch)
{
    Git({"add", "--all"});
    Git({"commit", "--quiet", "--message", "More"});
    Git({"checkout", "--quiet", "-b", branch});
}
