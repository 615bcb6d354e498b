#include "wren/desktop/state/JsonBytes.h"

#include "base/Utf8.h"

#include <nlohmann/json.hpp>

namespace wren {

nlohmann::json JsonOfBytes(const std::string& bytes)
{
    if (bytes.empty() || base::IsValidUtf8(bytes))
        return bytes;
    nlohmann::json numbers = nlohmann::json::array();
    for (const unsigned char byte : bytes)
        numbers.push_back(byte);
    return numbers;
}

std::string BytesOfJson(const nlohmann::json& json)
{
    if (!json.is_array())
        return json.get<std::string>();
    std::string bytes;
    for (const nlohmann::json& number : json)
        bytes += static_cast<char>(number.get<unsigned char>());
    return bytes;
}

} // namespace wren
