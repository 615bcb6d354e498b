#include "wren/core/HostApplication.h"

#include "vetch/app/Modifiers.h"

namespace wren {

namespace {

constexpr uint32 kForDocument = FourCC("plgp");     // "documentID", "message"
constexpr uint32 kTagsFileUnread = FourCC("tgur");  // "path", "why"
constexpr uint32 kDirectoryChosen = FourCC("gnlt"); // posted by a file panel, without fields

} // namespace

void HostApplication::MessageReceived(BMessage* message)
{
    switch (message->what) {
    case kForDocument:
        return Unwrap(*message);
    case kDirectoryChosen:
        // A panel knows the application but not the document, so the front document stands for the one that opened it.
        return client.MessageForFrontDocument(*message);
    case B_REFS_RECEIVED:
        return OpenRefs(*message);
    case kTagsFileUnread:
        return ReportUnread(*message);
    default:
        return BApplication::MessageReceived(message);
    }
}

void HostApplication::Unwrap(const BMessage& envelope)
{
    int32 document = 0;
    BMessage message;
    if (envelope.FindInt32("documentID", &document) == B_OK && envelope.FindMessage("message", &message) == B_OK)
        client.MessageForDocument(document, message);
}

// A list invoked outside its items posts an empty reference: there is nothing to open.
void HostApplication::OpenRefs(const BMessage& message)
{
    int32 line = 0;
    message.FindInt32("be:line", &line);
    EntryRef ref;
    for (int32 i = 0; message.FindRef("refs", i, &ref) == B_OK; ++i)
        if (ref.name != nullptr)
            client.OpenMatch(ref.Path(), line);
}

void HostApplication::ReportUnread(const BMessage& message)
{
    const char* path;
    const char* why;
    if (message.FindString("path", &path) == B_OK && message.FindString("why", &why) == B_OK)
        client.TagsFileUnread(path, why);
}

} // namespace wren
