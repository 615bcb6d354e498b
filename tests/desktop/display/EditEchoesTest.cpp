#include "wren/desktop/display/EditEchoes.h"

#include <gtest/gtest.h>

namespace {

using wren::EditEchoes;

TEST(EditEchoes, EverythingIsNewWithoutEdits)
{
    EditEchoes echoes;
    EXPECT_TRUE(echoes.IsNewText("a"));
    EXPECT_TRUE(echoes.IsNewSelection(0, 1));
}

TEST(EditEchoes, TheEchoOfAnEditIsNotNew)
{
    EditEchoes echoes;
    echoes.Posted({"a", 1, 1});
    EXPECT_FALSE(echoes.IsNewText("a"));
    EXPECT_FALSE(echoes.IsNewSelection(1, 1));
    EXPECT_TRUE(echoes.IsNewText("a"));
    EXPECT_TRUE(echoes.IsNewSelection(1, 1));
}

TEST(EditEchoes, AnEchoWithAnotherSelectionIsNew)
{
    EditEchoes echoes;
    echoes.Posted({"a", 1, 1});
    EXPECT_FALSE(echoes.IsNewText("a"));
    EXPECT_TRUE(echoes.IsNewSelection(0, 1));
}

TEST(EditEchoes, EchoesDoNotUndoFurtherTyping)
{
    EditEchoes echoes;
    echoes.Posted({"a", 1, 1});
    echoes.Posted({"ab", 2, 2});
    EXPECT_FALSE(echoes.IsNewText("a"));
    EXPECT_FALSE(echoes.IsNewSelection(1, 1));
    EXPECT_FALSE(echoes.IsNewText("ab"));
    EXPECT_FALSE(echoes.IsNewSelection(2, 2));
}

TEST(EditEchoes, UpdatesBeforeTheEchoAreStale)
{
    EditEchoes echoes;
    echoes.Posted({"a", 1, 1});
    EXPECT_FALSE(echoes.IsNewText("other"));
    EXPECT_FALSE(echoes.IsNewSelection(5, 5));
    EXPECT_FALSE(echoes.IsNewText("a"));
    EXPECT_FALSE(echoes.IsNewSelection(1, 1));
    EXPECT_TRUE(echoes.IsNewText("other")); // what it says after its answer is not
}

TEST(EditEchoes, ARepeatedTextIsEchoedAgain)
{
    EditEchoes echoes;
    for (const char* text : {"a", "", "a"})
        echoes.Posted({text, 0, 0});
    for (const char* text : {"a", "", "a"})
        EXPECT_FALSE(echoes.IsNewText(text));
    EXPECT_TRUE(echoes.IsNewText("b"));
}

} // namespace
