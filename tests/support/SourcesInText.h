// A tree of sources in one text: "== shape.h\nint area();\n== main.cpp\nint x = ar|ea();".
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

// The path and the text of each file, in the order of the text. A text without "==" is a file "a.cpp".
inline std::vector<std::pair<std::string, std::string>> SourcesInText(std::string text)
{
    if (!text.starts_with("== "))
        text = "== a.cpp\n" + text;
    std::vector<std::pair<std::string, std::string>> sources;
    for (size_t begin = 0; begin != std::string::npos;) {
        const size_t end = text.find("\n== ", begin);
        const std::string part = text.substr(begin, end == std::string::npos ? end : end + 1 - begin);
        const size_t line = part.find('\n');
        sources.emplace_back(part.substr(3, line - 3), part.substr(line + 1));
        begin = end == std::string::npos ? end : end + 1;
    }
    return sources;
}

// What stands for the caret in the text of a file. In one with '||', the place is written "<|>".
inline std::string_view CaretSignIn(std::string_view text)
{
    return text.find("<|>") != std::string_view::npos ? "<|>" : "|";
}
