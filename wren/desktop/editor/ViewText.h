// The text inside a Scintilla view, as bytes and offsets, without conversion to the view's strings.
#pragma once

#include "wren/text/TextStore.h"

#include <cstdint>
#include <string>
#include <string_view>

class QsciScintillaBase;

namespace wren {

// As cheap to copy as a pointer, and valid as long as its view. Offsets must be within the text, unless said otherwise.
// GUI thread.
class ViewText {
public:
    explicit ViewText(const QsciScintillaBase& view);

    long Send(unsigned message, long first = 0, long second = 0) const;
    long Send(unsigned message, long first, const char* second) const;

    long Length() const;
    char CharAt(long offset) const; // '\0' outside the text
    int StyleAt(long offset) const;
    void Copy(char* buffer, long start, long end) const;
    std::string Copy(long start, long end) const;
    std::string All() const;
    long Find(char byte, long start, long end) const;     // the end when there is none
    std::string_view Pointer(long start, long end) const; // valid until the text changes

    void Replace(long start, long end, std::string_view with) const; // the caret at 'start' stays

    Selection Selected() const;
    void Select(long start, long end) const; // shows the end; clamps

private:
    using Function = intptr_t (*)(intptr_t, unsigned, uintptr_t, intptr_t);
    Function function;
    intptr_t instance;
};

} // namespace wren
