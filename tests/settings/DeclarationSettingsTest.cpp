#include "settings/DeclarationSettings.h"

#include "tests/settings/DefaultSettings.h"
#include "tests/support/FakeHost.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string Value(const char* name)
{
    FakeHost host;
    std::string value = "not found";
    DeclarationSettings::Instance()->ReturnSettingValue(&host, name, value);
    return value;
}

TEST(DeclarationSettings, HaveTheirDefaultsAtFirst)
{
    const DefaultSettings defaults;
    const DeclarationSettings* settings = DeclarationSettings::Instance();
    EXPECT_TRUE(settings->OptionClickToFindDecl());
    EXPECT_TRUE(settings->CtrlOptionClickToFindDef());
    EXPECT_TRUE(settings->AutoRebuild());
    EXPECT_TRUE(settings->AutoComplete());
    EXPECT_STREQ(settings->IgnoreStrings(),
                 "AVAILABLE_MAC_OS_X_VERSION_10_0_AND_LATER,AVAILABLE_MAC_OS_X_VERSION_10_1_AND_LATER,"
                 "AVAILABLE_MAC_OS_X_VERSION_10_2_AND_LATER,AVAILABLE_MAC_OS_X_VERSION_10_3_AND_LATER,"
                 "AVAILABLE_MAC_OS_X_VERSION_10_4_AND_LATER,"
                 "AVAILABLE_MAC_OS_X_VERSION_10_0_AND_LATER_BUT_DEPRECATED_IN_MAC_OS_X_VERSION_10_4");
    EXPECT_STREQ(settings->ScanSystemDirectories(), "/System/Library/Frameworks /usr/include");
    EXPECT_STREQ(settings->LocalTagSubdirs(), ".:./build");
    EXPECT_STREQ(settings->IndexSuffixes(), "*.h *.c *.cp *.cpp *.m *.mm");
}

TEST(DeclarationSettings, AreASingleton)
{
    EXPECT_EQ(DeclarationSettings::Instance(), DeclarationSettings::Instance());
}

TEST(DeclarationSettings, RegisterInOrder)
{
    FakeHost host;
    DeclarationSettings::Instance()->Register(&host);
    EXPECT_THAT(host.log,
                ElementsAre("RegisterSetting DeclOptionClickToFindDeclaration",
                            "RegisterSetting DeclCtrlOptionClickToFindDefinition",
                            "RegisterSetting DeclAutomaticallyRebuild", "RegisterSetting DeclAutoComplete",
                            "RegisterSetting DeclIgnoreStrings", "RegisterSetting DeclScanSystemDirectories",
                            "RegisterSetting DeclLocalTagSubdirectories", "RegisterSetting DeclIndexSuffixes"));
}

TEST(DeclarationSettings, SaveNoDefaults)
{
    const DefaultSettings defaults;
    FakeHost host;
    DeclarationSettings::Instance()->Save(&host);
    EXPECT_THAT(host.log, IsEmpty());
}

TEST(DeclarationSettings, HaveAnAccessorEach)
{
    const DefaultSettings defaults;
    const DeclarationSettings* settings = DeclarationSettings::Instance();
    const struct {
        const char* name;
        bool (DeclarationSettings::*accessor)() const;
    } kSwitches[] = {
        {"DeclOptionClickToFindDeclaration", &DeclarationSettings::OptionClickToFindDecl},
        {"DeclCtrlOptionClickToFindDefinition", &DeclarationSettings::CtrlOptionClickToFindDef},
        {"DeclAutomaticallyRebuild", &DeclarationSettings::AutoRebuild},
        {"DeclAutoComplete", &DeclarationSettings::AutoComplete},
    };
    for (const auto& c : kSwitches) {
        EXPECT_TRUE(DefaultSettings::Set(c.name, "off"));
        EXPECT_FALSE((settings->*c.accessor)()) << c.name;
        EXPECT_EQ(Value(c.name), "off");
        DefaultSettings::Set(c.name, "on");
    }
    const struct {
        const char* name;
        const char* (DeclarationSettings::*accessor)() const;
    } kTexts[] = {
        {"DeclIgnoreStrings", &DeclarationSettings::IgnoreStrings},
        {"DeclScanSystemDirectories", &DeclarationSettings::ScanSystemDirectories},
        {"DeclLocalTagSubdirectories", &DeclarationSettings::LocalTagSubdirs},
        {"DeclIndexSuffixes", &DeclarationSettings::IndexSuffixes},
    };
    for (const auto& c : kTexts) {
        EXPECT_TRUE(DefaultSettings::Set(c.name, c.name));
        EXPECT_STREQ((settings->*c.accessor)(), c.name);
        EXPECT_EQ(Value(c.name), c.name);
    }
}

TEST(DeclarationSettings, KeepTheUnusedSubdirectories)
{
    const DefaultSettings defaults;
    EXPECT_TRUE(DefaultSettings::Set("DeclLocalTagSubdirectories", "src"));
    EXPECT_EQ(Value("DeclLocalTagSubdirectories"), "src");
    FakeHost host;
    DeclarationSettings::Instance()->Save(&host);
    EXPECT_THAT(host.log, ElementsAre("WriteSettings DeclLocalTagSubdirectories src\n"));
}

TEST(DeclarationSettings, ShowOneDirectoryPerLine)
{
    const DefaultSettings defaults;
    const DeclarationSettings* settings = DeclarationSettings::Instance();
    EXPECT_STREQ(settings->ScanSystemDirectoriesForEditItem(), "/System/Library/Frameworks\n/usr/include");
    DefaultSettings::Set("DeclScanSystemDirectories", "/opt/My\\ Headers /b");
    EXPECT_STREQ(settings->ScanSystemDirectoriesForEditItem(), "/opt/My\\ Headers\n/b");
}

TEST(DeclarationSettings, AreNotRecreatedAfterDeletion)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe"; // in a process of its own: the dead pointer stays behind
    EXPECT_EXIT(
        {
            DeclarationSettings* const before = DeclarationSettings::Instance();
            DeclarationSettings::DeleteInstance();
            void* const inItsPlace = ::operator new(sizeof(DeclarationSettings)); // a new one would come elsewhere
            std::_Exit(DeclarationSettings::Instance() == before && inItsPlace != nullptr ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST(DeclarationSettings, MayBeDeletedBeforeTheirFirstUse)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe"; // a process that has not made them yet
    EXPECT_EXIT(
        {
            DeclarationSettings::DeleteInstance();
            std::_Exit(0);
        },
        testing::ExitedWithCode(0), "");
}

} // namespace
