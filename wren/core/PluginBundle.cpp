#include "wren/core/PluginBundle.h"

#include "vetch/storage/BPath.h"

#include <cstring>
#include <dlfcn.h>
#include <filesystem>
#include <pugixml.hpp>

namespace wren {

namespace {

namespace fs = std::filesystem;

constexpr const char* kLibrary = "/Contents/Linux/Declaration";

std::string ReadIdentifier(const std::string& file)
{
    pugi::xml_document document;
    document.load_file(file.c_str()); // a damaged file is read up to the damage
    for (const pugi::xml_node key : document.child("plist").child("dict").children("key"))
        if (std::strcmp(key.child_value(), "CFBundleIdentifier") == 0)
            return key.next_sibling("string").child_value();
    return "";
}

std::string LoaderError()
{
    const char* error = ::dlerror();
    return error == nullptr ? "unknown reason" : error;
}

} // namespace

std::unique_ptr<PluginBundle> PluginBundle::Load(const std::string& directory, std::string* error)
{
    const std::string path = BPath(directory.c_str()).Path();
    const std::string library = path + kLibrary;
    std::error_code ignored;
    if (!fs::is_directory(path, ignored)) {
        *error = "no bundle directory " + (path.empty() ? "\"\"" : path);
        return nullptr;
    }
    if (!fs::exists(library, ignored)) {
        *error = "the bundle has no library " + library;
        return nullptr;
    }
    void* handle = ::dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (handle == nullptr) {
        *error = library + " is not a library that can be loaded: " + LoaderError();
        return nullptr;
    }
    void* symbols[] = {::dlsym(handle, "PluginMain"), ::dlsym(handle, "PluginHelp")};
    if (symbols[0] == nullptr || symbols[1] == nullptr) {
        *error = library + " lacks the symbol " + (symbols[0] == nullptr ? "PluginMain" : "PluginHelp");
        return nullptr;
    }
    return std::unique_ptr<PluginBundle>(
        new PluginBundle(path, reinterpret_cast<MainFunction>(symbols[0]), reinterpret_cast<HelpFunction>(symbols[1])));
}

std::unique_ptr<PluginBundle> PluginBundle::Nothing()
{
    const MainFunction unhandled = [](long, PluginInterface*) -> long { return 0; };
    const HelpFunction noHelp = []() -> const char* { return ""; };
    return std::unique_ptr<PluginBundle>(new PluginBundle("", unhandled, noHelp));
}

std::string PluginBundle::DefaultDirectory()
{
    std::error_code unknown;
    const fs::path program = fs::read_symlink("/proc/self/exe", unknown);
    const fs::path beside = program.parent_path() / "Declaration.bundle";
    const fs::path installed = program.parent_path().parent_path() / "lib/wren/Declaration.bundle";
    return fs::is_directory(beside, unknown) || !fs::is_directory(installed, unknown) ? beside : installed;
}

PluginBundle::PluginBundle(const std::string& directory, MainFunction main, HelpFunction help)
    : bundle{directory}, main(main), help(help), identifier(ReadIdentifier(directory + "/Contents/Info.plist"))
{
}

std::string PluginBundle::Help() const
{
    const char* text = help();
    return text == nullptr ? "" : text;
}

const void* PluginBundle::CodeAddress() const
{
    return reinterpret_cast<const void*>(main);
}

} // namespace wren
