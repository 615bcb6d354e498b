#include "Pixels.h"

using Json = nlohmann::ordered_json;

namespace {

constexpr size_t kPlaceOfMenu = 3;

bool IsMove(const Json& entry)
{
    return entry.is_array() && !entry.empty() && entry[0] == "move";
}

void LeaveOutOfLog(Json& log)
{
    Json kept = Json::array();
    for (Json& entry : log) {
        if (IsMove(entry))
            continue;
        if (entry.is_array() && !entry.empty() && entry[0] == "popup")
            entry[kPlaceOfMenu] = nullptr;
        kept.push_back(std::move(entry));
    }
    log = std::move(kept);
}

} // namespace

void LeaveOutPixels(Json& answer)
{
    if (answer.contains("log"))
        LeaveOutOfLog(answer["log"]);
    if (answer.contains("undone") && answer["undone"].is_string())
        answer["undone"] = "";
    if (!answer.contains("state"))
        return;
    answer["state"]["clock"] = nullptr;
    for (Json& window : answer["state"]["windows"])
        window["frame"] = window["limits"] = nullptr;
}
