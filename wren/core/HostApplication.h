// The application object of the host: takes in what the plug-in's windows and panels post.
#pragma once

#include "vetch/app/BApplication.h"

#include <string>

namespace wren {

// Who acts on those messages. Document thread, never while a plug-in call is active.
class ApplicationClient {
public:
    virtual ~ApplicationClient() = default;

    virtual void MessageForDocument(long document, const BMessage& message) = 0;
    virtual void MessageForFrontDocument(const BMessage& message) = 0;
    virtual void OpenMatch(const std::string& path, long line) = 0; // lines from 1; 0 for none given

    // 'why' is the rest of the sentence about it ("it is too long").
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
