#include "vetch/interface/InterfaceFile.h"

#include "Desk.h"
#include "tests/support/TempDirectory.h"
#include "vetch/interface/BTextControl.h"
#include "vetch/storage/Bundle.h"

#include <gmock/gmock.h>
#include <map>

namespace {

const std::string kData = TEST_DATA "/interface/";

class InterfaceFile : public Desk {
protected:
    InterfaceFile()
    {
        vetch::SetInterfaceProblemSink([this](const std::string& problem) { problems.push_back(problem); });
    }
    ~InterfaceFile() override { vetch::SetInterfaceProblemSink(nullptr); }

    std::vector<std::string> problems;
    __CFBundle bundle{kData + "Controls.bundle"};
};

// Hears what a display is told of views.
class ViewListener : public vetch::HeadlessDisplay {
public:
    std::vector<vetch::ViewDescription> views;

    void Apply(vetch::Update update) override
    {
        if (const auto* made = std::get_if<vetch::ViewMade>(&update))
            views.push_back(made->view);
        HeadlessDisplay::Apply(std::move(update));
    }
};

TEST_F(InterfaceFile, APartHasItsTitleItsFrameAndItsControls)
{
    const auto dialog = vetch::ReadNibPart(&bundle, "Controls", "Dialog");
    ASSERT_TRUE(dialog);
    EXPECT_EQ(dialog->title, "A Dialog");
    EXPECT_EQ(dialog->frame, (BRect{20, 30, 220, 130}));
    ASSERT_EQ(dialog->controls.size(), 1u);
    EXPECT_EQ(dialog->controls[0].item, 1);

    const auto panel = vetch::ReadNibPart(&bundle, "Controls", "panel");
    ASSERT_TRUE(panel);
    std::map<std::string, BRect> frames;
    for (const vetch::NibControl& control : panel->controls)
        frames[control.text] = control.frame;
    const std::map<std::string, BRect> expected = {
        {"Follow", {10, 10, 110, 30}},    {"Words", {20, 40, 220, 140}}, {"initial", {25, 47, 125, 67}},
        {"one\ntwo", {31, 72, 171, 122}}, {"Go", {10, 150, 70, 170}},    {"A hint", {80, 150, 140, 170}},
        {"", {150, 150, 210, 170}},
    };
    EXPECT_EQ(frames, expected);
    EXPECT_TRUE(problems.empty());
}

struct BadFile {
    const char* file;
    std::vector<std::string> problems; // behind "path:"
};

TEST_F(InterfaceFile, ErrorsAreReportedWithTheirLine)
{
    const BadFile cases[] = {
        {"duplicate-items.ui", {"15: item 7 again, first on line 7"}},
        {"unknown-class.ui", {"9: unknown widget class \"QSlider\""}},
        {"no-geometry.ui", {"5: widget \"b\" has no geometry"}},
        {"part-without-geometry.ui", {"3: widget \"part\" has no geometry"}},
        {"layout.ui", {"5: a layout: only absolute geometry is understood"}},
        {"item-zero.ui", {"7: an item number that is no positive <number>"}},
        {"item-that-is-text.ui", {"7: an item number that is no positive <number>"}},
        {"two-problems.ui", {"5: unknown widget class \"QSlider\"", "9: widget \"b\" has no geometry"}},
        {"cut-short.ui", {"6: no XML: Start-end tags mismatch"}},
        {"no-interface.ui", {"1: no interface file: there is no <ui>"}},
        {"empty.ui", {"1: no XML: No document element found"}},
        {"no-part.ui", {"2: no widget is called \"part\""}},
    };
    for (const BadFile& c : cases) {
        problems.clear();
        EXPECT_FALSE(vetch::ReadInterfaceFile(kData + c.file, "part")) << c.file;
        std::vector<std::string> expected;
        for (const std::string& problem : c.problems)
            expected.push_back(kData + c.file + ":" + problem);
        EXPECT_EQ(problems, expected);
    }
}

// However a file came about, it must not use up the stack.
TEST_F(InterfaceFile, WidgetsMayBeNestedToALimit)
{
    const TempDirectory files;
    const auto read = [&files](size_t depth) {
        const std::string geometry = "<property name=\"geometry\"><rect/></property>";
        std::string text = "<ui><widget class=\"QWidget\" name=\"part\">" + geometry;
        for (size_t i = 0; i < depth; ++i)
            text += "<widget class=\"QFrame\">" + geometry;
        for (size_t i = 0; i < depth; ++i)
            text += "</widget>";
        return vetch::ReadInterfaceFile(files.Write("deep.ui", text + "</widget></ui>"), "part").has_value();
    };
    EXPECT_TRUE(read(99));
    EXPECT_TRUE(problems.empty());
    for (const size_t depth : {100u, 100'000u}) {
        EXPECT_FALSE(read(depth));
        EXPECT_THAT(problems, testing::ElementsAre(testing::HasSubstr(":1: widgets within more than 100 others")));
        problems.clear();
    }
}

TEST_F(InterfaceFile, TwoPartsMayUseTheSameNumber)
{
    const auto part = vetch::ReadInterfaceFile(kData + "same-item-in-two-parts.ui", "part");
    ASSERT_TRUE(part);
    EXPECT_EQ(part->controls.size(), 1u);
    EXPECT_TRUE(problems.empty());
}

TEST_F(InterfaceFile, AnUnreadableFileIsReported)
{
    TempDirectory home;
    EXPECT_FALSE(vetch::ReadInterfaceFile(home / "absent.ui", "part"));
    EXPECT_EQ(problems, Lines({home / "absent.ui: cannot be read: No such file or directory"}));
    problems.clear();
    EXPECT_FALSE(vetch::ReadInterfaceFile(home.Path(), "part"));
    EXPECT_EQ(problems, Lines({home.Path() + ": cannot be read: Is a directory"}));
}

TEST_F(InterfaceFile, AWindowIsMadeFromItsPart)
{
    auto* window = new BWindow(&bundle, "Controls", "Dialog");
    auto* field = new BTextControl;
    window->AddChildFromNib(field, 1);
    field->MakeFocus();
    EXPECT_EQ(window->Title(), "A Dialog");
    EXPECT_EQ(window->Frame(), (BRect{20, 30, 220, 130}));
    EXPECT_EQ(field->Window(), window);
    EXPECT_EQ(window->FocusView(), field);
    EXPECT_EQ(Only().controls.size(), 1u);
    EXPECT_TRUE(Only().controls[0].focus);
    window->Quit();
}

TEST_F(InterfaceFile, LabelsAndGroupsAreShownWithoutCode)
{
    using Kind = vetch::ViewDescription::Kind;
    ViewListener listener;
    vetch::SetDisplay(&listener);
    auto* window = new BWindow({0, 0, 300, 200}, "", 1, 1, 0);
    window->AddChild(vetch::MakeViewFromNib(&bundle, "Controls", "panel"));
    ASSERT_EQ(listener.views.size(), 2u);
    EXPECT_EQ(listener.views[0].kind, Kind::Group);
    EXPECT_EQ(listener.views[0].text, "Words");
    EXPECT_EQ(listener.views[0].frame, (BRect{20, 40, 220, 140}));
    EXPECT_EQ(listener.views[1].kind, Kind::Label);
    EXPECT_EQ(listener.views[1].text, "A hint");
    EXPECT_TRUE(listener.Windows()[0].controls.empty());
    window->Quit();
    vetch::SetDisplay(&display);
}

TEST_F(InterfaceFile, AFieldOfSeveralLinesIsRecognised)
{
    ViewListener listener;
    vetch::SetDisplay(&listener);
    auto* window = new BWindow({0, 0, 300, 200}, "", 1, 1, 0);
    BView* panel = vetch::MakeViewFromNib(&bundle, "Controls", "panel");
    window->AddChild(panel);
    panel->AddChildFromNib(new BTextControl, 4);
    panel->AddChildFromNib(new BTextControl, 2);
    ASSERT_EQ(listener.views.size(), 4u);
    EXPECT_TRUE(listener.views[2].multiLine);
    EXPECT_FALSE(listener.views[3].multiLine);
    window->Quit();
    vetch::SetDisplay(&display);
}

struct EmptyCase {
    const char* why;
    bool hasBundle;
    const char* nib;
    const char* part;
    size_t problems;
};

TEST_F(InterfaceFile, AWindowWithoutItsPartIsEmptyAndHarmless)
{
    const EmptyCase cases[] = {
        {"no bundle", false, "Controls", "Dialog", 0},    {"no name", true, nullptr, "Dialog", 0},
        {"no part's name", true, "Controls", nullptr, 0}, {"no such file", true, "Absent", "Dialog", 1},
        {"no such part", true, "Controls", "Absent", 1},
    };
    for (const EmptyCase& c : cases) {
        problems.clear();
        auto* window = new BWindow(c.hasBundle ? &bundle : nullptr, c.nib, c.part);
        auto* field = new BTextControl;
        window->AddChildFromNib(field, 1);
        EXPECT_EQ(field->Window(), nullptr) << c.why;
        EXPECT_TRUE(Only().controls.empty()) << c.why;
        EXPECT_EQ(problems.size(), c.problems) << c.why;
        window->Show();
        window->Quit();
        const std::unique_ptr<BView> view(vetch::MakeViewFromNib(c.hasBundle ? &bundle : nullptr, c.nib, c.part));
        EXPECT_EQ(view->Bounds(), BRect()) << c.why;
    }
}

} // namespace
