// Messages as they come in (Language Server Protocol 3.17, "Base Protocol").
#pragma once

#include <cstddef>
#include <string>

namespace wren::lsp {

// Reads from a descriptor that it borrows. Headers may come in any order and case, and end in "\r\n" or "\n".
class MessageReader {
public:
    static constexpr size_t kLongestBody = size_t(64) << 20; // bytes
    static constexpr size_t kLongestHeader = 8192;           // bytes, of all header lines of a message

    explicit MessageReader(int descriptor) : descriptor(descriptor) {}

    enum class Outcome {
        Message,
        End,    // of the input, between two messages
        Broken, // a header or a length that cannot be: where the next message begins is unknown. Problem() says why
    };
    Outcome Read(std::string& body); // waits
    const std::string& Problem() const { return problem; }

private:
    bool ReadMore(); // false at the end
    Outcome Break(const std::string& why);
    bool TakeLine(std::string& line); // false at the end, or when it is too long
    bool TakeLength(const std::string& line, size_t& length, bool& hasLength);

    const int descriptor;
    std::string buffer;
    size_t taken = 0; // of the buffer
    std::string problem;
};

} // namespace wren::lsp
