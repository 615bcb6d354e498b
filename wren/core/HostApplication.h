// The application object of the host: receives messages from the plug-in's windows and panels.
#pragma once

#include "vetch/app/BApplication.h"

#include <string>

namespace wren {

// Acts on those messages. Document thread, never during a plug-in call.
class ApplicationClient {
public:
    virtual ~ApplicationClient() = default;

    virtual void MessageForDocument(long document, const BMessage& message) = 0;
    virtual void MessageForFrontDocument(const BMessage& message) = 0;
    virtual void OpenMatch(const std::string& path, long line) = 0; // lines from 1; 0 for none

    // 'why' completes the sentence about the file ("it is too long").
    virtual void TagsFileUnread(const std::string& path, const std::string& why) = 0;
};

class HostApplication : public BApplication {
public:
    explicit HostApplication(ApplicationClient& client) : client(client) {} // borrowed

    void MessageReceived(BMessage* message) override;

private:
    void Unwrap(const BMessage& envelope);
    void OpenRefs(const BMessage& message);
    void ReportUnread(const BMessage& message);

    ApplicationClient& client;
};

} // namespace wren
