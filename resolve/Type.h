// The type of an expression or a declaration, as its text says it.
#pragma once

#include "symbols/store/Snapshot.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace resolve {

// "const std::map<int, Shape*>& " is {name "std::map", arguments int and Shape*}.
struct Type {
    std::string name;            // with its qualifiers, without template arguments; "" when unknown
    std::vector<Type> arguments; // of the template
    std::vector<Type> outer;     // arguments of what it is a member of: T of "vector<T>::iterator"
    int pointers = 0;            // of arrays, too
    bool isConstant = false;     // what is referred to, "const T&" and "T const *"
    bool isFunction = false;     // a pointer to a function with this result, or a block
    std::string scope;           // in which the name is looked up, from the inside out
    symbols::FileNumber file = 0;

    // The plain type of that name.
    static Type Named(std::string_view name, symbols::FileNumber file);

    bool IsKnown() const { return !name.empty(); }
    std::string_view Leaf() const;
};

// What template parameters stand for.
using Bindings = std::vector<std::pair<std::string, Type>>;

// Reads "const struct list_head *", "int (*)(char)", "typename Box<T>::Item &". Unknown when there is none, or for
// "auto".
Type ParseType(std::string_view text, std::string_view scope, symbols::FileNumber file);

// "<class T, int N = 3>": T and N.
std::vector<std::string> TemplateParameterNames(std::string_view parameters);

Type Substituted(const Type& type, const Bindings& bindings);

// For people: "std::map<int, Shape *> *".
std::string TextOf(const Type& type);

// The part behind the last "::", and what is before it.
std::string_view LeafOf(std::string_view qualified);
std::string_view ScopeOf(std::string_view qualified);
std::string Joined(std::string_view scope, std::string_view name);

// How many arguments a call may pass.
struct ArgumentCounts {
    size_t least = 0;
    size_t most = 0; // SIZE_MAX for "..."
    bool Fit(size_t count) const { return least <= count && count <= most; }
};
ArgumentCounts CountsOf(std::string_view signature);

// "(int x) const"
bool IsConstantMethod(std::string_view signature);

// The types of the parameters.
std::vector<Type> ParameterTypes(std::string_view signature);
// How badly values of these types fit; 0 when nothing speaks against them. Unknown types fit everything.
int PassedMisfit(const std::vector<Type>& parameters, const std::vector<Type>& passed);

} // namespace resolve
