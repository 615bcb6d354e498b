// One line of a script, with its fields checked.
#pragma once

#include "vetch/support/Types.h"
#include "wren/script/ScriptLog.h"

#include <optional>
#include <string>
#include <vector>

namespace wren {

// The reason that a line could not be executed. Its text begins with the field at fault. Thrown and caught within this
// folder.
struct LineError {
    std::string text;
};

// Every operation throws LineError for a field of the wrong type, and for a missing one unless it returns an optional.
// Borrows the object.
class Line {
public:
    explicit Line(const Json& object, std::string path = ""); // errors put 'path' before field names

    bool Has(const std::string& name) const { return object.contains(name); }

    std::string Text(const std::string& name) const;
    std::optional<std::string> OptionalText(const std::string& name) const;
    long Integer(const std::string& name) const;
    std::optional<long> OptionalInteger(const std::string& name) const;
    bool Flag(const std::string& name) const;
    std::optional<bool> OptionalFlag(const std::string& name) const;
    std::vector<std::string> OptionalTexts(const std::string& name) const; // a list; empty when missing
    std::vector<float> Numbers(const std::string& name, size_t count) const;
    std::optional<Line> OptionalObject(const std::string& name) const;
    uint32 OptionalModifiers() const; // the field "modifiers", names of keys

    const Json& Raw(const std::string& name) const; // of any type
    const Json& Object() const { return object; }

    LineError Error(const std::string& name, const std::string& what) const;

private:
    const Json& object;
    const std::string path;
};

} // namespace wren
