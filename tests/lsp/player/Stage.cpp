#include "Stage.h"

#include <filesystem>
#include <stdexcept>

namespace {

using Json = nlohmann::json;

constexpr std::string_view kOpen = "‹";
constexpr std::string_view kClose = "›";

void Replace(std::string& text, std::string_view what, const std::string& by)
{
    for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size()))
        text.replace(at, what.size(), by);
}

unsigned Units(std::string_view text)
{
    unsigned units = 0;
    for (const char each : text) {
        const auto byte = static_cast<unsigned char>(each);
        if ((byte & 0xC0) != 0x80)
            units += byte >= 0xF0 ? 2 : 1;
    }
    return units;
}

} // namespace

void Stage::Write(const std::string& file, const std::string& textWithMarks)
{
    std::string text = textWithMarks;
    for (size_t at = text.find(kOpen); at != std::string::npos; at = text.find(kOpen, at)) {
        const size_t end = text.find(kClose, at);
        if (end == std::string::npos)
            throw std::runtime_error("a mark that does not end in " + file);
        const std::string_view before = std::string_view(text).substr(0, at);
        const size_t line = before.find_last_of('\n') + 1; // 0 when there is none
        Mark mark{file, 0, Units(before.substr(line))};
        for (const char each : before)
            mark.line += each == '\n';
        marks[text.substr(at + kOpen.size(), end - at - kOpen.size())] = mark;
        text.erase(at, end + kClose.size() - at);
    }
    const std::string path = scratch.Write("tree/" + file, text);
    if (text.starts_with("#!"))
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    texts[file] = text;
}

const std::string& Stage::Text(const std::string& file) const
{
    const auto found = texts.find(file);
    if (found == texts.end())
        throw std::runtime_error("there is no file " + file);
    return found->second;
}

Json Stage::Place(const std::string& name) const
{
    const auto found = marks.find(name);
    if (found == marks.end())
        throw std::runtime_error("there is no mark " + name);
    return {{"line", found->second.line}, {"character", found->second.character}};
}

Json Stage::Subject(const std::string& word) const
{
    const bool isMark = word.starts_with('@');
    const std::string name = isMark ? word.substr(1) : word;
    if (!isMark)
        return {{"textDocument", {{"uri", "file://" + root + "/" + word}}}};
    const Json place = Place(name);
    return {{"textDocument", {{"uri", "file://" + root + "/" + marks.at(name).file}}}, {"position", place}};
}

std::string Stage::Filled(const std::string& given) const
{
    std::string text = given;
    Replace(text, "$uri", "file://" + root);
    Replace(text, "$root", root);
    Replace(text, "$home", Home());
    return text;
}

Json Stage::Filled(const Json& value) const
{
    if (value.is_object()) {
        Json filled = Json::object();
        for (const auto& [name, member] : value.items())
            filled[Filled(name)] = Filled(member);
        return filled;
    }
    if (value.is_array()) {
        Json filled = Json::array();
        for (const Json& each : value)
            filled.push_back(Filled(each));
        return filled;
    }
    if (!value.is_string())
        return value;
    const std::string text = value;
    if (!text.starts_with('@'))
        return Filled(text);
    const size_t dots = text.find("..");
    if (dots != std::string::npos)
        return {{"start", Place(text.substr(1, dots - 1))}, {"end", Place(text.substr(dots + 2))}};
    const std::string name = text.substr(1);
    return !marks.contains(name) && texts.contains(name) ? Json(texts.at(name)) : Place(name);
}
