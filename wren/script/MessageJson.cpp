#include "wren/script/MessageJson.h"

#include <limits>

namespace wren {

namespace {

constexpr const char* kByte = "byte";

template <class T>
T Narrow(const Line& line, const std::string& name)
{
    const long value = line.Integer(name);
    if (value < std::numeric_limits<T>::min() || value > std::numeric_limits<T>::max())
        throw line.Error(name, "is too large");
    return static_cast<T>(value);
}

uint32 CodeOf(const Line& message)
{
    const std::string what = message.Text("what");
    if (what.size() != 4)
        throw message.Error("what", "is not four bytes long");
    const char code[5] = {what[0], what[1], what[2], what[3], '\0'};
    return FourCC(code);
}

Json CodeToJson(uint32 what)
{
    if (what == 0)
        return "";
    std::string code;
    for (const int shift : {24, 16, 8, 0})
        code += static_cast<char>(what >> shift);
    return JsonText(code);
}

const Json kNothing = Json::object();

const Json& Member(const Json& object, const char* name)
{
    const auto found = object.find(name);
    return found == object.end() ? kNothing : *found;
}

} // namespace

BMessage MessageFromJson(const Line& object)
{
    BMessage message(CodeOf(object));
    if (const auto strings = object.OptionalObject("strings"))
        for (const auto& [name, value] : strings->Object().items())
            message.AddString(name.c_str(), strings->Text(name).c_str());
    if (const auto ints = object.OptionalObject("ints")) {
        for (const auto& [name, value] : ints->Object().items()) {
            if (name == kByte)
                message.AddInt8(kByte, Narrow<int8>(*ints, name));
            else
                message.AddInt32(name.c_str(), Narrow<int32>(*ints, name));
        }
    }
    for (const std::string& path : object.OptionalTexts("refs")) {
        const EntryRef ref(path.c_str());
        message.AddRef("refs", &ref);
    }
    return message;
}

Json MessageToJson(const BMessage& message, const Json& object)
{
    Json strings = Json::object();
    for (const auto& [name, value] : Member(object, "strings").items()) {
        const char* text = nullptr;
        if (message.FindString(name.c_str(), &text) == B_OK)
            strings[name] = JsonText(text);
    }
    Json ints = Json::object();
    for (const auto& [name, value] : Member(object, "ints").items()) {
        int32 number = 0;
        int8 byte = 0;
        if (message.FindInt32(name.c_str(), &number) == B_OK)
            ints[name] = number;
        else if (message.FindInt8(name.c_str(), 0, &byte) == B_OK)
            ints[name] = byte;
    }
    Json refs = Json::array();
    EntryRef ref;
    for (int32 i = 0; message.FindRef("refs", i, &ref) == B_OK; ++i)
        refs.push_back(JsonText(ref.Path()));
    Json json;
    json["what"] = CodeToJson(message.what);
    json["strings"] = strings;
    json["ints"] = ints;
    json["refs"] = refs;
    return json;
}

} // namespace wren
