// The editor's face for one lookup: what the plug-in opens is what was found.
#pragma once

#include "vetch/display/HeadlessDisplay.h"
#include "wren/cli/AskedEditor.h"

#include <algorithm>
#include <string>
#include <vector>

namespace wren {

struct Match {
    std::string path;
    long line = 0;
    std::string item; // as the list of matches shows it
};

// Keeps what lists were filled with, shown or not: a single match is opened from a list that no user ever sees.
class LookupDisplay : public vetch::HeadlessDisplay {
public:
    using HeadlessDisplay::HeadlessDisplay;

    void Apply(vetch::Update update) override;
    std::vector<std::string> LastItems() const; // of the list that was filled last. Any thread

private:
    void Keep(const vetch::ListItemAdded& added);

    mutable std::mutex itemsMutex;
    vetch::HandlerToken lastList = vetch::kNoHandler;
    std::vector<std::string> items;
};

// Document thread.
class LookupFace : public AskedFace {
public:
    const std::vector<Match>& Opened() const { return opened; } // without their items

    // At the line that an editor goes to: tags may name any number, and one below 1 is the first line.
    void OpenMatch(const std::string& path, long line) override { opened.push_back({path, std::max(line, 1L), ""}); }

private:
    std::vector<Match> opened;
};

} // namespace wren
