#include "tags/TagFile.h"

#include "tests/tags/TagsFolder.h"

using namespace std::string_literals;

namespace {

const Lines kNone;

} // namespace

TEST(TagFile, ReadsTheFieldsOfALine)
{
    const struct {
        const char* why;
        std::string line;
        Lines found;
    } kCases[] = {
        {"all fields", "Foo\ta.cpp\t12;\"\tf\tclass:Bar\n", {"Bar::Foo f a.cpp:12"}},
        {"no scope", "Foo\ta.cpp\t12;\"\tf\n", {"Foo f a.cpp:12"}},
        {"a field that is no scope", "Foo\ta.cpp\t12;\"\tf\tfile:\n", {"Foo f a.cpp:12"}},
        {"a namespace", "Foo\ta.cpp\t12;\"\tf\tnamespace:N\n", {"N::Foo f a.cpp:12"}},
        {"a struct", "Foo\ta.cpp\t12;\"\tf\tstruct:S\n", {"S::Foo f a.cpp:12"}},
        {"a union", "Foo\ta.cpp\t12;\"\tf\tunion:U\n", {"U::Foo f a.cpp:12"}},
        {"an enumeration is no class token", "Foo\ta.cpp\t12;\"\te\tenum:E\n", {"Foo e a.cpp:12"}},
        {"the scope is not the first field", "Foo\ta.cpp\t12;\"\tf\tfile:\tclass:Bar\n", {"Foo f a.cpp:12"}},
        {"stripping goes on behind a token", "Foo\ta.cpp\t12;\"\tf\tclass:struct:X\n", {"X::Foo f a.cpp:12"}},
        {"in the order of the table", "Foo\ta.cpp\t12;\"\tf\tstruct:class:X\n", {"class:X::Foo f a.cpp:12"}},
        {"each token once", "Foo\ta.cpp\t12;\"\tf\tunion:union:X\n", {"union:X::Foo f a.cpp:12"}},
        {"all tokens", "Foo\ta.cpp\t12;\"\tf\tclass:namespace:struct:union:X\n", {"X::Foo f a.cpp:12"}},
        {"further fields stay", "Foo\ta.cpp\t1;\"\tf\tclass:B\taccess:public\n", {"B\taccess:public::Foo f a.cpp:1"}},
        {"only the kind's first character", "Foo\ta.cpp\t12;\"\tfunction\n", {"Foo f a.cpp:12"}},
        {"no semicolon", "Foo\ta.cpp\t12\tf\n", {"Foo f a.cpp:12"}},
        {"a kind behind a tab alone", "Foo\ta.cpp\t12;\tf\n", {"Foo f a.cpp:12"}},
        {"no kind: the line's end is taken for one", "Foo\ta.cpp\t12;\"\n", {"Foo \n a.cpp:12"}},
        {"no kind and no line end", "Foo\ta.cpp\t12;\"", kNone},
        {"no kind, only the tab before it", "Foo\ta.cpp\t12;\"\t", kNone},
        {"no line end", "Foo\ta.cpp\t12;\"\tf", {"Foo f a.cpp:12"}},
        {"blanks before the number", "Foo\ta.cpp\t  12;\"\tf\n", {"Foo f a.cpp:12"}},
        {"a number that goes on as text", "Foo\ta.cpp\t12x;\"\tf\n", {"Foo f a.cpp:12"}},
        {"a negative number", "Foo\ta.cpp\t-3;\"\tf\n", {"Foo f a.cpp:-3"}},
        {"a search pattern", "Foo\ta.cpp\t/^int Foo()$/;\"\tf\n", kNone},
        {"a search pattern with digits", "Foo\ta.cpp\t/12/;\"\tf\n", kNone},
        {"a number and a pattern: its text is the kind", "Foo\ta.cpp\t12;/^x$/;\"\tf\n", {"Foo / a.cpp:12"}},
        {"a number sign alone", "Foo\ta.cpp\t-;\"\tf\n", kNone},
        {"no ex-command", "Foo\ta.cpp\n", kNone},
        {"no file", "Foo\n", kNone},
        {"an empty file field is passed over", "Foo\t\ta.cpp\t12;\"\tf\n", {"Foo f a.cpp:12"}},
        {"tabs before the name", "\t\tFoo\ta.cpp\t12;\"\tf\n", {"Foo f a.cpp:12"}},
        {"nothing but tabs", "\t\t\t\n", kNone},
        {"an empty line", "\n", kNone},
        {"a pseudo-tag", "!Foo\ta.cpp\t12;\"\tf\n", kNone},
        {"a pseudo-tag's mark within a name", "Foo!\ta.cpp\t12;\"\tf\n", {"Foo! f a.cpp:12"}},
        {"a source that does not exist", "Foo\tgone.cpp\t12;\"\tf\n", kNone},
        {"an escaped path", "Foo\ta\\.cpp\t12;\"\tf\n", {"Foo f a.cpp:12"}},
        {"a path through a folder that is not there", "Foo\tnone/../a.cpp\t12;\"\tf\n", {"Foo f a.cpp:12"}},
    };
    for (const auto& c : kCases) {
        const TagsFolder folder(c.line);
        EXPECT_EQ(Matches(folder.Entry(), "", TagFile::AnyMatch()), c.found) << c.why;
    }
}

TEST(TagFile, FindsRelativeAndAbsoluteSources)
{
    const TagsFolder folder;
    folder.directory.Write("src/with blank.cpp", "int x;\n");
    const std::string absolute = folder.directory / "src/with blank.cpp";
    folder.WriteTags(TagLine("x", "src/with\\ blank.cpp", 1, "v") + TagLine("x", absolute, 2, "v"));

    const BEntry tags = folder.Entry();
    TagFile file(&tags, "x", false);
    ASSERT_TRUE(file.Rewind());
    std::string name;
    std::string qualifier;
    char kind;
    EntryRef ref;
    int line;
    for (int expectedLine = 1; expectedLine <= 2; ++expectedLine) {
        ASSERT_TRUE(file.NextMatch(name, qualifier, kind, ref, line, false, TagFile::ExactMatch()));
        EXPECT_EQ(line, expectedLine);
        EXPECT_EQ(ref.Path(), absolute);
    }
    file.Done();
}

TEST(TagFile, FindsTagsByQualifiedNames)
{
    const TagsFolder folder(TagLine("Foo", "a.cpp", 12, "f", "class:Bar") + TagLine("Foo", "a.cpp", 13, "f") +
                            TagLine("Foo", "a.cpp", 14, "f", "namespace:N::Bar") +
                            TagLine("Foo", "a.cpp", 15, "f", "class:Bar\taccess:public"));
    const struct {
        const char* why;
        const char* pattern;
        Lines found;
    } kCases[] = {
        {"the scope asked for", "Bar::Foo", {"Bar::Foo f a.cpp:12", "N::Bar::Foo f a.cpp:14"}},
        {"two levels", "N::Bar::Foo", {"N::Bar::Foo f a.cpp:14"}},
        {"the global scope is any scope",
         "::Foo",
         {"Bar::Foo f a.cpp:12", "Foo f a.cpp:13", "N::Bar::Foo f a.cpp:14", "Bar\taccess:public::Foo f a.cpp:15"}},
        {"another scope", "Baz::Foo", {}},
    };
    for (const auto& c : kCases)
        EXPECT_EQ(Matches(folder.Entry(), c.pattern), c.found) << c.why;
    EXPECT_EQ(Matches(folder.Entry(), "Foo").size(), 4u);
    EXPECT_EQ(Matches(folder.Entry(), "Bar::Fo", TagFile::PartialMatch()).size(), 2u);
    EXPECT_EQ(Matches(folder.Entry(), "Baz::Foo", TagFile::AnyMatch()).size(), 4u) << "any name in any scope";
}

// Each name with each pattern: readers compare a line's first bytes before the rest.
TEST(TagFile, FindsExactlyTheNamesThatMatch)
{
    const Lines names = {
        "!x", "<",         "<int>",       "<int>x", "a",        "a<b>",       "a<b>::c",   "a<b>c",       "ab",
        "b",  "initWith:", "initWith:b:", "op",     "operator", "operator <", "operator<", "operator<=>", "x:y"};
    std::string tags;
    for (const std::string& name : names)
        tags += TagLine(name, "a.cpp", 1, "f");
    const TagsFolder folder(tags);

    const struct {
        const char* why;
        const char* pattern;
        Lines exact;
        Lines partial;
    } kCases[] = {
        {"a template is found by its name", "a", {"a", "a<b>", "a<b>::c"}, {"a", "a<b>", "a<b>::c", "a<b>c", "ab"}},
        {"template arguments in the pattern do not count",
         "a<x, y>",
         {"a", "a<b>", "a<b>::c"},
         {"a", "a<b>", "a<b>::c"}},
        {"an unclosed template is compared whole", "a<b", {}, {"a<b>c"}},
        {"a template that goes on is compared whole", "a<b>c", {"a<b>c"}, {"a<b>c"}},
        {"a template without a name", "<long>", {"<int>"}, {"<int>"}},
        {"a lone bracket", "<", {"<"}, {"<", "<int>x"}},
        {"nothing at all", "", {"<int>"}, Lines(names.begin() + 1, names.end())},
        {"an operator, and one that reads as a template",
         "operator",
         {"operator", "operator<=>"},
         {"operator", "operator <", "operator<", "operator<=>"}},
        {"an operator is no template", "operator<", {"operator<"}, {"operator<"}},
        {"three-way comparison has the base of a template",
         "operator<=>",
         {"operator", "operator<=>"},
         {"operator", "operator<=>"}},
        {"a selector that may go on", "initWith:", {"initWith:", "initWith:b:"}, {"initWith:", "initWith:b:"}},
        {"a selector of two parts", "initWith:b:", {"initWith:b:"}, {"initWith:b:"}},
        {"a plain name is no selector", "initWith", {}, {"initWith:", "initWith:b:"}},
        {"a mark of pseudo-tags", "!x", {}, {}},
        {"a name that is not there", "zebra", {}, {}},
        {"a tab is in no name", "\ta", {}, {}},
        {"a tab ends no name", "a\ta.cpp", {}, {}},
    };
    const auto shown = [](Lines all) {
        for (std::string& name : all)
            name += " f a.cpp:1";
        return all;
    };
    for (const auto& c : kCases) {
        EXPECT_EQ(Matches(folder.Entry(), c.pattern, TagFile::ExactMatch()), shown(c.exact)) << c.why;
        EXPECT_EQ(Matches(folder.Entry(), c.pattern, TagFile::PartialMatch()), shown(c.partial)) << c.why;
    }
    EXPECT_EQ(Matches(folder.Entry(), "zebra", TagFile::AnyMatch()), shown(Lines(names.begin() + 1, names.end())));
}

TEST(TagFile, StopsAtTheFirstOtherNameOnRequest)
{
    const std::string foo = TagLine("Foo", "a.cpp", 1, "f");
    const std::string other = TagLine("Goo", "a.cpp", 2, "f");
    const std::string elsewhere = TagLine("Foo", "a.cpp", 3, "f", "class:Elsewhere");
    const std::string here = TagLine("Foo", "a.cpp", 4, "f", "class:Here");
    const std::string noTag = "Foo\ta.cpp\tx\n";
    const struct {
        const char* why;
        std::string tags;
        const char* pattern;
        Lines found;
    } kCases[] = {
        {"another name first", other + foo, "Foo", {}},
        {"another name later", foo + other + foo, "Foo", {"Foo f a.cpp:1"}},
        {"another name with the same beginning", TagLine("Fox", "a.cpp", 1, "f") + foo, "Foo", {}},
        {"a longer name", TagLine("Foot", "a.cpp", 1, "f") + foo, "Foo", {}},
        {"another scope does not stop", elsewhere + here, "Here::Foo", {"Here::Foo f a.cpp:4"}},
        {"a line that is no tag, with the name, does not stop", noTag + foo, "Foo", {"Foo f a.cpp:1"}},
        {"pseudo-tags do not stop", "!_TAG_FILE_SORTED\t1\t//\n" + foo, "Foo", {"Foo f a.cpp:1"}},
        {"a missing source does not stop", TagLine("Foo", "gone", 1, "f") + foo, "Foo", {"Foo f a.cpp:1"}},
        {"nothing but tabs does not stop, as there is no name", "\t\t\0\n"s + foo, "Foo", {"Foo f a.cpp:1"}},
        {"an empty line is another name", "\n" + foo, "Foo", {}},
    };
    for (const auto& c : kCases) {
        const TagsFolder folder(c.tags);
        EXPECT_EQ(Matches(folder.Entry(), c.pattern, TagFile::ExactMatch(), true), c.found) << c.why;
        EXPECT_EQ(Matches(folder.Entry(), c.pattern, TagFile::PartialMatch(), true).size(),
                  c.why == std::string("a longer name") ? 2u : c.found.size())
            << c.why;
    }
}

TEST(TagFile, ASearchContinuesWhereItStopped)
{
    const TagsFolder folder(TagLine("Foo", "a.cpp", 1, "f") + TagLine("Goo", "a.cpp", 2, "f") +
                            TagLine("Foo", "a.cpp", 3, "f"));
    const BEntry tags = folder.Entry();
    TagFile file(&tags, "Foo", false);
    ASSERT_TRUE(file.Rewind());
    std::string name;
    std::string qualifier;
    char kind;
    EntryRef ref;
    int line;
    EXPECT_TRUE(file.NextMatch(name, qualifier, kind, ref, line, true, TagFile::ExactMatch()));
    EXPECT_FALSE(file.NextMatch(name, qualifier, kind, ref, line, true, TagFile::ExactMatch()));
    EXPECT_TRUE(file.NextMatch(name, qualifier, kind, ref, line, true, TagFile::ExactMatch()));
    EXPECT_EQ(line, 3);
    file.Done();
}

TEST(TagFile, KeepsTheReferenceOfARejectedLine)
{
    const struct {
        const char* why;
        std::string tags;
        std::string name; // of the remaining reference
    } kCases[] = {
        {"no line number", "Foo\tb.h\tx;\"\tf\n", "b.h"},
        {"no kind", "Foo\tb.h\t1", "b.h"},
        {"another scope", TagLine("Foo", "b.h", 1, "f", "class:Other"), "b.h"},
        {"the last of several", TagLine("Foo", "a.cpp", 1, "f") + TagLine("Foo", "b.h", 1, "f"), "b.h"},
        {"a missing source leaves no reference", TagLine("Foo", "b.h", 1, "f") + TagLine("Foo", "gone", 1, "f"), "b.h"},
        {"none that matched", TagLine("Goo", "b.h", 1, "f"), ""},
    };
    for (const auto& c : kCases) {
        const TagsFolder folder(c.tags);
        const BEntry tags = folder.Entry();
        TagFile file(&tags, "Scope::Foo", false);
        ASSERT_TRUE(file.Rewind());
        std::string name = "old";
        std::string qualifier = "old";
        char kind = 'o';
        EntryRef ref("/old");
        int line;
        EXPECT_FALSE(file.NextMatch(name, qualifier, kind, ref, line, false, TagFile::ExactMatch())) << c.why;
        EXPECT_EQ(ref.name == nullptr ? "" : ref.name, c.name) << c.why;
        EXPECT_EQ(name, "") << c.why;
        EXPECT_EQ(qualifier, "") << c.why;
        file.Done();
    }
}

TEST(TagFile, AnEmptiedSourceMakesItStale)
{
    const time_t made = NewTime();
    const struct {
        const char* why;
        size_t size;
        time_t age; // relative to the tags file
        bool checkDates;
        const char* pattern;
        bool outOfDate;
    } kCases[] = {
        {"nine bytes, newer", 9, 1, true, "Foo", true},
        {"empty, newer", 0, 1, true, "Foo", true},
        {"ten bytes, newer: sources with content never count", 10, 1, true, "Foo", false},
        {"nine bytes, of the same second", 9, 0, true, "Foo", false},
        {"nine bytes, older", 9, -1, true, "Foo", false},
        {"not asked for", 9, 1, false, "Foo", false},
        {"on another name's line", 9, 1, true, "Goo", false},
        {"on a line of another scope", 9, 1, true, "Other::Foo", true},
    };
    for (const auto& c : kCases) {
        const TagsFolder folder(TagLine("Foo", "a.cpp", 1, "f"));
        SetTime(folder.directory.Write("a.cpp", std::string(c.size, 'x')), made + c.age);
        SetTime(folder.Tags(), made);
        const BEntry tags = folder.Entry();
        TagFile file(&tags, c.pattern, c.checkDates);
        std::string name;
        std::string qualifier;
        char kind;
        EntryRef ref;
        int line;
        EXPECT_FALSE(file.OutOfDate()) << c.why;
        ASSERT_TRUE(file.Rewind());
        file.NextMatch(name, qualifier, kind, ref, line, false, TagFile::ExactMatch());
        file.Done();
        EXPECT_EQ(file.OutOfDate(), c.outOfDate) << c.why;
        EXPECT_FALSE(TagFile(file).OutOfDate()) << c.why;
    }
}

TEST(TagFile, StaysStale)
{
    const TagsFolder folder(TagLine("Foo", "empty.cpp", 1, "f") + TagLine("Foo", "a.cpp", 1, "f"));
    folder.directory.Write("empty.cpp", "");
    const BEntry tags = folder.Entry();
    TagFile file(&tags, "Foo", true);
    std::string name;
    std::string qualifier;
    char kind;
    EntryRef ref;
    int line;
    ASSERT_TRUE(file.Rewind());
    for (const char* source : {"empty.cpp", "a.cpp"}) {
        ASSERT_TRUE(file.NextMatch(name, qualifier, kind, ref, line, false, TagFile::ExactMatch()));
        EXPECT_STREQ(ref.name, source);
        EXPECT_TRUE(file.OutOfDate());
    }
    file.Done();
}

TEST(TagFile, GivesCompletionsTagsOfMissingSources)
{
    const struct {
        const char* why;
        std::string line;
        Lines found;
    } kCases[] = {
        {"a missing source", "Foo\tgone.cpp\t12;\"\tf\tclass:Bar\n", {"Bar::Foo"}},
        {"no scope", "Foo\tgone.cpp\t12;\"\tf\n", {"Foo"}},
        {"further fields stay", "Foo\tx\t1;\"\tf\tclass:B\taccess:public\n", {"B\taccess:public::Foo"}},
        {"a pseudo-tag", "!Foo\tx\t12;\"\tf\n", {}},
        {"no file", "Foo\n", {}},
        {"no ex-command", "Foo\tx", {}},
        {"a search pattern", "Foo\tx\t/^Foo$/;\"\tf\n", {}},
        {"no kind", "Foo\tx\t12;\"", {}},
        {"no kind: the line's end is taken for one", "Foo\tx\t12;\"\n", {"Foo"}},
        {"no name", "\t\n", {}},
    };
    for (const auto& c : kCases)
        EXPECT_EQ(Names(TagsFolder(c.line).Entry()), c.found) << c.why;
}

TEST(TagFile, ForgetsTheQualifierOfThePreviousTag)
{
    const TagsFolder folder(TagLine("A", "a.cpp", 1, "f", "class:Bar") + TagLine("B", "a.cpp", 1, "f"));
    EXPECT_EQ(Names(folder.Entry()), (Lines{"Bar::A", "B"}));
    EXPECT_EQ(Matches(folder.Entry(), "", TagFile::AnyMatch()), (Lines{"Bar::A f a.cpp:1", "B f a.cpp:1"}));
}

TEST(TagFile, ListsEachPathOnceSortedWithItsEscapes)
{
    const TagsFolder folder("!_TAG\tpseudo.h\t1;\"\tf\n" + TagLine("A", "z.h", 1, "f") +
                            TagLine("B", "with\\ blank.h", 1, "f") + TagLine("C", "z.h", 9, "f") + "onlyname\n" +
                            "\t\n" + "D\tno-position.h\n" + TagLine("E", "/a/b.h", 1, "f") +
                            TagLine("F", "with\\ blank.h", 1, "f"));
    EXPECT_EQ(Paths(folder.Entry()), (Lines{"/a/b.h", "no-position.h\n", "with\\ blank.h", "z.h"}));
}

TEST(TagFile, AddsPathsToExistingOnes)
{
    const TagsFolder folder(TagLine("A", "m.h", 1, "f") + TagLine("B", "b.h", 1, "f") + TagLine("C", "z.h", 9, "f"));
    std::vector<char*> paths = {strdup("a.h"), strdup("m.h")};
    char* const kept = paths[1];
    const BEntry tags = folder.Entry();
    TagFile file(&tags, "", false);
    ASSERT_TRUE(file.Rewind());
    std::string name;
    std::string qualifier;
    ASSERT_TRUE(file.Next(name, qualifier));
    file.LoadPathCache(paths); // from the stream's position
    EXPECT_FALSE(file.Next(name, qualifier)) << "neither rewound nor closed";
    ASSERT_TRUE((file.Done(), file.Rewind()));
    file.LoadPathCache(paths);
    file.Done();
    EXPECT_EQ(Lines(paths.begin(), paths.end()), (Lines{"a.h", "b.h", "m.h", "z.h"}));
    EXPECT_EQ(paths[2], kept);
    for (char* path : paths)
        std::free(path);
}

TEST(TagFile, SkipClassTokenLeavesOtherTextsUnchanged)
{
    const char* text = nullptr;
    std::string qualifier = "untouched";
    TagFile::SkipClassToken(text, qualifier);
    EXPECT_EQ(text, nullptr);
    EXPECT_EQ(qualifier, "untouched");

    text = "file:";
    TagFile::SkipClassToken(text, qualifier);
    EXPECT_STREQ(text, "file:");
    EXPECT_EQ(qualifier, "untouched");

    text = "class:struct:X";
    TagFile::SkipClassToken(text, qualifier);
    EXPECT_STREQ(text, "X");
    EXPECT_EQ(qualifier, "X");
}

TEST(TagFile, ACopyStartsClosedAndReadsIndependently)
{
    const TagsFolder folder(TagLine("Foo", "a.cpp", 1, "f", "class:A") + TagLine("Foo", "a.cpp", 2, "f", "class:B"));
    const BEntry tags = folder.Entry();
    TagFile original(&tags, "B::Foo", false);
    ASSERT_TRUE(original.Rewind());
    TagFile copy(original);
    std::string name;
    std::string qualifier;
    EXPECT_FALSE(copy.Next(name, qualifier));
    EXPECT_STREQ(copy.Path().Path(), original.Path().Path());
    ASSERT_TRUE(copy.Rewind());
    char kind;
    EntryRef ref;
    int line;
    ASSERT_TRUE(copy.NextMatch(name, qualifier, kind, ref, line, false, TagFile::ExactMatch()));
    EXPECT_EQ(line, 2) << "the copy searches for the same pattern";
    ASSERT_TRUE(original.Next(name, qualifier));
    EXPECT_EQ(qualifier, "A");
    copy.Done();
    original.Done();
}

TEST(TagFile, ACopyChecksDatesWhenItsOriginalDoes)
{
    const TagsFolder folder(TagLine("Foo", "empty.cpp", 1, "f"));
    folder.directory.Write("empty.cpp", "");
    const BEntry tags = folder.Entry();
    for (const bool checkDates : {false, true}) {
        const TagFile original(&tags, "Foo", checkDates);
        TagFile copy(original);
        std::string name;
        std::string qualifier;
        char kind;
        EntryRef ref;
        int line;
        ASSERT_TRUE(copy.Rewind());
        ASSERT_TRUE(copy.NextMatch(name, qualifier, kind, ref, line, false, TagFile::ExactMatch()));
        copy.Done();
        EXPECT_EQ(copy.OutOfDate(), checkDates);
        EXPECT_FALSE(original.OutOfDate()) << "nobody has searched in it";
    }
}

TEST(TagFile, ClosesOnlyOnRequest)
{
    const TagsFolder folder(TagLine("Foo", "a.cpp", 1, "f"));
    const BEntry tags = folder.Entry();
    const long before = OpenDescriptors();
    {
        TagFile file(&tags, "", false);
        ASSERT_TRUE(file.Rewind());
        std::string name;
        std::string qualifier;
        while (file.Next(name, qualifier)) {
        }
        EXPECT_EQ(OpenDescriptors(), before + 1) << "the end of the file does not close it";
        file.Done();
        EXPECT_EQ(OpenDescriptors(), before);
        file.Done(); // harmless
    }
    {
        TagFile file(&tags, "", false);
        ASSERT_TRUE(file.Rewind());
        ASSERT_TRUE(file.Rewind());
        EXPECT_EQ(OpenDescriptors(), before + 2) << "rewinding does not close what is open";
        file.Done();
        EXPECT_EQ(OpenDescriptors(), before + 1);
        ASSERT_TRUE(file.Rewind());
    }
    EXPECT_EQ(OpenDescriptors(), before + 2) << "nor does destruction";
}

TEST(TagFile, KnowsItsModificationTime)
{
    const TagsFolder folder;
    SetTime(folder.Tags(), 1234567890);
    const BEntry tags = folder.Entry();
    TagFile file(&tags, "", false);
    EXPECT_EQ(file.TagTime(), 1234567890);
    std::filesystem::remove(folder.Tags());
    EXPECT_EQ(file.TagTime(), 0);
    EXPECT_EQ(TagFile(nullptr, "", false).TagTime(), 0);
}
