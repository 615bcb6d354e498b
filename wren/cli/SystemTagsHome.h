// Puts another system tags file in place for one process, without touching the user's own.
#pragma once

#include <string>

namespace wren {

// While it lives, HOME is a temporary directory in which the system tags file is a link to the given one. With "" it
// does nothing. What cannot be used is said in '*error', and nothing has changed then.
class SystemTagsHome {
public:
    SystemTagsHome(const std::string& tagsFile, std::string* error);
    ~SystemTagsHome();
    SystemTagsHome(const SystemTagsHome&) = delete;
    SystemTagsHome& operator=(const SystemTagsHome&) = delete;

private:
    std::string directory; // "" when there is none
    std::string formerHome;
    bool hadHome = false;
};

} // namespace wren
