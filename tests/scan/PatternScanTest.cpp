#include "scan/SelectionScanner.h"
#include "tests/scan/CountingHost.h"
#include "tests/support/FakeHost.h"

#include <gtest/gtest.h>

namespace {

enum Purpose { kLookup, kCompletion };

struct Result {
    bool found;
    long start;
    long end;
    std::string pattern;
};

Result Scan(FakeHost& host, Purpose purpose)
{
    Result r{false, -99, -98, "left over"};
    r.found = ScanForSuggestionPattern(&host, host.selectionStart, host.selectionEnd, r.start, r.end, r.pattern,
                                       purpose == kCompletion);
    return r;
}

struct NameCase {
    const char* why;
    Purpose purpose;
    const char* document;
    const char* name; // null: there is none
};

const NameCase kNameCases[] = {
    {"a plain name being typed", kCompletion, "x = strc|;", "strc"},
    {"what is right of the caret is not typed", kCompletion, "x = str|cpy;", "str"},
    {"a lookup takes the whole name", kLookup, "x = str|cpy(a);", "strcpy"},
    {"from its beginning", kLookup, "x = |strcpy(a);", "strcpy"},
    {"from its end", kLookup, "x = strcpy|(a);", "strcpy"},
    {"from its selection", kLookup, "x = [[strcpy]](a);", "strcpy"},
    {"from a piece of it selected", kLookup, "x = s[[trc]]py(a);", "strcpy"},
    {"a document that is one name", kLookup, "str|cpy", "strcpy"},
    {"looked up from its first character", kLookup, "|strcpy", "strcpy"},
    {"nothing there", kLookup, "x = | ;", nullptr},
    {"nothing typed", kCompletion, "x = | ;", nullptr},
    {"an empty document", kLookup, "|", nullptr},
    {"an empty document to complete in", kCompletion, "|", nullptr},
    {"a selection of two words", kLookup, "[[ab cd]]", nullptr},
    {"a selection that starts before the word", kLookup, "x [[= foo]];", nullptr},
    {"a selection that spans lines", kLookup, "foo[[\n]]bar", nullptr},

    {"a leading std:: is left away", kCompletion, "std::vec|", "vec"},
    {"only one", kCompletion, "std::std::vec|", "std::vec"},
    {"and not one further in", kCompletion, "a::std::vec|", "a::std::vec"},
    {"std:: with nothing behind it stays", kCompletion, "x = std::|", "std::"},
    {"a scope with nothing behind it yet", kCompletion, "x = Outer::|", "Outer::"},
    {"the global scope", kCompletion, "x = ::strc|", "::strc"},
    {"the global scope at the beginning", kCompletion, "::strc|", "::strc"},
    {"scopes and template arguments", kCompletion, "Outer<int>::Inner::me|", "Outer<int>::Inner::me"},
    {"a caret in the middle of the chain", kLookup, "Outer<int>::Inn|er::me;", "Outer<int>::Inner::me"},
    {"a caret in the first scope", kLookup, "Out|er<int>::Inner::me;", "Outer<int>::Inner::me"},
    {"a caret in the arguments finds the argument", kLookup, "Outer<in|t>::Inner", "int"},
    {"arguments of arguments", kLookup, "x = ma|p<K, vector<V> >::iterator i;", "map<K, vector<V> >::iterator"},
    {"template arguments at the end", kLookup, "x = vec|tor<int> v;", "vector<int>"},
    {"arguments with scopes and commas", kCompletion, "map<std::string, int>::iter|", "map<std::string, int>::iter"},
    {"a caret right behind a scope", kLookup, "x = Outer::|Inner;", "Outer::Inner"},
    {"a caret right before one", kLookup, "x = Outer|::Inner;", "Outer::Inner"},
    {"a scope at the document's end", kLookup, "x = Out|er::", "Outer::"},
    {"nothing right of a scope chain makes it a selector", kLookup, "Outer::In|ner:x fg:y", "Outer::Inner:"},
    {"not even with template arguments in it", kLookup, "[obj foo:vec<int>::In|ner:x fg:y]", "vec<int>::Inner:"},
    {"nor does half a scope behind template arguments", kLookup, "y = vec<int>:|x:z;", "x:"},
    {"a scope chain in a message", kCompletion, "[obj foo:a::b|", "a::b"},
    {"one with template arguments", kCompletion, "[obj foo:vec<int>::b|", "vec<int>::b"},
    {"one behind brackets and quotes", kCompletion, "[obj foo:a::b(x)'y'c|", "c"},
    {"a comparison in front of a scope", kCompletion, "a>b::c|", "b::c"},
    {"the first colon of a scope behind arguments", kCompletion, "[obj foo:vec<int>:|", nullptr},

    {"an open '<' costs the character before it", kLookup, "x = cou|nt<n;", "coun"},
    {"and a letter altogether", kLookup, "i|<n", nullptr},
    {"a letter with something before it too", kLookup, "(i|<n", nullptr},
    {"a closed one is template arguments", kLookup, "x = co|unt<n> y;", "count<n>"},
    {"the '>' of an arrow opens a group", kCompletion, "if (i<n) a->b|", "i<n) a->b"},
    {"an arrow without a '<' before it", kCompletion, "x = a->b|", "b"},
    {"the same at the beginning", kCompletion, "a->b|", "b"},
    {"a '>' that begins the document", kCompletion, ">b|", "b"},
    {"template arguments that begin the document", kCompletion, "<int>b|", "<int>b"},
    {"a group opens at its outermost '>'", kCompletion, "x>>b|", "b"},
    {"inner groups close first", kCompletion, "a<b<c>>::d|", "a<b<c>>::d"},

    {"a single colon ends a name", kCompletion, "a ? b:cd|", "cd"},
    {"even a name behind a scope", kCompletion, "a ? b:c::de|", "c::de"},
    {"a colon at the very end is kept", kCompletion, "x = a b:|", "b:"},
    {"with a name before it", kCompletion, "f(); b:|", "b:"},
    {"a colon without a name", kCompletion, "x = a :|", nullptr},
    {"a colon that begins the document", kCompletion, ":a|", "a"},
    {"a single colon and a pair", kCompletion, "x = a:::b|", "::b"},
    {"a label is looked up with its colon", kLookup, "  done|:\n", "done:"},

    {"the first argument", kCompletion, "foo(ba|", "ba"},
    {"another argument", kCompletion, "foo(bar, ba|", "ba"},
    {"a member", kCompletion, "x.mem|", "mem"},
    {"a name behind a comparison", kCompletion, "a<b|", "b"},
    {"a name in braces", kCompletion, "{ab|", "ab"},
    {"bytes beyond ASCII end a name", kLookup, "caf\xC3\xA9z|z", "zz"},
    {"a name before another line", kLookup, "stand|by\nfoo: bar", "standby"},

    {"an argument of a message", kLookup, "[obj setObject:ar|g];", "arg"},
    {"an argument before another piece", kLookup, "[obj setObject:ar|g forKey:key];", "arg"},
    {"the receiver of a message", kLookup, "[ob|j setObject:x];", "obj"},
    {"a message without arguments", kLookup, "[obj des|cription];", "description"},
    {"a piece whose message never began", kCompletion, "a: bc|", "bc"},
    {"a piece behind the end of a statement", kCompletion, "[x y]; a: bc|", "bc"},
    {"behind a comma", kCompletion, "[x y, ab: cd|", "cd"},
    {"behind a brace", kCompletion, "[x {ab: cd|", "cd"},
    {"behind a closing brace", kCompletion, "[x }ab: cd|", "cd"},
    {"in parentheses", kCompletion, "[x (ab: cd|", "cd"},
    {"two pieces without an argument between them", kCompletion, "[x a:b: cd|", "cd"},
    {"a colon with a blank before it", kCompletion, "[x y ? b : cd|", "cd"},
    {"a label that is no piece is not assembled", kLookup, "; b: c|d:e fg:h", "cd:"},
};

TEST(ScanForSuggestionPattern, FindsNames)
{
    for (const NameCase& c : kNameCases) {
        FakeHost host(c.document);
        const Result r = Scan(host, c.purpose);
        EXPECT_EQ(r.found, c.name != nullptr) << c.why;
        EXPECT_EQ(r.pattern, c.name == nullptr ? "" : c.name) << c.why;
        if (!r.found) {
            EXPECT_EQ(r.start, -99) << c.why;
            EXPECT_EQ(r.end, -98) << c.why;
        } else if (c.purpose == kCompletion || r.pattern.back() != ':') {
            ASSERT_GE(r.start, 0) << c.why;
            EXPECT_EQ(host.text.substr(r.start, r.end - r.start), r.pattern) << c.why;
        }
    }
}

struct SelectorCase {
    const char* why;
    Purpose purpose;
    const char* document;
    const char* selector;
};

const SelectorCase kSelectorCases[] = {
    {"the piece being typed", kCompletion, "[obj setObject:x forKey:ke|", "setObject:forKey:ke"},
    {"the whole selector", kLookup, "[obj setObject:x for|Key:key];", "setObject:forKey:"},
    {"from its first piece", kLookup, "[obj set|Object:x forKey:key];", "setObject:forKey:"},
    {"from a piece before its colon", kLookup, "[obj setObject:x forKey|:key];", "setObject:forKey:"},
    {"the word behind the last colon is an argument", kLookup, "[obj set|Object:x forKey:key]", "setObject:forKey:"},
    {"a piece and the blank behind it", kCompletion, "[obj initWithFrame:r |", "initWithFrame:"},
    {"the next piece being typed", kCompletion, "[obj initWithFrame:r sty|", "initWithFrame:sty"},
    {"arguments in brackets are passed over", kCompletion, "[obj setObject:[a b:c d:e] forKey:ke|",
     "setObject:forKey:ke"},
    {"brackets in brackets", kCompletion, "[obj setObject:[[a b] c:d] forKey:ke|", "setObject:forKey:ke"},
    {"parentheses", kCompletion, "[obj setObject:f(a, b:c) forKey:ke|", "setObject:forKey:ke"},
    {"other brackets inside do not count", kCompletion, "[obj setObject:f(a]) forKey:ke|", "setObject:forKey:ke"},
    {"strings", kCompletion, "[obj setObject:@\"a]; b:\" forKey:ke|", "setObject:forKey:ke"},
    {"a quote in quotes of the other kind", kCompletion, "[obj setObject:\"it's\" forKey:ke|", "setObject:forKey:ke"},
    {"characters", kCompletion, "[obj setObject:';' forKey:ke|", "setObject:forKey:ke"},
    {"a cast of the argument", kLookup, "[obj setOb|ject:(id)x forKey:key];", "setObject:forKey:"},
    {"scopes in an argument", kCompletion, "[obj setObject:x forKey:a::b + ke|", "setObject:forKey:a::ke"},
    {"behind a blank a scope is no scope", kCompletion, "[obj foo:a::b c|", "foo:a::c"},
    {"nor behind an operator", kCompletion, "[obj foo:a::b+c|", "foo:a::c"},
    {"a message in a block", kCompletion, "{ a; [obj setObject:x forKey:ke|", "setObject:forKey:ke"},
    {"the inner message of two", kCompletion, "[a b:[obj setObject:x forKey:ke|", "setObject:forKey:ke"},
    {"a colon without a bracket, looked up", kLookup, "set|Object:x", "setObject:"},
    {"a single colon that ends the document", kLookup, "x = do|ne:", "done:"},
    {"lines do not end a message", kLookup, "[obj set|Object:x\n     forKey:key];", "setObject:forKey:"},
    {"an unclosed message goes on to the document's end", kLookup, "set|Object:x\n\nint a\n\nforKey:y",
     "setObject:forKey:"},
    {"a brace ends it", kLookup, "set|Object:x } forKey:y", "setObject:"},
    {"a semicolon ends it", kLookup, "set|Object:x; forKey:y", "setObject:"},
    {"a quote in brackets is not seen", kLookup, "set|Object:(a \" ) forKey:y \"", "setObject:forKey:"},
    {"the rightmost character of a piece starts nothing", kCompletion, "[x a:1 b:2 c:|", "c:"},
    {"a piece of two does", kCompletion, "[x a:1 bc:2 d:|", "bc:d:"},
    {"the document's end leaves it to what is on the left", kLookup, "[obj setObject:ar|g", "setObject:"},
    {"a piece that no '[' precedes is forgotten", kLookup, "b: c|d:e fg:h", "cd:fg:"},
    {"so is its place", kLookup, "ab:x c|d:e", "cd:"},
    {"between the colons of a scope the right one looks single", kLookup, "x = Outer:|:Inner;", "Outer::"},
    {"without an identifier on the left the document's first is taken", kLookup, "a:b [|foo:x]", "a:"},
    {"and a message on the way is passed over", kLookup, "[|foo:x]", ""},
};

TEST(ScanForSuggestionPattern, AssemblesSelectors)
{
    for (const SelectorCase& c : kSelectorCases) {
        FakeHost host(c.document);
        const Result r = Scan(host, c.purpose);
        EXPECT_TRUE(r.found) << c.why;
        EXPECT_EQ(r.pattern, c.selector) << c.why;
        EXPECT_EQ(r.end - r.start, static_cast<long>(r.pattern.length())) << c.why;
    }
}

TEST(ScanForSuggestionPattern, PlacesASelectorAfterItsLastColon)
{
    FakeHost host("[obj set|Object:x forKey:key];");
    const Result r = Scan(host, kLookup);
    EXPECT_EQ(r.end, 24);
    EXPECT_EQ(r.start, 24 - 17) << "scattered pieces are no range of the document";
}

TEST(ScanForSuggestionPattern, MayPlaceAnEmptySelectorBeforeTheDocument)
{
    FakeHost host("[|foo:x]");
    const Result r = Scan(host, kLookup);
    EXPECT_TRUE(r.found);
    EXPECT_EQ(r.start, -1);
    EXPECT_EQ(r.end, -1);
}

TEST(ScanForSuggestionPattern, RefusesSelectorsBeyondTheLimit)
{
    for (const long length : {1024L, 1025L}) {
        FakeHost host("[x " + std::string(length - 1, 'a') + "|:y]");
        const Result r = Scan(host, kLookup);
        EXPECT_EQ(r.found, length == 1024);
        EXPECT_EQ(static_cast<long>(r.pattern.length()), length == 1024 ? 1024 : 0);
        EXPECT_EQ(r.start, length == 1024 ? 3 : -99);
    }
}

TEST(ScanForSuggestionPattern, LimitsTheSelectionButNotTheName)
{
    FakeHost host(std::string(5000, 'a'));
    host.selectionEnd = 1024;
    EXPECT_EQ(Scan(host, kLookup).pattern.length(), 5000U);
    host.selectionEnd = 1025;
    EXPECT_FALSE(Scan(host, kLookup).found);
}

TEST(ScanForSuggestionPattern, CompletesAtTheEndOfASelection)
{
    FakeHost host("x = st[[rc]]py");
    const Result r = Scan(host, kCompletion);
    EXPECT_EQ(r.pattern, "strc");
    EXPECT_EQ(r.start, 4);
    EXPECT_EQ(r.end, 8);
}

TEST(ScanForSuggestionPattern, AnswersWithTheSelectionItself)
{
    FakeHost host("x = std::vec|");
    long start = 12, end = 12;
    std::string pattern;
    EXPECT_TRUE(ScanForSuggestionPattern(&host, start, end, start, end, pattern, true));
    EXPECT_EQ(start, 9);
    EXPECT_EQ(end, 12);
}

TEST(ScanForSuggestionPattern, ReadsTheContextOnceAndNamesTwice)
{
    const std::string filler(10000, ' ');
    CountingHost host(filler + "foo_bar|" + filler);
    EXPECT_EQ(Scan(host, kCompletion).pattern, "foo_bar");
    EXPECT_LE(host.reads, host.selectionEnd + 8) << "the context, then the name and its neighbour";

    host.reads = 0;
    EXPECT_EQ(Scan(host, kLookup).pattern, "foo_bar");
    EXPECT_LE(host.reads, host.selectionEnd + 10) << "nothing far to the right";
}

TEST(ScanForSuggestionPattern, StopsAtTheStartOfTheStatement)
{
    const std::string filler(10000, ' ');
    CountingHost host(filler + "; x = foo_bar|;" + filler);
    EXPECT_EQ(Scan(host, kLookup).pattern, "foo_bar");
    EXPECT_LE(host.reads, 30) << "neither the document before it nor the one behind it";
}

} // namespace
