// Offers to make tags files where a search finds none: tags/ searches, this folder makes them.

#include "generate/CreateTags.h"
#include "tags/TagDiscovery.h"
#include "vetch/interface/BAlert.h"
#include "vetch/storage/BEntry.h"

namespace {

// Users know the text with its misspelling.
const char* const kNoTagsText = "There are no local or system tags files. Would you like to generate new ones? Tags "
                                "will be genereated for you or a "
                                "set of ctags commands will be pasted into your Worksheet.";

enum Answer : long { kCancel, kGenerate, kPaste };

void OfferToCreateTags(PluginInterface* host)
{
    auto* alert = new BAlert("DeclarationLookup", kNoTagsText, "Cancel", "Generate tags", "Paste command");
    switch (alert->Go()) { // the alert deletes itself
    case kGenerate:
        gTagsActions.create(host, true, true);
        break;
    case kPaste:
        gTagsActions.helpCreate(host, true, true);
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
    // Whatever the answer, there are no tags yet: the user or a background thread makes them.
    OfferToCreateTags(host);
    return false;
}
