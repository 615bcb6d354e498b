// Offering to make tags files where a search finds none: the search is the lower folder's, making them this one's.

#include "generate/CreateTags.h"
#include "tags/TagDiscovery.h"
#include "vetch/interface/BAlert.h"
#include "vetch/storage/BEntry.h"

namespace {

// The misspelling is part of the text that users know.
const char* const kNoTagsText = "There are no local or system tags files. Would you like to generate new ones? Tags "
                                "will be genereated for you or a "
                                "set of ctags commands will be pasted into your Worksheet.";

enum Answer : long { kCancel, kGenerate, kPaste };

void OfferToCreateTags(PluginInterface* host)
{
    auto* alert = new BAlert("DeclarationLookup", kNoTagsText, "Cancel", "Generate tags", "Paste command");
    switch (alert->Go()) { // the alert deletes itself
    case kGenerate:
        CreateTags(host, true, true);
        break;
    case kPaste:
        HelpCreateTags(host, true, true);
        break;
    default:
        break;
    }
}

} // namespace

bool FindOrCreateTags(PluginInterface* host, BEntry& localTags, BEntry& systemTags)
{
    if (FindTags(host, localTags, systemTags))
        return true;
    // Whatever the answer, there are no tags yet: they are made in the background, or by the user.
    OfferToCreateTags(host);
    return false;
}
