// A stand-in for ctags.
#pragma once

#include <string>

// A script that answers each name with a tag "in_NAME", unless the "case" branches handle the name; $mark follows each
// file's tags.
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
