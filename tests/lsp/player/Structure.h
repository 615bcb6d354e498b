// The structure of messages, as a text describes it: see protocol.types.
#pragma once

#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

// One type: a union of alternatives.
struct MessageType {
    enum class Kind { Name, Literal, Object, List, Union } kind = Kind::Name;
    std::string name;       // of a named type
    nlohmann::json literal; // the only value
    struct Field {
        std::string name;
        bool isOptional = false;
        std::shared_ptr<const MessageType> type;
    };
    std::vector<Field> fields;                               // of an object: it has no others
    std::vector<std::shared_ptr<const MessageType>> members; // the element of a list; the alternatives of a union
};

class Structure {
public:
    explicit Structure(const std::string& text); // throws std::runtime_error

    // What is wrong with a value, or nullopt. 'name' is that of a definition: "Range", "result textDocument/hover".
    std::optional<std::string> Problem(const std::string& name, const nlohmann::json& value) const;
    bool Knows(const std::string& name) const { return types.contains(name); }

private:
    using Type = std::shared_ptr<const MessageType>;
    std::optional<std::string> Problem(const MessageType& type, const nlohmann::json& value,
                                       const std::string& way) const;
    std::optional<std::string> ProblemOfObject(const MessageType& type, const nlohmann::json& value,
                                               const std::string& way) const;
    std::optional<std::string> ProblemOfUnion(const MessageType& type, const nlohmann::json& value,
                                              const std::string& way) const;

    std::map<std::string, Type> types;
};
