// JSON of messages, and typed reading of it.
#pragma once

#include "wren/lsp/protocol/Failure.h"

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

namespace wren::lsp {

using Json = nlohmann::json;

// A member of an object; throws a Failure (InvalidParams) that names the member when it is missing or of another type.
// 'T' is what nlohmann's get<T>() can make, or has a from_json() here.
template <class T>
T Member(const Json& object, const char* name);

// The same, for a member that may be missing or null.
template <class T>
std::optional<T> OptionalMember(const Json& object, const char* name);

// A member on a way of objects, "textDocument/rename/prepareSupport"; null when it is missing.
const Json* Find(const Json& object, const std::string& way);
// The same as a truth value; false when it is missing or something else.
bool Says(const Json& object, const std::string& way);

// The failure for parameters that cannot be used: "'position' is missing".
[[noreturn]] void RefuseParameters(const std::string& why);

// A message as it comes; discarded (is_discarded()) when it is not JSON, or nested so deeply that reading it would need
// more stack than a thread has. Half a pair of surrogates in it is U+FFFD.
Json ParsedMessage(const std::string& body);

// One message as it is sent. Bytes that are not UTF-8 become U+FFFD.
std::string TextOf(const Json& message);

// Implementation.

template <class T>
T Member(const Json& object, const char* name)
{
    if (!object.is_object() || !object.contains(name))
        RefuseParameters(std::string("'") + name + "' is missing");
    try {
        return object.at(name).get<T>();
    } catch (const Json::exception&) {
        RefuseParameters(std::string("'") + name + "' has a wrong type");
    }
}

template <class T>
std::optional<T> OptionalMember(const Json& object, const char* name)
{
    if (!object.is_object() || !object.contains(name) || object.at(name).is_null())
        return std::nullopt;
    return Member<T>(object, name);
}

} // namespace wren::lsp
