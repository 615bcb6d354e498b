#include "SessionFiles.h"

#include <fcntl.h>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace {

constexpr time_t kFileTime = 1'000'000'000;
constexpr time_t kApart = 1'000; // seconds that "older" and "newer" files are away from that

// Writes each file "name.in" as "name", with the copy's own path in it.
void FillIn(const fs::path& directory)
{
    for (const fs::path& file : FilesIn(directory)) {
        if (file.extension() != ".in")
            continue;
        fs::path filled = file;
        Write(filled.replace_extension(), Replaced(Read(file), kDir, directory));
        fs::remove(file);
    }
}

time_t TimeOf(Age age)
{
    static time_t newest = kFileTime + 2 * kApart;
    switch (age) {
    case Age::Older:
        return kFileTime - kApart;
    case Age::Same:
        return kFileTime;
    case Age::Newer:
        return kFileTime + kApart;
    case Age::Newest:
        break;
    }
    return ++newest; // times are compared by the second
}

// All files are of one age, but for those that the file "mtimes" names: "older PATH" or "newer PATH", a line each.
void SetAges(const fs::path& directory)
{
    for (const fs::path& file : FilesIn(directory))
        SetAge(file, Age::Same);
    if (!fs::exists(directory / "mtimes"))
        return;
    for (const std::string& line : Lines(Read(directory / "mtimes"))) {
        const std::string age = line.substr(0, line.find(' '));
        if (age != "older" && age != "newer")
            throw std::runtime_error("mtimes: neither older nor newer: " + line);
        SetAge(directory / line.substr(6), age == "older" ? Age::Older : Age::Newer);
    }
}

} // namespace

std::string Read(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        throw std::runtime_error("cannot read " + file.string());
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

void Write(const fs::path& file, const std::string& text)
{
    std::ofstream stream(file, std::ios::binary);
    if (!(stream << text) || !stream.flush())
        throw std::runtime_error("cannot write " + file.string());
}

std::vector<std::string> Lines(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

std::string Replaced(std::string text, const std::string& what, const std::string& with)
{
    for (size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += with.size())
        text.replace(at, what.size(), with);
    return text;
}

std::vector<fs::path> FilesIn(const fs::path& directory)
{
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(directory))
        if (entry.is_regular_file() && !entry.is_symlink())
            files.push_back(entry.path());
    return files;
}

void SetAge(const fs::path& file, Age age)
{
    const time_t seconds = TimeOf(age);
    const timespec times[] = {{seconds, 0}, {seconds, 0}};
    if (::utimensat(AT_FDCWD, file.c_str(), times, AT_SYMLINK_NOFOLLOW) != 0)
        throw std::runtime_error("cannot set the time of " + file.string());
}

Age AgeNamed(const std::string& name)
{
    if (name == "older")
        return Age::Older;
    if (name == "same")
        return Age::Same;
    if (name == "newer")
        return Age::Newest;
    throw std::runtime_error("neither older, same nor newer: " + name);
}

void Prepare(const fs::path& folder, const fs::path& directory)
{
    fs::copy(folder, directory, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
    fs::create_directories(directory / "home");
    FillIn(directory);
    SetAges(directory);
}
