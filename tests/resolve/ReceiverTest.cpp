// What stands before a "." or "->", when templates, lambdas and deduced types are between.
#include "tests/resolve/Project.h"

#include <gtest/gtest.h>

namespace {

struct ReceiverCase {
    const char* why;
    const char* text; // behind the declaration of Item; its member 'count' is meant
};

void ExpectItem(const std::vector<ReceiverCase>& cases)
{
    for (const ReceiverCase& each : cases) {
        const std::string item =
            "struct Other {\n int count;\n};\nstruct Item {\n int $count;\n static Item Make();\n};\n";
        const Project project(item + each.text);
        const std::vector<std::string> found = Lines(project.Definition());
        EXPECT_EQ(found.empty() ? "" : found.front(), project.expected.front() + " member") << each.why << "\n"
                                                                                            << each.text;
    }
}

} // namespace

TEST(Receiver, OfATemplatesMember)
{
    ExpectItem({
        {"an alias of the parameter",
         "template <class T> struct View {\n using value_type = T;\n value_type get();\n};\n"
         "int f(View<Item> v) { return v.get().co|unt; }\n"},
        {"a nested structure", "template <class T> struct List {\n struct Node {\n T value;\n Node* next;\n };\n"
                               " Node* head;\n};\nint f(List<Item> l) { return l.head->next->value.co|unt; }\n"},
        {"two parameters", "template <class K, class V> struct Map {\n struct Entry {\n K key;\n V value;\n };\n"
                           " Entry* at(int n);\n};\nint f(Map<Other, Item> m) { return m.at(1)->value.co|unt; }\n"},
        {"a base", "template <class T> struct Base {\n T value;\n};\ntemplate <class T> struct Derived : Base<T> {};\n"
                   "int f(Derived<Item> d) { return d.value.co|unt; }\n"},
        {"a result behind the arrow", "template <class T> struct View {\n auto front() const -> const T&;\n};\n"
                                      "int f(View<Item> v) { return v.front().co|unt; }\n"},
    });
}

TEST(Receiver, OfACallOfATemplate)
{
    ExpectItem({
        {"of a value",
         "template <class T> T pick(T a, T b);\nint f(Item a) { auto p = pick(a, a); return p.co|unt; }\n"},
        {"of a pointer", "template <class T> T& at(T* a);\nint f(Item* a) { return at(a).co|unt; }\n"},
        {"of a container's argument", "template <class T> T first(const std::vector<T>& all);\n"
                                      "int f(std::vector<Item> v) { return first(v).co|unt; }\n"},
        {"written", "template <class T> T* create(int n);\nint f() { return create<Item>(1)->co|unt; }\n"},
        {"written, of a method", "struct Holder {\n template <class T> T as() const;\n};\n"
                                 "int f(Holder h) { return h.as<Item>().co|unt; }\n"},
        {"an element of a tuple", "int f(std::tuple<Other, Item> t) { return std::get<1>(t).co|unt; }\n"},
    });
}

TEST(Receiver, OfACallOfAnObject)
{
    ExpectItem({
        {"std::function", "int f(std::function<Item(int)> make) { return make(1).co|unt; }\n"},
        {"a lambda says it", "int f() { auto make = [](int n) -> Item { return {}; }; return make(1).co|unt; }\n"},
        {"a lambda returns it", "int f() { auto make = [&] { return Item::Make(); }; return make().co|unt; }\n"},
    });
}
