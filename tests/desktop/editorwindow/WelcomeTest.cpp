#include "wren/desktop/Welcome.h"
#include "tests/desktop/editorwindow/EditorStory.h"
#include "wren/core/UserDirectories.h"
#include "wren/desktop/MainWindow.h"

#include <QPushButton>

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

class Welcome : public EditorStory {
protected:
    std::vector<std::string> Choices()
    {
        std::vector<std::string> choices;
        if (const QWidget* panel = TheEditor().TheWelcome().Help().Panel())
            for (const QPushButton* button : panel->findChildren<QPushButton*>())
                choices.push_back(button->text().toStdString());
        return choices;
    }
    void ChooseNext(const char* label)
    {
        for (QPushButton* button : TheEditor().TheWelcome().Help().Panel()->findChildren<QPushButton*>())
            if (button->text() == label)
                button->click();
        Settle();
    }
    wren::Tour& TheTour() { return *TheEditor().TheWelcome().TheTour(); }
    // The letters before the caret.
    std::string Before() { return Text().substr(0, static_cast<size_t>(View().Caret())); }
};

} // namespace

TEST_F(Welcome, AnEmptyTextSaysWhatCanBeDoneNext)
{
    understandsNames = true;
    Start();
    EXPECT_THAT(Choices(), ElementsAre("Open a file", "Take the tour", "Preferences and keys"));
    Type("x");
    EXPECT_THAT(Choices(), IsEmpty());
    Press("Backspace");
    EXPECT_THAT(Choices(), Contains("Open a file"));
    Start({home.Write("empty.c", "")});
    EXPECT_THAT(Choices(), IsEmpty()) << "it has a file";
    Press("Ctrl+N");
    EXPECT_THAT(Choices(), Contains("empty.c")) << "the last ones are offered";
    ChooseNext("empty.c");
    EXPECT_EQ(CurrentTab(), "empty.c");
}

TEST_F(Welcome, ThePluginAloneOffersNoTour)
{
    Start();
    EXPECT_THAT(Choices(), ElementsAre("Open a file", "Preferences and keys"));
}

TEST_F(Welcome, TheTourLeadsThroughItsExample)
{
    understandsNames = true;
    Start();
    ChooseNext("Take the tour");
    ASSERT_NE(TheEditor().TheWelcome().TheTour(), nullptr);
    EXPECT_TRUE(TheTour().isVisible());
    EXPECT_EQ(CurrentTab(), "main.cpp");
    EXPECT_TRUE(Before().ends_with("return left.Are"));
    std::vector<std::string> stops;
    for (int step = 0; step < wren::Tour::Steps(); ++step) {
        EXPECT_TRUE(TheTour().isVisible());
        EXPECT_EQ(TheTour().Step(), step);
        EXPECT_GT(View().Caret(), 20) << "the place is in the text";
        stops.push_back(CurrentTab());
        TheTour().findChild<QPushButton*>("next")->click();
        Settle();
    }
    EXPECT_EQ(stops.front(), "main.cpp");
    EXPECT_EQ(stops.back(), "circle.cpp");
    EXPECT_FALSE(TheTour().isVisible());
}

TEST_F(Welcome, ATourThatCannotBeWrittenSaysWhy)
{
    understandsNames = true;
    Start();
    home.Write(wren::StateDirectory().substr(home.Path().size() + 1) + "/tour", "in the way");
    Choose("Help", "Tour");
    EXPECT_THAT(Status(), HasSubstr("tour"));
    EXPECT_FALSE(TheTour().isVisible());
}
