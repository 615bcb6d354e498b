// What one source declares, includes and mentions.
#pragma once

#include "base/TextPool.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace tagging {

enum class Language : std::uint8_t { C, Cplusplus, ObjectiveC, ObjectiveCplusplus };

// The kinds of ctags for C and C++, with the kinds of Objective-C after them. Indexes contain the values: add new ones
// at the end, and raise the version of the format (symbols/store/Format.h).
enum class SymbolKind : std::uint8_t {
    None, // only as the kind of a missing scope
    Macro,
    Enumerator,
    Function, // with a body; methods of C++ classes, too
    Enum,
    Member, // data members
    Prototype,
    Struct,
    Typedef,
    Union,
    Variable,
    ExternVariable,
    Class,
    Namespace,
    NamespaceAlias,
    UsingName,      // "using std::vector;"
    UsingNamespace, // "using namespace std;"
    TemplateParameter,
    Local, // this one and the next are found only when they are requested
    Parameter,
    MacroParameter,
    Label,
    Interface, // Objective-C from here on
    Implementation,
    Protocol,
    Category,
    InstanceMethod, // with a body
    ClassMethod,
    InstanceMethodDeclaration,
    ClassMethodDeclaration,
    Property,
    InstanceVariable,
    Slot, // of Qt; such a declaration is a Prototype, too
    Signal,
    QtProperty,
};
constexpr SymbolKind kLastSymbolKind = SymbolKind::QtProperty;

// ctags' long name ("function", "externvar"), for users and for JSON.
std::string_view LongName(SymbolKind kind);

// One declaration. The texts belong to whatever the symbol comes from: a ParsedSource or a snapshot of an index.
//
// Unnamed types have names of the form "__anon" and twelve hexadecimal digits or more. Such a name is unique only in
// its file.
struct Symbol {
    std::string_view name;
    std::string_view scope; // with all outer scopes, "outer::Inner"; "" for none
    std::string_view type; // of a variable or a member, a function's result, a typedef's target, an enumeration's base:
                           // "const std::string &", "struct list_head *"
    std::string_view signature;          // "(int a,char * b)"; "" for what cannot be called
    std::string_view bases;              // "Base<T>,Other"; in Objective-C the superclass, then the protocols
    std::string_view templateParameters; // "<class T>"; "" for what is not a template
    std::string_view target;             // what an alias or a using-declaration names, "n::v1"; a category's name
    unsigned line = 0;                   // from 1
    unsigned endLine = 0;                // of its body; 0 when unknown
    SymbolKind kind = SymbolKind::None;
    SymbolKind scopeKind = SymbolKind::None;
    enum class Access : std::uint8_t { None, Public, Protected, Private } access = Access::None;
    bool isDefinition = false; // neither a prototype, an extern variable, an @interface nor a declared method
    bool isFileLocal = false;  // ctags' "file": not visible outside of its source
    bool isStatic = false;
    bool isScopedEnum = false;
    bool isInline = false; // an inline namespace or function
    bool isVirtual = false;
    bool isSpecialization = false; // of a template
    bool isUnknownToCtags = false; // found without it: tags files leave it out
};

struct Include {
    std::string_view name; // as written between the delimiters
    unsigned line = 0;     // from 1
    bool isAngled = false; // <name>, or @import's path with slashes
};

// One parse. Moving keeps the texts in place; copying would not.
struct ParsedSource {
    ParsedSource() = default;
    ParsedSource(ParsedSource&&) = default;
    ParsedSource& operator=(ParsedSource&&) = default;
    ParsedSource(const ParsedSource&) = delete;
    ParsedSource& operator=(const ParsedSource&) = delete;

    Language language = Language::C;
    std::uint64_t contentHash = 0; // of the source's bytes (see ContentHash)
    bool isIncomplete = false;     // ctags has crashed on it or taken too long, so it has no symbols
    std::vector<Symbol> symbols;   // by line; symbols of a line in the order of the source
    std::vector<Include> includes; // in the order of the source

    // Every identifier that occurs outside of comments and strings, in directives too, once each. Not sorted. Keywords
    // that no declaration can be named after are left out.
    std::vector<std::string_view> names;

    base::TextPool texts;
};

// Detects a change of content. Indexes contain the values.
std::uint64_t ContentHash(std::string_view text);

} // namespace tagging
