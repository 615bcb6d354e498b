// Messages as they come in (Language Server Protocol 3.17, "Base Protocol").
#pragma once

#include "base/CancelToken.h"

#include <cstddef>
#include <string>

namespace wren::lsp {

// Reads from a descriptor that it borrows. Headers may come in any order and case, and end in "\r\n" or "\n".
class MessageReader {
public:
    static constexpr size_t kLongestBody = size_t(64) << 20; // bytes
    static constexpr size_t kLongestHeader = 8192;           // bytes, of all header lines of a message

    // Reading ends, as at the end of the input, when 'stop' is cancelled; borrowed, null for never.
    explicit MessageReader(int descriptor, const base::CancelToken* stop = nullptr) : descriptor(descriptor), stop(stop)
    {
    }

    enum class Outcome {
        Message,
        End,    // of the input, between two messages, or the wish to stop
        Broken, // a header or a length that cannot be: where the next message begins is unknown. Problem() says why
    };
    Outcome Read(std::string& body); // waits
    const std::string& Problem() const { return problem; }

private:
    bool IsReady() const; // waits for input; false when it has to stop
    bool IsStopped() const { return stop != nullptr && stop->IsCancelled(); }
    bool ReadMore(); // false at the end
    void DropTaken();
    Outcome Break(const std::string& why);
    bool TakeLine(std::string& line); // false at the end, or when it is too long
    bool TakeLength(const std::string& line, size_t& length, bool& hasLength);

    const int descriptor;
    const base::CancelToken* const stop;
    std::string buffer;
    size_t taken = 0; // of the buffer
    std::string problem;
};

} // namespace wren::lsp
