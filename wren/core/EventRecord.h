// One event for the plug-in, and the plug-in's answer.
#pragma once

#include "vetch/app/BHandler.h"
#include "vetch/app/BMessage.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace wren {

// A value: it may wait until the plug-in returns from an earlier event, and its documents may be closed by then.
struct EventRecord {
    long event = 0;
    long document = 0; // identifier; 0 for none
    long windowOf = 0; // the document of the event's window; 0 for no window
    std::string name;
    std::string symbol;
    std::vector<std::string> settingsWords;
    std::string panelIdentifier;
    vetch::HandlerToken panelView = vetch::kNoHandler;
    std::shared_ptr<BMessage> message; // the plug-in may add to it
};

struct EventAnswer {
    long returned = 0;
    long initReplyA = 0;
    long initReplyB = 0;
    std::optional<std::string> returnedValue;
};

} // namespace wren
