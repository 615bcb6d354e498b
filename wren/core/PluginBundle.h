// The plug-in's bundle: a directory that holds its library, its resources and its Info.plist.
#pragma once

#include "vetch/storage/Bundle.h"

#include <memory>
#include <string>

class PluginInterface;

namespace wren {

// A loaded bundle. Its library is never unmapped: windows and threads may still run its code after the host drops it.
class PluginBundle {
public:
    // Null when it cannot be used; '*error' then names what is missing: the directory, the library or the symbol.
    static std::unique_ptr<PluginBundle> Load(const std::string& directory, std::string* error);

    // Beside the program, or in ../lib/wren from there; the first of the two when neither exists.
    static std::string DefaultDirectory();

    // A plug-in that does nothing, for an editor whose bundle cannot be used.
    static std::unique_ptr<PluginBundle> Nothing();
    bool IsNothing() const { return bundle.path.empty(); }

    long Main(long event, PluginInterface* record) const { return main(event, record); }
    std::string Help() const;

    // From Info.plist; "" when it is missing or names none.
    const std::string& Identifier() const { return identifier; }
    __CFBundle* Directory() { return &bundle; }
    const void* CodeAddress() const; // somewhere in its library

private:
    using MainFunction = long (*)(long, PluginInterface*);
    using HelpFunction = const char* (*)();

    PluginBundle(const std::string& directory, MainFunction main, HelpFunction help);

    __CFBundle bundle;
    MainFunction main;
    HelpFunction help;
    std::string identifier;
};

} // namespace wren
