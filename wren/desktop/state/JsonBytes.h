// Bytes in JSON, which knows only text.
#pragma once

#include <nlohmann/json_fwd.hpp>

#include <string>

namespace wren {

// A path may be any bytes. UTF-8 becomes a string, other bytes an array of numbers.
nlohmann::json JsonOfBytes(const std::string& bytes);
std::string BytesOfJson(const nlohmann::json& json); // throws nlohmann::json::exception for anything else

} // namespace wren
