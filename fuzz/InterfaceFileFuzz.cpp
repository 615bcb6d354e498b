// Reads any bytes as an interface file. A part is either valid and fits into a window, or an error has been reported
// with its place in the file.
#include "fuzz/Lines.h"
#include "fuzz/Require.h"
#include "tests/support/TempDirectory.h"
#include "vetch/interface/BView.h"
#include "vetch/interface/InterfaceFile.h"
#include "vetch/storage/Bundle.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <memory>
#include <set>
#include <utility>

namespace {

const char* const kParts[] = {"EntryWindow", "org.wren.Declaration", "part", ""};

// A bundle whose interface file can be written.
class Place {
public:
    Place() : bundle{files.Path()}
    {
        vetch::SetInterfaceProblemSink([this](const auto& text) { said.push_back(text); });
    }

    const std::string& Write(const std::string& content)
    {
        lines = 1 + std::count(content.begin(), content.end(), '\n');
        files.Write("Contents/Resources/A.ui", content);
        return path;
    }

    std::vector<std::string> TakeSaid() { return std::exchange(said, {}); }

    void RequirePlaces(const std::vector<std::string>& problems) const
    {
        for (const std::string& problem : problems) {
            long line = 0;
            Require(problem.starts_with(path + ":"), "a problem names the file");
            const char* const number = problem.c_str() + path.size() + 1;
            const auto [end, error] = std::from_chars(number, problem.c_str() + problem.size(), line);
            Require(error == std::errc() && *end == ':' && 1 <= line && line <= lines, "a problem has its line");
        }
    }

    __CFBundle* Bundle() { return &bundle; }

private:
    TempDirectory files;
    __CFBundle bundle;
    const std::string path = files / "Contents/Resources/A.ui";
    std::vector<std::string> said;
    long lines = 0;
};

void RequireSound(const vetch::NibPart& part)
{
    std::set<long> items;
    for (const vetch::NibControl& control : part.controls)
        Require(control.item >= 0 && (control.item == 0 || items.insert(control.item).second), "items are unique");
}

} // namespace

// The first byte chooses the part; the rest is the file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    static Place place;
    const char* const name = kParts[data[0] % std::size(kParts)];
    const std::string& path = place.Write(std::string(reinterpret_cast<const char*>(data) + 1, size - 1));

    const std::optional<vetch::NibPart> part = vetch::ReadInterfaceFile(path, name);
    const std::vector<std::string> problems = place.TakeSaid();
    Require(part.has_value() == problems.empty(), "a part is absent when something is wrong, and only then");
    place.RequirePlaces(problems);
    if (part)
        RequireSound(*part);

    const std::unique_ptr<BView> view(vetch::MakeViewFromNib(place.Bundle(), "A", name));
    Require(place.TakeSaid() == problems, "reading it again finds the same problems");
    return 0;
}
