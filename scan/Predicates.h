// Kinds of characters and of patterns. A pattern is the text to look up or complete.
//
// Pure functions without state; any thread. They run for every character of a scan and every line of a tags file, so
// only StripStd allocates.
#pragma once

#include "base/Identifier.h"

#include <cstring>
#include <string>

// Bytes from 0x80 up do not belong to identifiers in the editor's locales.
inline bool IsIDChar(char ch)
{
    return base::IsIdentifierCharacter(ch);
}

inline bool IsIDCharOrColon(char ch)
{
    return IsIDChar(ch) || ch == ':';
}

// A C++ name: contains "::".
inline bool IsCppPattern(const std::string& pattern)
{
    return pattern.find("::") != std::string::npos;
}

// A selector or a piece of one, as "initWithFrame:": contains a colon, and no "::".
inline bool IsObjCPattern(const std::string& pattern)
{
    return pattern.find(':') != std::string::npos && !IsCppPattern(pattern);
}

// A selector with a further colon after its first one, as "initWithFrame:style:".
bool IsMultiPartObjCPattern(const std::string& pattern);

// For leftward scans over a bracketed group, which meet its 'closing' bracket first: true when 'ch' opens it. Pairs: ()
// [] <>.
inline bool BackwardBracketMatch(char ch, char closing)
{
    return (closing == ')' && ch == '(') || (closing == ']' && ch == '[') || (closing == '>' && ch == '<');
}

// For rightward scans through a message: true when 'ch' closes 'opening'. Pairs: () and []. Not <>: the arguments of a
// message are expressions, where '<' compares.
inline bool ObjcForwardBracketMatch(char ch, char opening)
{
    return (opening == '(' && ch == ')') || (opening == '[' && ch == ']');
}

namespace scan {

// True when a name that starts with 'ch' has an empty base before its template arguments.
inline bool HasEmptyBase(char ch)
{
    return ch == '<' || ch == '\0';
}

// The length of a name before its template arguments: all names that MatchSkippingTemplateParams() finds equal begin
// with this part of the pattern.
size_t BaseLength(const char* name);

bool BasesMatch(const char* a, const char* b, unsigned long n);

} // namespace scan

// True when two names are equal up to their template arguments in their first 'n' characters: "vector<int>::iterator"
// and "vector" are. A name with a base shorter than 'n' equals only bases of the same length; with 'n' 0 all names are
// equal.
inline bool MatchSkippingTemplateParams(const char* a, const char* b, unsigned long n)
{
    // Most lines of a tags file end here, after one comparison.
    if (*a != *b && n > 0 && !(scan::HasEmptyBase(*a) && scan::HasEmptyBase(*b)))
        return false;
    return scan::BasesMatch(a, b, n);
}

// The same without a limit.
inline bool MatchSkippingTemplateParams(const char* a, const char* b)
{
    return MatchSkippingTemplateParams(a, b, static_cast<unsigned long>(-1));
}

// 'name' without one leading "std::", unless that leaves nothing.
std::string StripStd(const std::string& name);
