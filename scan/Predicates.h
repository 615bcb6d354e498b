// What kind of character, and what kind of pattern. A pattern is the text that a user wants looked up or completed.
//
// Pure functions: no state, any thread. They run for every character of a scan and for every line of a tags file, so
// none but StripStd allocates.
#pragma once

#include <cctype>
#include <cstring>
#include <string>

// Bytes from 0x80 up belong to no identifier in the locales that the editor runs in.
inline bool IsIDChar(char ch)
{
    return std::isalnum(static_cast<unsigned char>(ch)) || ch == '_';
}

inline bool IsIDCharOrColon(char ch)
{
    return IsIDChar(ch) || ch == ':';
}

// A C++ name: "::" anywhere in it.
inline bool IsCppPattern(const std::string& pattern)
{
    return pattern.find("::") != std::string::npos;
}

// A selector or a piece of one, as "initWithFrame:": a colon, and no "::" anywhere.
inline bool IsObjCPattern(const std::string& pattern)
{
    return pattern.find(':') != std::string::npos && !IsCppPattern(pattern);
}

// A selector with a colon after its first one, as "initWithFrame:style:".
bool IsMultiPartObjCPattern(const std::string& pattern);

// For walking leftwards past a bracketed group, whose 'closing' bracket was met first: whether 'ch' opens it. Knows the
// pairs () [] <>.
inline bool BackwardBracketMatch(char ch, char closing)
{
    return (closing == ')' && ch == '(') || (closing == ']' && ch == '[') || (closing == '>' && ch == '<');
}

// For walking rightwards through a message: whether 'ch' closes what 'opening' opened. Knows the pairs () and [], but
// not <>: the arguments of a message are expressions, where '<' compares.
inline bool ObjcForwardBracketMatch(char ch, char opening)
{
    return (opening == '(' && ch == ')') || (opening == '[' && ch == ']');
}

namespace scan {

// Whether a name that starts with 'ch' has nothing in front of its template arguments.
inline bool HasEmptyBase(char ch)
{
    return ch == '<' || ch == '\0';
}

// How much of a name stands before its template arguments: all names that MatchSkippingTemplateParams() finds equal
// begin with that much of the pattern.
size_t BaseLength(const char* name);

bool BasesMatch(const char* a, const char* b, unsigned long n);

} // namespace scan

// Whether two names are equal up to their template arguments, looking at no more than their first 'n' characters:
// "vector<int>::iterator" and "vector" are. A name whose base is shorter than 'n' equals only bases of its own length;
// with 'n' 0 everything is equal.
inline bool MatchSkippingTemplateParams(const char* a, const char* b, unsigned long n)
{
    // Most lines of a tags file leave here, at the price of one comparison.
    if (*a != *b && n > 0 && !(scan::HasEmptyBase(*a) && scan::HasEmptyBase(*b)))
        return false;
    return scan::BasesMatch(a, b, n);
}

// The same without a limit.
inline bool MatchSkippingTemplateParams(const char* a, const char* b)
{
    return MatchSkippingTemplateParams(a, b, static_cast<unsigned long>(-1));
}

// 'name' without one leading "std::", unless nothing would be left.
std::string StripStd(const std::string& name);
