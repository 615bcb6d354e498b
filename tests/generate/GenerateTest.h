// The plug-in at work on tags, with all that it looks at in its place and nothing carried out.
#pragma once

#include "tests/generate/InstalledProgram.h"
#include "tests/generate/Requests.h"
#include "tests/settings/DefaultSettings.h"
#include "tests/support/FakeHost.h"
#include "tests/support/Framework.h"
#include "tests/support/TagLines.h"
#include "tests/support/TestBundle.h"

#include <gtest/gtest.h>

#include <cstdlib>

// The document is src/a.cpp in the user's home; settings are a new user's, and the tags program is the bundle's.
class GenerateTest : public testing::Test {
protected:
    GenerateTest()
    {
        ::unsetenv("WREN_CTAGS");
        host.bundle = &bundle.bundle;
        host.file = EntryRef(home.Write("src/a.cpp", "").c_str());
    }
    ~GenerateTest() override { ::unsetenv("WREN_CTAGS"); }

    struct Witness : vetch::DisplayObserver {
        std::vector<vetch::AlertDescription> alerts;
        std::vector<vetch::PanelDescription> panels;
        std::function<void()> whileAsked = [] {};

        void AlertAnswered(const vetch::AlertDescription& alert, long) override
        {
            alerts.push_back(alert);
            whileAsked();
        }
        void PanelOpened(const vetch::PanelDescription& panel) override { panels.push_back(panel); }
    };

    Witness witness;
    TempHome home;
    TestBundle bundle;
    Framework framework{&witness};
    DefaultSettings settings;
    InstalledProgram program;
    FakeHost host;
    Requests requests;

    std::string BundlesProgram() const { return bundle / "Contents/Resources/cplustags"; }

    // The whole command lines, by what they make.
    std::string LocalCommand(const std::string& directory, const std::string& tags) const
    {
        return "\n# Execute the following line to generate tags in this directory:\nfind " + directory + " " +
               kWildcards + " | " + BundlesProgram() + " --c-kinds=+p --excmd=number -f " + tags + " -L -\n";
    }
    std::string SystemCommand(const std::string& tags) const
    {
        return "\n# Execute the following line to generate tags for the system headers:\n"
               "find /System/Library/Frameworks /usr/include " +
               kWildcards + "  -and ! \\( -path /usr/include/gcc/darwin\\* \\)  | " + BundlesProgram() + " -I " +
               kIgnoreStringsDefault + " --c-kinds=+p --excmd=number -f " + tags + " -L - ";
    }
    std::string CompilerCommand(const std::string& tags) const
    {
        return "find /usr/include/gcc/darwin/default/ | " + BundlesProgram() + " -I " + kIgnoreStringsDefault +
               " --c-kinds=+p --excmd=number --language-force=\"C++\" -f " + tags + " -L - --append=yes\n";
    }

    // All commands of a request that is carried out.
    Requests::Commands LocalRequest(const std::string& directory) const
    {
        return {LocalCommand(directory, directory + "/tags.tmp"),
                "mv " + directory + "/tags.tmp " + directory + "/tags"};
    }
    Requests::Commands SystemRequest() const
    {
        return {SystemCommand(kTemporary), CompilerCommand(kTemporary), std::string("mv ") + kTemporary + " " + kTags};
    }

    static constexpr char kTags[] = "~/Library/Caches/SystemHeaderTags";
    static constexpr char kTemporary[] = "~/Library/Caches/SystemHeaderTags.temp";
    static inline const std::string kWildcards =
        R"(\(  -name "*.h" -o -name "*.c" -o -name "*.cp" -o -name "*.cpp" -o -name "*.m" -o -name "*.mm" \))";
};
