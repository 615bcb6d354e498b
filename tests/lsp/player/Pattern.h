// What a message must look like, with holes for what varies.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

// The string "..." stands for any value; "..." within a string, for any text. A member "..." lets an object have more
// members; a last element "..." lets a list have more elements. Says where a value differs; nullopt when it fits.
std::optional<std::string> Mismatch(const nlohmann::json& pattern, const nlohmann::json& value,
                                    const std::string& way = "");
