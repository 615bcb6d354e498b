#include "wren/instance/OpenRequest.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace wren {

namespace {

constexpr std::string_view kVersion = "wren-open-1";
constexpr size_t kLongestPath = 4096;
constexpr size_t kLongestToken = 256;
constexpr long kHighest = 1L << 31; // line or column

void Append(std::string* form, std::string_view field)
{
    form->append(field);
    form->push_back('\0');
}

// Each field ends with a NUL, the last one too.
std::vector<std::string_view> FieldsOf(std::string_view form)
{
    std::vector<std::string_view> fields;
    for (size_t end = 0; !form.empty(); form.remove_prefix(end + 1)) {
        end = form.find('\0');
        fields.push_back(form.substr(0, end));
    }
    return fields;
}

std::optional<long> NumberOf(std::string_view field)
{
    long number = 0;
    const auto [end, failure] = std::from_chars(field.data(), field.data() + field.size(), number);
    if (failure != std::errc() || end != field.data() + field.size() || number < 0 || number > kHighest)
        return std::nullopt;
    return number;
}

// Others hear it: the desktop, through the environment.
bool IsToken(std::string_view field)
{
    return field.size() <= kLongestToken &&
           std::ranges::all_of(field, [](char each) { return each > ' ' && each < 0x7f; });
}

std::optional<Place> PlaceOf(std::string_view path, std::string_view line, std::string_view column)
{
    const std::optional<long> atLine = NumberOf(line);
    const std::optional<long> atColumn = NumberOf(column);
    if (!path.starts_with('/') || path.size() > kLongestPath || !atLine || !atColumn)
        return std::nullopt;
    return Place{std::string(path), *atLine, *atColumn};
}

} // namespace

std::string FormOf(const OpenRequest& request)
{
    std::string form;
    Append(&form, kVersion);
    Append(&form, request.waits ? "wait" : "open");
    Append(&form, IsToken(request.activation) ? request.activation : "");
    for (const Place& place : request.places) {
        Append(&form, place.file);
        Append(&form, std::to_string(place.line));
        Append(&form, std::to_string(place.column));
    }
    form.pop_back();
    return form.append(kEndOfRequest);
}

base::Result<OpenRequest> RequestFrom(std::string_view form)
{
    const base::Error damaged{"the request is damaged"};
    if (!form.ends_with(kEndOfRequest) || form.size() > OpenRequest::kMostBytes)
        return damaged;
    form.remove_suffix(kEndOfRequest.size() - 1);
    const std::vector<std::string_view> fields = FieldsOf(form);
    if (fields.size() < 3 || fields.size() % 3 != 0 || fields[0] != kVersion || !IsToken(fields[2]) ||
        (fields[1] != "wait" && fields[1] != "open"))
        return damaged;
    OpenRequest request{{}, fields[1] == "wait", std::string(fields[2])};
    for (size_t i = 3; i < fields.size(); i += 3) {
        std::optional<Place> place = PlaceOf(fields[i], fields[i + 1], fields[i + 2]);
        if (!place)
            return damaged;
        request.places.push_back(std::move(*place));
    }
    return request;
}

} // namespace wren
