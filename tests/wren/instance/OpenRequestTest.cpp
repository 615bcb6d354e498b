#include "wren/instance/OpenRequest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

using namespace std::string_literals;
using wren::FormOf;
using wren::OpenRequest;
using wren::RequestFrom;

TEST(OpenRequest, ComesBackFromItsForm)
{
    const OpenRequest sent{{{"/a b/\n\xff.c", 12, 3}, {"/wait", 0, 0}}, true, "token_TIME12"};
    const base::Result<OpenRequest> read = RequestFrom(FormOf(sent));
    ASSERT_TRUE(read);
    EXPECT_TRUE(read->waits);
    EXPECT_EQ(read->activation, "token_TIME12");
    ASSERT_EQ(read->places.size(), 2u);
    EXPECT_EQ(read->places[0].file, "/a b/\n\xff.c");
    EXPECT_EQ(read->places[0].line, 12);
    EXPECT_EQ(read->places[0].column, 3);
    EXPECT_EQ(read->places[1].file, "/wait");
}

TEST(OpenRequest, MayNameNoFile)
{
    const base::Result<OpenRequest> read = RequestFrom(FormOf({}));
    ASSERT_TRUE(read);
    EXPECT_TRUE(read->places.empty());
    EXPECT_FALSE(read->waits);
}

TEST(OpenRequest, ItsFormEndsInOnePlaceOnly)
{
    const std::string form = FormOf({{{"/\n", 1, 1}, {"/end", 1, 1}}, false, "\n"});
    EXPECT_EQ(form.find(wren::kEndOfRequest), form.size() - wren::kEndOfRequest.size());
}

TEST(OpenRequest, RefusesWhatIsNotOne)
{
    struct Case {
        const char* why;
        std::string form;
    };
    const std::string start = "wren-open-1\0open\0\0"s;
    const Case cases[] = {
        {"nothing", ""},
        {"the end alone", "\0\n\0"s},
        {"no end", start + "/a\0"s + "1\0"s + "1"s},
        {"another version", "wren-open-2\0open\0\0\n\0"s},
        {"another wish", "wren-open-1\0quit\0\0\n\0"s},
        {"a relative path", start + "a\0"s + "1\0"s + "1\0\n\0"s},
        {"a place without a column", start + "/a\0"s + "1\0\n\0"s},
        {"a negative line", start + "/a\0"s + "-1\0"s + "1\0\n\0"s},
        {"a line that is no number", start + "/a\0"s + "1x\0"s + "1\0\n\0"s},
        {"a line beyond all numbers", start + "/a\0"s + "99999999999999999999\0"s + "1\0\n\0"s},
        {"a token with a line break", "wren-open-1\0open\0a\nb\0\n\0"s},
        {"an endless token", "wren-open-1\0open\0"s + std::string(300, 'a') + "\0\n\0"s},
        {"an endless path", start + "/" + std::string(5000, 'a') + "\0"s + "1\0"s + "1\0\n\0"s},
    };
    for (const Case& each : cases)
        EXPECT_FALSE(RequestFrom(each.form)) << each.why;
    EXPECT_TRUE(RequestFrom(start + "/a\0"s + "1\0"s + "1\0\n\0"s)) << "the refused ones differ from this";
}
