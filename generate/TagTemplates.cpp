#include "generate/TagTemplates.h"

#include "settings/DeclarationSettings.h"

#include <cstring>

bool NeedGCCIncludes(PluginInterface*)
{
    return std::strstr(DeclarationSettings::Instance()->ScanSystemDirectories(), "/usr/include") != nullptr;
}
