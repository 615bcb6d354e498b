// Types by name, and what classes have.
#pragma once

#include "resolve/Type.h"
#include "resolve/World.h"

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace resolve {

// A class, structure, union, enum, interface or protocol, with what its template parameters stand for.
struct Class {
    Symbol symbol;
    std::string scope; // its full name: the scope of its members
    Bindings bindings;
};

struct ClassMember {
    Symbol symbol;
    Bindings bindings; // of the class that declares it
    std::string owner; // that class
    size_t depth = 0;  // in steps of bases
};

bool IsTypeKind(SymbolKind kind);  // typedefs, too
bool IsClassKind(SymbolKind kind); // has members

// Of a member or a function, with what template parameters stand for.
Type BoundType(const Symbol& symbol, const Bindings& bindings);

// The scopes from the inside out: "a::B" is "a::B", "a", "".
std::vector<std::string> OuterScopes(std::string_view scope);

class Classes {
public:
    explicit Classes(World& world) : world(world) {}

    // Follows typedefs, and aliases of namespaces, as far as they are known.
    Type Canonical(const Type& type);

    // What the type without its pointers is, best first: several files may have one of that name.
    std::vector<Class> Find(const Type& type);
    // A class by its name as written, from a scope.
    std::vector<Class> Find(std::string_view name, std::string_view scope, FileNumber file);

    std::vector<Class> Bases(const Class& derived);
    // The class and all its bases, nearest first.
    std::vector<Class> WithBases(const Class& derived);

    // Own ones, or else those of the nearest base that has any.
    std::vector<ClassMember> MembersNamed(const Class& of, std::string_view name);
    // All that are not hidden, nearest first.
    std::vector<ClassMember> Members(const Class& of);

    // Types, namespaces and aliases with that name, best first.
    std::vector<Symbol> FindTypes(std::string_view name, std::string_view scope, FileNumber file);

    Type TypeOf(const ClassMember& member);

private:
    void AddOuter(const Symbol& symbol, const std::vector<Type>& outer, Bindings* bindings);
    bool IsWholeInFile(const Class& of);
    bool IsMemberOf(const Symbol& symbol, const std::string& scope, const std::string& visible);
    int ScopeLevel(const std::string& visible, std::string_view qualifier, const std::vector<std::string>& outer);

    World& world;
};

} // namespace resolve
