#include "tags/NameAndQualifier.h"

#include "scan/Predicates.h"

#include <cstdlib>
#include <cstring>
#include <new>

void NameAndQualifier::Split(const std::string& full, std::string& name, std::string& qualifier)
{
    const size_t last = full.rfind(':');
    const bool isQualified = last != std::string::npos && last > 0 && full[last - 1] == ':' && last + 1 < full.length();
    if (!isQualified) {
        name = full;
        return;
    }
    // 'full' may be one of the outputs.
    std::string before = full.substr(0, last - 1);
    name = full.substr(last + 1);
    qualifier.swap(before);
}

std::string NameAndQualifier::JoinFromEntry(const char* entry)
{
    const char* name;
    const char* qualifier;
    FromEntry(entry, name, qualifier);
    std::string joined = qualifier;
    if (!joined.empty())
        joined += "::";
    return joined += name;
}

char* NameAndQualifier::NewEntry(const char* name, int nameLength, const char* qualifier, int qualifierLength)
{
    // One byte more than the two terminators need, neither written nor read. It usually costs nothing: allocators round
    // up.
    char* entry = static_cast<char*>(std::malloc(static_cast<size_t>(nameLength) + qualifierLength + 3));
    if (entry == nullptr)
        throw std::bad_alloc();
    std::memcpy(entry, name, nameLength + 1);
    std::memcpy(entry + nameLength + 1, qualifier, qualifierLength + 1);
    return entry;
}

int NameAndQualifier::FromEntry(const char* entry, const char*& name, const char*& qualifier)
{
    const size_t length = std::strlen(entry);
    name = entry;
    qualifier = entry + length + 1;
    return static_cast<int>(length);
}

namespace {

const char* QualifierOf(const char* entry)
{
    return entry + std::strlen(entry) + 1;
}

} // namespace

bool NameAndQualifier::CompareCompletionCacheEntries(const char* a, const char* b)
{
    const int order = std::strcmp(a, b);
    return order < 0 || (order == 0 && std::strcmp(QualifierOf(a), QualifierOf(b)) < 0);
}

bool NameAndQualifier::MatchCompletionCacheEntries(const char* a, const char* b)
{
    return std::strcmp(a, b) == 0 && std::strcmp(QualifierOf(a), QualifierOf(b)) == 0;
}

bool NameAndQualifier::MatchName::Match(const std::string& pattern, const char* tagName)
{
    // A message may be cut before its last part, so a pattern also finds the selectors that it may become.
    if (IsObjCPattern(pattern))
        return ObjCMethodMatch::MatchMethodParts(pattern.c_str(), tagName);
    return MatchSkippingTemplateParams(pattern.c_str(), tagName);
}

bool NameAndQualifier::MatchName::PartialMatch(const std::string& pattern, const char* tagName)
{
    // A selector pattern is a beginning like any other, with its template arguments ignored too.
    return MatchSkippingTemplateParams(pattern.c_str(), tagName, pattern.length());
}

NameAndQualifier::MatchQualifier::MatchQualifier(const char* pattern)
{
    std::string name;
    Split(pattern, name, qualifier);
}

bool NameAndQualifier::MatchQualifier::Match(const std::string& patternQualifier, const char* tagQualifier)
{
    if (patternQualifier.empty() || MatchSkippingTemplateParams(patternQualifier.c_str(), tagQualifier))
        return true;

    const size_t tagLength = std::strlen(tagQualifier);
    const size_t patternLength = patternQualifier.length();
    // At least one character stands before the "::": the global scope ("::Inner") does not count as an outer one.
    if (tagLength <= patternLength + 2)
        return false;
    const char* inner = tagQualifier + tagLength - patternLength;
    return inner[-1] == ':' && inner[-2] == ':' && MatchSkippingTemplateParams(inner, patternQualifier.c_str());
}

bool NameAndQualifier::MatchQualifier::operator()(const char* entry) const
{
    return Match(qualifier, QualifierOf(entry));
}

NameAndQualifier::PartialMatchLess::PartialMatchLess(const char* pattern)
{
    std::string qualifier;
    Split(pattern, name, qualifier);
    length = name.length();
}

bool NameAndQualifier::PartialMatchLess::operator()(const char* a, const char* b) const
{
    return std::strncmp(a, b, length) < 0;
}

ObjCMethodMatch::ObjCMethodMatch(const char* pattern) : pattern(pattern), length(std::strlen(pattern)) {}

bool ObjCMethodMatch::MatchMethodParts(const char* pattern, const char* tagName)
{
    return std::strncmp(pattern, tagName, std::strlen(pattern)) == 0;
}

bool ObjCMethodMatch::operator()(const char* a, const char* b) const
{
    return std::strncmp(a, b, length) < 0;
}
