// A program in the place of ctags.
#pragma once

#include <string>

// A script that says which words it was started with and answers each name with a tag "in_NAME", unless "case"
// branches before it decide otherwise; $mark is what goes behind each file's tags.
inline std::string StandInForCtags(const std::string& branches)
{
    return "#!/bin/sh\n"
           "for word; do case $word in --filter-terminator=*) mark=${word#*=};; esac; done\n"
           "while IFS= read -r name; do\n"
           "    case $name in\n" +
           branches +
           "    esac\n"
           "    printf 'in_%s\\t%s\\t1;\"\\tf\\n%s' \"$(basename \"$name\" .c)\" \"$name\" \"$mark\"\n"
           "done\n";
}
