// A temporary bundle directory with the plug-in's resources.
#pragma once

#include "tests/support/TempDirectory.h"
#include "vetch/storage/Bundle.h"

class TestBundle : public TempDirectory {
public:
    TestBundle()
    {
        std::filesystem::create_directory(Path() + "/Contents");
        std::filesystem::create_directory_symlink(RESOURCES, Path() + "/Contents/Resources");
        bundle.path = Path();
    }

    __CFBundle bundle;
};
