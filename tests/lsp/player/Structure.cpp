#include "Structure.h"

#include <algorithm>
#include <cctype>
#include <functional>
#include <sstream>
#include <stdexcept>
#include <string_view>

namespace {

using Json = nlohmann::json;
using Type = std::shared_ptr<const MessageType>;

// Reads one type: "{ uri: string, range?: Range } | null", "Location[]", "'utf-8'".
class TypeReader {
public:
    explicit TypeReader(std::string_view text) : rest(text) {}

    Type Whole()
    {
        Type type = Union();
        Skip();
        if (!rest.empty())
            Fail();
        return type;
    }

private:
    [[noreturn]] void Fail() { throw std::runtime_error("a type cannot be read at: " + std::string(rest)); }

    void Skip() { rest.remove_prefix(std::min(rest.find_first_not_of(" \n"), rest.size())); }

    bool Take(std::string_view word)
    {
        Skip();
        if (!rest.starts_with(word))
            return false;
        rest.remove_prefix(word.size());
        return true;
    }

    void Need(std::string_view word)
    {
        if (!Take(word))
            Fail();
    }

    std::string Word()
    {
        Skip();
        size_t size = 0;
        while (size < rest.size() && (std::isalnum(static_cast<unsigned char>(rest[size])) != 0 || rest[size] == '$'))
            ++size;
        const std::string word(rest.substr(0, size));
        if (word.empty())
            Fail();
        rest.remove_prefix(size);
        return word;
    }

    Type Union()
    {
        MessageType all;
        all.kind = MessageType::Kind::Union;
        do
            all.members.push_back(List());
        while (Take("|"));
        return all.members.size() == 1 ? all.members.front() : std::make_shared<const MessageType>(all);
    }

    Type List()
    {
        Type type = Single();
        while (Take("[]")) {
            MessageType list;
            list.kind = MessageType::Kind::List;
            list.members = {type};
            type = std::make_shared<const MessageType>(list);
        }
        return type;
    }

    Type Single()
    {
        MessageType type;
        if (Take("(")) {
            Type inner = Union();
            Need(")");
            return inner;
        }
        if (Take("{"))
            return Object();
        if (Take("'")) {
            type.kind = MessageType::Kind::Literal;
            type.literal = std::string(rest.substr(0, rest.find('\'')));
            rest.remove_prefix(std::min(rest.find('\''), rest.size()));
            Need("'");
            return std::make_shared<const MessageType>(type);
        }
        type.name = Word();
        if (std::isdigit(static_cast<unsigned char>(type.name[0])) != 0 || type.name == "true") {
            type.kind = MessageType::Kind::Literal;
            type.literal = Json::parse(type.name);
        }
        return std::make_shared<const MessageType>(type);
    }

    Type Object()
    {
        MessageType type;
        type.kind = MessageType::Kind::Object;
        while (!Take("}")) {
            MessageType::Field field;
            field.name = Word();
            field.isOptional = Take("?");
            Need(":");
            field.type = Union();
            type.fields.push_back(field);
            Take(",");
        }
        return std::make_shared<const MessageType>(type);
    }

    std::string_view rest;
};

const std::map<std::string, std::function<bool(const Json&)>> kGround = {
    {"string", [](const Json& value) { return value.is_string(); }},
    {"boolean", [](const Json& value) { return value.is_boolean(); }},
    {"null", [](const Json& value) { return value.is_null(); }},
    {"integer", [](const Json& value) { return value.is_number_integer(); }},
    {"uinteger", [](const Json& value) { return value.is_number_unsigned() && value.get<double>() < 2147483648.0; }},
    {"any", [](const Json&) { return true; }},
};

} // namespace

Structure::Structure(const std::string& text)
{
    std::istringstream lines(text);
    std::string definition;
    const auto finish = [&] {
        const size_t sign = definition.find(" = ");
        if (sign != std::string::npos)
            types[definition.substr(0, sign)] = TypeReader(std::string_view(definition).substr(sign + 3)).Whole();
        definition.clear();
    };
    for (std::string line; std::getline(lines, line);) {
        if (line.empty() || line.starts_with('#'))
            continue;
        if (!line.starts_with(' '))
            finish();
        definition += line + "\n";
    }
    finish();
}

std::optional<std::string> Structure::Problem(const std::string& name, const Json& value) const
{
    const auto found = types.find(name);
    if (found == types.end())
        return "'" + name + "' is not part of the protocol, or not known to this client";
    return Problem(*found->second, value, name);
}

std::optional<std::string> Structure::Problem(const MessageType& type, const Json& value, const std::string& way) const
{
    switch (type.kind) {
    case MessageType::Kind::Literal:
        return value == type.literal ? std::nullopt : std::optional(way + " is not " + type.literal.dump());
    case MessageType::Kind::Object:
        return ProblemOfObject(type, value, way);
    case MessageType::Kind::Union:
        return ProblemOfUnion(type, value, way);
    case MessageType::Kind::List:
        if (!value.is_array())
            return way + " is not a list";
        for (size_t at = 0; at < value.size(); ++at)
            if (auto problem = Problem(*type.members[0], value[at], way + "[" + std::to_string(at) + "]"))
                return problem;
        return std::nullopt;
    case MessageType::Kind::Name:
        break;
    }
    if (const auto ground = kGround.find(type.name); ground != kGround.end())
        return ground->second(value) ? std::nullopt : std::optional(way + " is not of type " + type.name);
    const auto found = types.find(type.name);
    if (found == types.end())
        throw std::runtime_error("the type " + type.name + " is not defined");
    return Problem(*found->second, value, way);
}

std::optional<std::string> Structure::ProblemOfObject(const MessageType& type, const Json& value,
                                                      const std::string& way) const
{
    if (!value.is_object())
        return way + " is not an object";
    for (const MessageType::Field& field : type.fields) {
        const auto member = value.find(field.name);
        if (member == value.end()) {
            if (!field.isOptional)
                return way + " has no '" + field.name + "'";
        } else if (auto problem = Problem(*field.type, *member, way + "." + field.name)) {
            return problem;
        }
    }
    for (const auto& [name, member] : value.items()) {
        const auto known =
            std::find_if(type.fields.begin(), type.fields.end(), [&](const auto& field) { return field.name == name; });
        if (known == type.fields.end())
            return way + " has a member '" + name + "' that is not part of the protocol";
    }
    return std::nullopt;
}

std::optional<std::string> Structure::ProblemOfUnion(const MessageType& type, const Json& value,
                                                     const std::string& way) const
{
    std::string all;
    for (const Type& each : type.members) {
        const std::optional<std::string> problem = Problem(*each, value, way);
        if (!problem)
            return std::nullopt;
        all += (all.empty() ? "" : "; or: ") + *problem;
    }
    return all;
}
