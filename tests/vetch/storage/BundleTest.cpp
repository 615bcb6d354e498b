#include "vetch/storage/Bundle.h"

#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>

TEST(Bundle, FindsItsResources)
{
    const TempDirectory directory;
    directory.Write("A b.bundle/Contents/Resources/x", "");
    const long before = vetch::LiveCFObjects();
    __CFBundle bundle{directory / "A b.bundle"};

    const CFURLRef url = CFBundleCopyResourcesDirectoryURL(&bundle);
    const CFURLRef absolute = CFURLCopyAbsoluteURL(url);
    const CFStringRef path = CFURLCopyFileSystemPath(absolute, kCFURLPOSIXPathStyle);
    EXPECT_EQ(FromCFString(path), directory / "A b.bundle/Contents/Resources");
    EXPECT_EQ(vetch::LiveCFObjects(), before + 3);

    CFRelease(path);
    CFRelease(absolute);
    CFRelease(url);
    EXPECT_EQ(vetch::LiveCFObjects(), before) << "each copy is released by itself";
}

TEST(Bundle, HasNoResourcesWithoutTheirDirectory)
{
    const TempDirectory directory;
    directory.Write("file.bundle/Contents/Resources", "a file");
    std::filesystem::create_directories(directory / "empty.bundle/Contents");
    const struct {
        const char* why;
        std::string path;
    } kCases[] = {
        {"no path", ""},
        {"no bundle there", directory / "missing.bundle"},
        {"no resources in it", directory / "empty.bundle"},
        {"resources that are not a directory", directory / "file.bundle"},
    };
    const long before = vetch::LiveCFObjects();
    for (const auto& c : kCases) {
        __CFBundle bundle{c.path};
        EXPECT_EQ(CFBundleCopyResourcesDirectoryURL(&bundle), nullptr) << c.why;
    }
    EXPECT_EQ(vetch::LiveCFObjects(), before);
}

TEST(Bundle, MakesARelativePathAbsolute)
{
    const TempDirectory directory;
    directory.Write("a.bundle/Contents/Resources/x", "");
    __CFBundle bundle{std::filesystem::relative(directory / "a.bundle").string()};
    const CFURLRef url = CFBundleCopyResourcesDirectoryURL(&bundle);
    const CFURLRef absolute = CFURLCopyAbsoluteURL(url);
    const CFStringRef path = CFURLCopyFileSystemPath(absolute, kCFURLPOSIXPathStyle);
    EXPECT_EQ(FromCFString(path), directory / "a.bundle/Contents/Resources");
    for (const void* object :
         {static_cast<const void*>(path), static_cast<const void*>(absolute), static_cast<const void*>(url)})
        CFRelease(object);
}

TEST(Bundle, GivesNullForNull)
{
    const TempDirectory directory;
    directory.Write("a.bundle/Contents/Resources/x", "");
    __CFBundle bundle{directory / "a.bundle"};
    const CFURLRef url = CFBundleCopyResourcesDirectoryURL(&bundle);
    EXPECT_EQ(CFURLCopyFileSystemPath(url, 1), nullptr) << "a style that this system does not have";
    CFRelease(url);

    EXPECT_EQ(CFBundleCopyResourcesDirectoryURL(nullptr), nullptr);
    EXPECT_EQ(CFURLCopyAbsoluteURL(nullptr), nullptr);
    EXPECT_EQ(CFURLCopyFileSystemPath(nullptr, kCFURLPOSIXPathStyle), nullptr);
    EXPECT_EQ(FromCFString(nullptr), "");
    CFRelease(nullptr);
}
