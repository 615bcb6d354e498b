// Reads Objective-C: returns its declarations, and the rest of the source for a parser of C or C++.
#pragma once

#include "tagsfile/Tag.h"

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tagging {

// What a tags file does not have of a declaration. Texts as ctags writes them: "NSString *", one blank between words.
struct ObjectiveCDetails {
    std::string type;       // of a property or an instance variable; a method's result, "id" if none is written
    std::string signature;  // of a method: "(int x,NSString * y)"
    std::string bases;      // of a class, a category or a protocol: the superclass, then the protocols
    std::string parameters; // of a generic class: "<__covariant ObjectType>"
    std::string category;   // that a method or a property is declared in
    unsigned endLine = 0;   // of a body, or of an "@end"; 0 for none
    enum class Access : char { None, Public, Protected, Private } access = Access::None; // of instance variables
};

struct ObjectiveCSource {
    tagsfile::Tags tags; // interfaces, implementations, categories, protocols, methods, properties, instance variables
    std::vector<ObjectiveCDetails> details; // of each tag, if they were wanted

    // The rest of the source, with as many lines. C and C++ declarations keep their places, also between methods and
    // inside an implementation. Method bodies are blank. Without any Objective-C it is the text itself. "NS_ENUM(type,
    // Name)" becomes "enum Name", and ignored macros are blank.
    std::string rest;
};

// Whether the text may contain "@interface", "@implementation", "@protocol" or "@class", in code or in a comment. One
// pass of memchr sorts out the many headers of plain C and C++.
bool MayHaveObjectiveC(std::string_view text);

// Reads any text, also damaged and incomplete ones. 'ignored' are macros to skip, as for ctags' -I: "NAME", or "NAME+"
// if arguments in parentheses follow. Stateless; any thread.
//
// - A selector's line is that of its first part.
// - Scopes are "class:Name", also for protocols and categories. The tags of a category, and of its implementation,
//   have the scope of the class. A class extension has no name and so no tag; its declarations belong to the class.
// - Both branches of an #if are read, except for "#if 0": the condition cannot be evaluated here.
enum class Details : bool { No, Yes };
ObjectiveCSource ReadObjectiveC(std::string_view text, const std::set<std::string>& ignored,
                                Details details = Details::No);

} // namespace tagging
