// How qualified names (Outer::Inner::name) are split, joined, compared and matched against tags.
#pragma once

#include <string>

// Stateless rules; any thread. Text arguments are valid NUL-terminated strings, and nothing here fails.
//
// An "entry" is a name with its qualifier in one malloc-ed block: name, NUL, qualifier, NUL. It reads as an ordinary C
// string, its name, so that entries are sorted and searched as plain char*. Whoever holds an entry frees it with
// free().
class NameAndQualifier {
public:
    // Splits behind the last "::": "A::B::c" is "c" in "A::B", "::c" is "c" in "". A text that nothing follows the "::"
    // of ("A::", "setValue:"), or that has none, is a name as a whole, and 'qualifier' is then left as it was.
    static void Split(const std::string& full, std::string& name, std::string& qualifier);

    // "qualifier::name", or just the name when the qualifier is empty.
    static std::string JoinFromEntry(const char* entry);

    // The lengths are the true lengths of the texts.
    static char* NewEntry(const char* name, int nameLength, const char* qualifier, int qualifierLength);

    // Points both into the entry; returns the name's length.
    static int FromEntry(const char* entry, const char*& name, const char*& qualifier);

    // The order of names as bytes, then of qualifiers as bytes: a strict "less than".
    static bool CompareCompletionCacheEntries(const char* a, const char* b);

    // Whether both name and qualifier are the same bytes.
    static bool MatchCompletionCacheEntries(const char* a, const char* b);

    class MatchName {
    public:
        // Equal names, template arguments ignored; a selector pattern ("initWithFrame:") only has to begin the tag's
        // name.
        static bool Match(const std::string& pattern, const char* tagName);

        // The tag's name begins with the pattern, template arguments in either ignored.
        static bool PartialMatch(const std::string& pattern, const char* tagName);
    };

    // Matches qualifiers from their inner end: "Inner" matches "Inner" and "Outer::Inner".
    class MatchQualifier {
    public:
        explicit MatchQualifier(const char* pattern); // a whole pattern; only its qualifier is kept

        static bool Match(const std::string& patternQualifier, const char* tagQualifier); // "" matches everything
        bool operator()(const char* entry) const;

    private:
        std::string qualifier;
    };

    // Orders names by as many of their first bytes as the pattern's name has: among sorted entries the names that begin
    // with it are the equal range. Copyable.
    class PartialMatchLess {
    public:
        explicit PartialMatchLess(const char* pattern); // a whole pattern; its qualifier is dropped

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

    // Whether the tag's name begins with the whole pattern.
    static bool MatchMethodParts(const char* pattern, const char* tagName);

    bool operator()(const char* a, const char* b) const;

private:
    std::string pattern;
    unsigned long length;
};
