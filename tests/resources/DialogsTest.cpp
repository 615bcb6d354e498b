// The interface file that is shipped: what the plug-in's code takes from it is in it, and a person can read it.
#include "vetch/interface/InterfaceFile.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace {

using Kind = vetch::ViewDescription::Kind;

const char kFile[] = RESOURCES "/DeclarationDialogs.ui";
const char* const kParts[] = {"EntryWindow", "org.wren.Declaration"};

vetch::NibPart Part(const char* name)
{
    std::optional<vetch::NibPart> part = vetch::ReadInterfaceFile(kFile, name);
    EXPECT_TRUE(part.has_value()) << name;
    return part.value_or(vetch::NibPart());
}

std::map<long, vetch::NibControl> Numbered(const char* name)
{
    std::map<long, vetch::NibControl> controls;
    for (const vetch::NibControl& control : Part(name).controls)
        if (control.item != 0)
            controls[control.item] = control;
    return controls;
}

bool Overlap(const BRect& a, const BRect& b)
{
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

// In a font that is rather wide for its size, as the display without a screen has it.
float WidthNeeded(const vetch::NibControl& control)
{
    const float mark = control.kind == Kind::CheckBox || control.kind == Kind::Button ? 20 : 0;
    return mark + 7 * static_cast<float>(control.text.size());
}

} // namespace

TEST(Dialogs, HaveTheControlsThatTheCodeUses)
{
    const struct {
        const char* why;
        const char* part;
        long item;
        Kind kind;
        bool multiLine;
        const char* text; // "" for fields
    } kCases[] = {
        {"the name to look up", "EntryWindow", 1, Kind::Text, false, ""},
        {"looks it up", "EntryWindow", 2, Kind::Button, false, "Look Up"},
        {"hides the dialog", "EntryWindow", 3, Kind::Button, false, "Cancel"},
        {"rebuilding", "org.wren.Declaration", 10, Kind::CheckBox, false,
         "Rebuild tags automatically when they are out of date"},
        {"declarations", "org.wren.Declaration", 11, Kind::CheckBox, false, "Option-click to look up a declaration"},
        {"definitions", "org.wren.Declaration", 13, Kind::CheckBox, false,
         "Control-Option-click to look up a definition"},
        {"completion", "org.wren.Declaration", 14, Kind::CheckBox, false, "Complete symbols while typing"},
        {"a directory on each line", "org.wren.Declaration", 20, Kind::Text, true, ""},
        {"identifiers to ignore", "org.wren.Declaration", 21, Kind::Text, false, ""},
        {"file patterns", "org.wren.Declaration", 23, Kind::Text, false, ""},
    };
    std::map<std::string, size_t> expected;
    for (const auto& c : kCases) {
        ++expected[c.part];
        auto controls = Numbered(c.part);
        ASSERT_TRUE(controls.count(c.item)) << c.why;
        EXPECT_EQ(controls[c.item].kind, c.kind) << c.why;
        EXPECT_EQ(controls[c.item].multiLine, c.multiLine) << c.why;
        EXPECT_EQ(controls[c.item].text, c.text) << c.why;
    }
    for (const char* part : kParts)
        EXPECT_EQ(Numbered(part).size(), expected[part]) << "a number that nothing takes, in " << part;
}

TEST(Dialogs, HaveTitles)
{
    EXPECT_EQ(Part("EntryWindow").title, "Look Up Symbol");
    EXPECT_EQ(Part("org.wren.Declaration").title, "Symbols");
}

TEST(Dialogs, FitASmallScreen)
{
    const BRect frame = Part("EntryWindow").frame;
    const BRect screen = {0, 0, 1024, 600};
    EXPECT_TRUE(screen.Contains({frame.left, frame.top}) && screen.Contains({frame.right, frame.bottom}));
    EXPECT_LE(Part("org.wren.Declaration").frame.Height(), screen.Height());
}

TEST(Dialogs, HaveAlignedControlsThatDoNotOverlap)
{
    for (const char* name : kParts) {
        const vetch::NibPart part = Part(name);
        const BRect inside = {0, 0, part.frame.Width(), part.frame.Height()};
        std::vector<vetch::NibControl> laid;
        for (const vetch::NibControl& control : part.controls) {
            const BRect& frame = control.frame;
            const std::string what = std::string(name) + ": " + std::to_string(control.item) + " " + control.text;
            for (const float edge : {frame.left, frame.top, frame.right, frame.bottom})
                EXPECT_EQ(static_cast<int>(edge) % 8, 0) << what;
            EXPECT_TRUE(inside.Contains({frame.left, frame.top}) && inside.Contains({frame.right, frame.bottom}))
                << what;
            EXPECT_LE(WidthNeeded(control), frame.Width()) << what;
            if (control.kind == Kind::Group)
                continue; // which others lie in
            for (const vetch::NibControl& other : laid)
                EXPECT_FALSE(Overlap(frame, other.frame)) << what << " and " << other.item << " " << other.text;
            laid.push_back(control);
        }
        EXPECT_FALSE(laid.empty()) << name;
    }
}
