#include "wren/script/Line.h"

#include "vetch/app/Modifiers.h"

#include <limits>
#include <map>

namespace wren {

namespace {

bool IsLong(const Json& value)
{
    if (value.is_number_unsigned())
        return value.get<unsigned long>() <= static_cast<unsigned long>(std::numeric_limits<long>::max());
    return value.is_number_integer();
}

} // namespace

Line::Line(const Json& object, std::string path) : object(object), path(std::move(path)) {}

std::string Line::Text(const std::string& name) const
{
    const Json& value = Raw(name);
    if (!value.is_string())
        throw Error(name, "is not a text");
    return value.get<std::string>();
}

std::optional<std::string> Line::OptionalText(const std::string& name) const
{
    return Has(name) ? std::optional(Text(name)) : std::nullopt;
}

long Line::Integer(const std::string& name) const
{
    const Json& value = Raw(name);
    if (!IsLong(value))
        throw Error(name, "is not a whole number");
    return value.get<long>();
}

std::optional<long> Line::OptionalInteger(const std::string& name) const
{
    return Has(name) ? std::optional(Integer(name)) : std::nullopt;
}

bool Line::Flag(const std::string& name) const
{
    const Json& value = Raw(name);
    if (!value.is_boolean())
        throw Error(name, "is neither true nor false");
    return value.get<bool>();
}

std::optional<bool> Line::OptionalFlag(const std::string& name) const
{
    return Has(name) ? std::optional(Flag(name)) : std::nullopt;
}

std::vector<std::string> Line::OptionalTexts(const std::string& name) const
{
    std::vector<std::string> texts;
    if (!Has(name))
        return texts;
    const Json& value = Raw(name);
    if (!value.is_array())
        throw Error(name, "is not a list of texts");
    for (const Json& each : value) {
        if (!each.is_string())
            throw Error(name, "is not a list of texts");
        texts.push_back(each.get<std::string>());
    }
    return texts;
}

std::vector<float> Line::Numbers(const std::string& name, size_t count) const
{
    const Json& value = Raw(name);
    std::vector<float> numbers;
    if (value.is_array())
        for (const Json& each : value)
            if (each.is_number())
                numbers.push_back(each.get<float>());
    if (numbers.size() != count || value.size() != count)
        throw Error(name, "is not a list of " + std::to_string(count) + " numbers");
    return numbers;
}

std::optional<Line> Line::OptionalObject(const std::string& name) const
{
    if (!Has(name))
        return std::nullopt;
    const Json& value = Raw(name);
    if (!value.is_object())
        throw Error(name, "is not an object");
    return Line(value, path + name + ".");
}

uint32 Line::OptionalModifiers() const
{
    static const std::map<std::string, uint32> kBits = {{"shift", B_SHIFT_KEY},
                                                        {"command", B_COMMAND_KEY},
                                                        {"control", B_CONTROL_KEY},
                                                        {"option", B_OPTION_KEY},
                                                        {"caps", B_CAPS_LOCK}};
    uint32 bits = 0;
    for (const std::string& modifier : OptionalTexts("modifiers")) {
        const auto found = kBits.find(modifier);
        if (found == kBits.end())
            throw Error("modifiers", "has no \"" + modifier + "\": shift, command, control, option and caps are known");
        bits |= found->second;
    }
    return bits;
}

const Json& Line::Raw(const std::string& name) const
{
    const auto found = object.find(name);
    if (found == object.end())
        throw Error(name, "is missing");
    return *found;
}

LineError Line::Error(const std::string& name, const std::string& what) const
{
    return {path + name + " " + what};
}

} // namespace wren
