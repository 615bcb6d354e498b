// Splits, joins, compares and matches qualified names (Outer::Inner::name).
#pragma once

#include <string>

// Stateless rules; any thread. Text arguments are valid NUL-terminated strings, and nothing here fails.
//
// An "entry" is a name with its qualifier in one malloc-ed block: name, NUL, qualifier, NUL. It reads as an ordinary C
// string, its name, so that entries are sorted and searched as plain char*. The owner of an entry frees it with free().
class NameAndQualifier {
public:
    // Splits behind the last "::": "A::B::c" is "c" in "A::B", "::c" is "c" in "". A text without "::", or with nothing
    // behind it ("A::", "setValue:"), is a name as a whole; 'qualifier' is then unchanged.
    static void Split(const std::string& full, std::string& name, std::string& qualifier);

    // "qualifier::name", or just the name when the qualifier is empty.
    static std::string JoinFromEntry(const char* entry);

    // Takes the exact lengths of the texts.
    static char* NewEntry(const char* name, int nameLength, const char* qualifier, int qualifierLength);

    // Sets both to point into the entry; returns the name's length.
    static int FromEntry(const char* entry, const char*& name, const char*& qualifier);

    // Orders by names as bytes, then by qualifiers as bytes: a strict "less than".
    static bool CompareCompletionCacheEntries(const char* a, const char* b);

    // True when name and qualifier are the same bytes.
    static bool MatchCompletionCacheEntries(const char* a, const char* b);

    class MatchName {
    public:
        // Equal names, template arguments ignored; for a selector pattern ("initWithFrame:"), the tag's name begins
        // with it.
        static bool Match(const std::string& pattern, const char* tagName);

        // The tag's name begins with the pattern, template arguments in either ignored.
        static bool PartialMatch(const std::string& pattern, const char* tagName);
    };

    // Matches qualifiers from their inner end: "Inner" matches "Inner" and "Outer::Inner".
    class MatchQualifier {
    public:
        explicit MatchQualifier(const char* pattern); // a whole pattern; keeps only its qualifier

        static bool Match(const std::string& patternQualifier, const char* tagQualifier); // "" matches everything
        bool operator()(const char* entry) const;

    private:
        std::string qualifier;
    };

    // Orders names by as many of their first bytes as the pattern's name has. Names that begin with it are an equal
    // range of sorted entries. Copyable.
    class PartialMatchLess {
    public:
        explicit PartialMatchLess(const char* pattern); // a whole pattern; drops its qualifier

        bool operator()(const char* a, const char* b) const;

    private:
        unsigned long length;
        std::string name;
    };
};

// Orders names by as many of their first bytes as a selector pattern has, colons included. Copyable.
class ObjCMethodMatch {
public:
    explicit ObjCMethodMatch(const char* pattern);

    // True when the tag's name begins with the whole pattern.
    static bool MatchMethodParts(const char* pattern, const char* tagName);

    bool operator()(const char* a, const char* b) const;

private:
    std::string pattern;
    unsigned long length;
};
