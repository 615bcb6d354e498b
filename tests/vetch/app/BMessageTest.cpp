#include "vetch/app/BMessage.h"

#include <gtest/gtest.h>

namespace {

int32 Int32(const BMessage& message, const char* name)
{
    int32 value = -77;
    message.FindInt32(name, &value);
    return value;
}

std::string String(const BMessage& message, const char* name)
{
    const char* value = "untouched";
    message.FindString(name, &value);
    return value;
}

TEST(BMessage, HoldsEveryType)
{
    BMessage message(FourCC("Test"));
    const EntryRef ref("/usr/include/stdio.h");
    BMessage inner(5);
    inner.AddString("word", "inner");
    ASSERT_EQ(message.AddInt8("byte", -3), B_OK);
    ASSERT_EQ(message.AddInt32("index", 70000), B_OK);
    ASSERT_EQ(message.AddString("text", "words"), B_OK);
    ASSERT_EQ(message.AddRef("refs", &ref), B_OK);
    ASSERT_EQ(message.AddMessage("message", &inner), B_OK);

    int8 byte = 0;
    EntryRef foundRef;
    BMessage foundMessage;
    EXPECT_EQ(message.FindInt8("byte", 0, &byte), B_OK);
    EXPECT_EQ(byte, -3);
    EXPECT_EQ(Int32(message, "index"), 70000);
    EXPECT_EQ(String(message, "text"), "words");
    EXPECT_EQ(message.FindRef("refs", &foundRef), B_OK);
    EXPECT_TRUE(foundRef == ref);
    EXPECT_EQ(message.FindMessage("message", &foundMessage), B_OK);
    EXPECT_EQ(foundMessage.what, 5u);
    EXPECT_EQ(String(foundMessage, "word"), "inner");
}

TEST(BMessage, KeepsSeveralValuesOfANameInTheirOrder)
{
    BMessage message;
    for (const int8 value : {int8{7}, int8{8}, int8{9}})
        message.AddInt8("byte", value);
    for (int32 i : {0, 1, 2}) {
        int8 byte = 0;
        EXPECT_EQ(message.FindInt8("byte", i, &byte), B_OK);
        EXPECT_EQ(byte, 7 + i);
    }
    const EntryRef first("/a"), second("/b");
    message.AddRef("refs", &first);
    message.AddRef("refs", &second);
    EntryRef found;
    EXPECT_EQ(message.FindRef("refs", 1, &found), B_OK);
    EXPECT_TRUE(found == second);
}

TEST(BMessage, AFailedFindLeavesItsOutputUnchanged)
{
    BMessage message;
    message.AddInt32("number", 4);
    message.AddString("text", "words");
    message.AddInt8("byte", 1);

    int8 byte = 55;
    int32 number = 55;
    const char* text = "untouched";
    const EntryRef before("/before");
    EntryRef ref = before;
    BMessage inner(55);
    EXPECT_EQ(message.FindInt8("byte", 1, &byte), B_ERROR) << "index beyond the values";
    EXPECT_EQ(message.FindInt8("byte", -1, &byte), B_ERROR) << "negative index";
    EXPECT_EQ(message.FindInt8("number", 0, &byte), B_ERROR) << "another type";
    EXPECT_EQ(message.FindInt32("byte", &number), B_ERROR) << "a narrower type is another type";
    EXPECT_EQ(message.FindInt32("missing", &number), B_ERROR);
    EXPECT_EQ(message.FindInt32(nullptr, &number), B_ERROR);
    EXPECT_EQ(message.FindString("number", &text), B_ERROR);
    EXPECT_EQ(message.FindRef("text", &ref), B_ERROR);
    EXPECT_EQ(message.FindMessage("text", &inner), B_ERROR);
    EXPECT_EQ(byte, 55);
    EXPECT_EQ(number, 55);
    EXPECT_STREQ(text, "untouched");
    EXPECT_TRUE(ref == before);
    EXPECT_EQ(inner.what, 55u);
}

TEST(BMessage, RefusesAnotherTypeUnderTheSameNameAndNullPointers)
{
    BMessage message;
    ASSERT_EQ(message.AddInt32("value", 1), B_OK);
    EXPECT_EQ(message.AddString("value", "x"), B_ERROR);
    EXPECT_EQ(message.AddInt8("value", 1), B_ERROR);
    EXPECT_EQ(message.AddString("text", nullptr), B_ERROR);
    EXPECT_EQ(message.AddRef("ref", nullptr), B_ERROR);
    EXPECT_EQ(message.AddMessage("message", nullptr), B_ERROR);
    EXPECT_EQ(message.AddInt32(nullptr, 1), B_ERROR);
    EXPECT_EQ(Int32(message, "value"), 1);
    EXPECT_EQ(message.AddString("text", "later"), B_OK) << "a refused value leaves the name free";
}

TEST(BMessage, CopiesAreIndependent)
{
    BMessage original(1);
    original.AddString("text", "first");
    BMessage copy(original);
    copy.AddInt32("number", 2);
    original = BMessage(9);
    EXPECT_EQ(copy.what, 1u);
    EXPECT_EQ(String(copy, "text"), "first");
    EXPECT_EQ(Int32(copy, "number"), 2);
    EXPECT_EQ(String(original, "text"), "untouched");
    EXPECT_EQ(Int32(original, "number"), -77);
}

TEST(BMessage, NestedMessagesAreCopiedWhenTheyAreAdded)
{
    BMessage inner(1);
    inner.AddInt32("number", 1);
    BMessage outer(2);
    outer.AddMessage("message", &inner);
    inner.what = 3;
    inner.AddString("text", "late");

    BMessage found;
    ASSERT_EQ(outer.FindMessage("message", &found), B_OK);
    EXPECT_EQ(found.what, 1u);
    EXPECT_EQ(String(found, "text"), "untouched");
}

TEST(BMessage, MayBeAssignedItsOwnNestedMessage)
{
    BMessage inner(1);
    inner.AddInt32("number", 6);
    BMessage message(2);
    message.AddMessage("message", &inner);
    ASSERT_EQ(message.FindMessage("message", &message), B_OK);
    EXPECT_EQ(message.what, 1u);
    EXPECT_EQ(Int32(message, "number"), 6);
}

} // namespace
