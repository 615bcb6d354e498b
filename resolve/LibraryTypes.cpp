#include "resolve/LibraryTypes.h"

#include <algorithm>
#include <map>
#include <set>

namespace resolve {

namespace {

enum class Sort { Sequence, Map, Pointer, Pair, Tuple, Iterator, Optional, String };

// An iterator has its element as its argument.
constexpr std::string_view kIterator = "std::iterator";

const std::map<std::string_view, Sort>& Sorts()
{
    static const std::map<std::string_view, Sort> kSorts = {
        {"vector", Sort::Sequence},
        {"deque", Sort::Sequence},
        {"list", Sort::Sequence},
        {"forward_list", Sort::Sequence},
        {"array", Sort::Sequence},
        {"set", Sort::Sequence},
        {"multiset", Sort::Sequence},
        {"unordered_set", Sort::Sequence},
        {"unordered_multiset", Sort::Sequence},
        {"stack", Sort::Sequence},
        {"queue", Sort::Sequence},
        {"priority_queue", Sort::Sequence},
        {"span", Sort::Sequence},
        {"initializer_list", Sort::Sequence},
        {"valarray", Sort::Sequence},
        {"map", Sort::Map},
        {"multimap", Sort::Map},
        {"unordered_map", Sort::Map},
        {"unordered_multimap", Sort::Map},
        {"unique_ptr", Sort::Pointer},
        {"shared_ptr", Sort::Pointer},
        {"weak_ptr", Sort::Pointer},
        {"auto_ptr", Sort::Pointer},
        {"reference_wrapper", Sort::Pointer},
        {"atomic", Sort::Optional},
        {"future", Sort::Optional},
        {"optional", Sort::Optional},
        {"pair", Sort::Pair},
        {"tuple", Sort::Tuple},
        {"iterator", Sort::Iterator},
        {"string", Sort::String},
        {"basic_string", Sort::String},
        {"string_view", Sort::String},
    };
    return kSorts;
}

std::optional<Sort> SortOf(const Type& type)
{
    std::string_view name = type.name;
    if (name.starts_with("::"))
        name.remove_prefix(2);
    const std::string_view scope = ScopeOf(name);
    const bool isLibrary = scope == "std" || scope == "boost" || scope == "std::experimental" ||
                           (scope.empty() && !type.arguments.empty());
    if (!isLibrary)
        return std::nullopt;
    const auto found = Sorts().find(LeafOf(name));
    return found == Sorts().end() ? std::nullopt : std::optional(found->second);
}

bool IsIteratorName(std::string_view leaf)
{
    return leaf == "iterator" || leaf == "const_iterator" || leaf == "reverse_iterator" ||
           leaf == "const_reverse_iterator";
}

// "std::vector<T>::iterator" as a type: its container.
std::optional<Type> ContainerOf(const Type& type)
{
    if (type.outer.empty())
        return std::nullopt;
    Type container = type;
    container.name = ScopeOf(type.name);
    container.arguments = type.outer;
    container.outer.clear();
    return SortOf(container) ? std::optional(container) : std::nullopt;
}

std::optional<Type> Argument(const Type& type, size_t index)
{
    if (index >= type.arguments.size())
        return std::nullopt;
    return type.arguments[index];
}

Type Made(std::string_view name, std::vector<Type> arguments, const Type& like)
{
    Type made;
    made.name = name;
    made.arguments = std::move(arguments);
    made.scope = like.scope;
    made.file = like.file;
    return made;
}

std::optional<Type> IteratorOf(const Type& type)
{
    const std::optional<Type> element = Element(type);
    return element ? std::optional(Made(kIterator, {*element}, type)) : std::nullopt;
}

std::optional<Type> Once(std::optional<Type> type)
{
    if (type)
        --type->pointers;
    return type;
}

} // namespace

bool IsLibraryType(const Type& type)
{
    return SortOf(type).has_value() || ContainerOf(type).has_value();
}

std::optional<Type> Element(const Type& type)
{
    if (type.pointers > 0)
        return Once(type);
    const std::optional<Sort> sort = SortOf(type);
    if (!sort) {
        const auto container = ContainerOf(type);
        if (!container)
            return std::nullopt;
        const std::string_view leaf = type.Leaf();
        if (leaf == "key_type")
            return std::nullopt;
        return Element(*container);
    }
    if (*sort == Sort::Map && type.arguments.size() > 1)
        return Made("std::pair", {type.arguments[0], type.arguments[1]}, type);
    if (*sort == Sort::String)
        return Made("char", {}, type);
    return Argument(type, 0);
}

std::optional<Type> Pointee(const Type& type)
{
    if (type.pointers > 0)
        return Once(type);
    if (ContainerOf(type))
        return IsIteratorName(type.Leaf()) ? Element(type) : std::nullopt;
    const std::optional<Sort> sort = SortOf(type);
    if (sort == Sort::Pointer || sort == Sort::Iterator || sort == Sort::Optional)
        return Argument(type, 0);
    return std::nullopt;
}

std::optional<Type> Indexed(const Type& type)
{
    if (type.pointers > 0)
        return Once(type);
    const std::optional<Sort> sort = SortOf(type);
    if (sort == Sort::Map)
        return Argument(type, 1);
    return sort ? Element(type) : std::nullopt;
}

std::optional<Type> LibraryMember(const Type& type, std::string_view name)
{
    static const std::set<std::string_view> kIterators = {
        "begin", "end", "cbegin", "cend", "rbegin", "rend", "find", "lower_bound", "upper_bound", "erase", "crbegin"};
    static const std::set<std::string_view> kElements = {"front",    "back", "at",   "top",          "value",
                                                         "value_or", "get",  "load", "emplace_back", "emplace_front"};
    const std::optional<Sort> sort = SortOf(type);
    if (!sort || type.pointers > 0)
        return std::nullopt;
    if (*sort == Sort::Pair)
        return name == "first" ? Argument(type, 0) : name == "second" ? Argument(type, 1) : std::nullopt;
    if (*sort == Sort::Pointer && (name == "get" || name == "release")) {
        std::optional<Type> pointer = Argument(type, 0);
        if (pointer && type.Leaf() != "reference_wrapper")
            ++pointer->pointers;
        return pointer;
    }
    if (*sort == Sort::Pointer && name == "lock")
        return Made("std::shared_ptr", type.arguments, type);
    if (name == "data" && *sort == Sort::Sequence) {
        std::optional<Type> pointer = Element(type);
        if (pointer)
            ++pointer->pointers;
        return pointer;
    }
    if ((*sort == Sort::Sequence || *sort == Sort::Map || *sort == Sort::String) && kIterators.contains(name))
        return IteratorOf(type);
    if (name == "at" && *sort == Sort::Map)
        return Argument(type, 1);
    if ((name == "insert" || name == "emplace" || name == "try_emplace") &&
        (*sort == Sort::Map || *sort == Sort::Sequence)) {
        const auto iterator = IteratorOf(type);
        const bool isPair = *sort == Sort::Map || type.Leaf().ends_with("set");
        return iterator && isPair ? Made("std::pair", {*iterator, Made("bool", {}, type)}, type) : iterator;
    }
    if ((*sort == Sort::Sequence || *sort == Sort::Optional) && kElements.contains(name))
        return Argument(type, 0);
    if (*sort == Sort::String && (name == "substr" || name == "append" || name == "str"))
        return type;
    return std::nullopt;
}

std::optional<Type> Part(const Type& type, size_t part)
{
    const std::optional<Sort> sort = SortOf(type);
    if (sort == Sort::Pair || sort == Sort::Tuple)
        return Argument(type, part);
    if (sort == Sort::Sequence || type.pointers > 0)
        return Element(type);
    return std::nullopt;
}

std::optional<Type> LibraryCall(std::string_view name, const std::vector<Type>& arguments,
                                const std::vector<Type>& passed)
{
    const std::string_view leaf = LeafOf(name);
    const auto first = [&]() -> std::optional<Type> {
        return passed.empty() || !passed.front().IsKnown() ? std::nullopt : std::optional(passed.front());
    };
    if (!arguments.empty()) {
        const Type& like = arguments.front();
        if (leaf == "make_unique" || leaf == "make_shared" || leaf == "allocate_shared" ||
            leaf == "static_pointer_cast" || leaf == "dynamic_pointer_cast")
            return Made(leaf == "make_unique" ? "std::unique_ptr" : "std::shared_ptr", {like}, like);
        if (leaf == "forward" || leaf == "any_cast" || leaf == "bit_cast" || leaf == "declval" || leaf == "exchange")
            return like;
        const bool isNumber = !like.name.empty() && like.name[0] >= '0' && like.name[0] <= '9';
        if (leaf == "get" && isNumber)
            return passed.empty() || like.name.size() > 1
                       ? std::nullopt
                       : Part(passed.front(), static_cast<size_t>(like.name[0] - '0'));
        if (leaf == "get" && !passed.empty() && !like.name.empty() && SortOf(passed.front()) == Sort::Tuple)
            return like;
    }
    if (leaf == "move" || leaf == "min" || leaf == "max" || leaf == "as_const" || leaf == "exchange" || leaf == "ref" ||
        leaf == "clamp" || leaf == "launder" || leaf == "next" || leaf == "prev")
        return first();
    if (leaf == "find" || leaf == "find_if" || leaf == "lower_bound" || leaf == "upper_bound" ||
        leaf == "max_element" || leaf == "min_element" || leaf == "remove_if" || leaf == "find_if_not")
        return passed.size() > 1 ? first() : std::nullopt;
    if ((leaf == "begin" || leaf == "end" || leaf == "cbegin") && first())
        return IteratorOf(*first());
    if (leaf == "make_pair" && passed.size() == 2)
        return Made("std::pair", passed, passed.front());
    if (leaf == "addressof" && first()) {
        Type pointer = *first();
        ++pointer.pointers;
        return pointer;
    }
    return std::nullopt;
}

} // namespace resolve
