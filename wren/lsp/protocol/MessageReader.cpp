#include "wren/lsp/protocol/MessageReader.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <charconv>
#include <poll.h>
#include <string_view>
#include <unistd.h>

namespace wren::lsp {

namespace {

std::string_view Trimmed(std::string_view text)
{
    const size_t first = text.find_first_not_of(" \t");
    return first == std::string_view::npos ? "" : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

bool IsHeader(std::string_view name, std::string_view wanted)
{
    return std::equal(name.begin(), name.end(), wanted.begin(), wanted.end(),
                      [](char left, char right) { return std::tolower(static_cast<unsigned char>(left)) == right; });
}

} // namespace

bool MessageReader::IsReady() const
{
    while (stop != nullptr && !stop->IsCancelled()) {
        pollfd wait[2] = {{descriptor, POLLIN, 0}, {stop->Descriptor(), POLLIN, 0}};
        if (::poll(wait, 2, -1) > 0 && wait[0].revents != 0)
            return !stop->IsCancelled();
    }
    return stop == nullptr;
}

// A large message leaves its room to others.
void MessageReader::DropTaken()
{
    constexpr size_t kLarge = size_t(1) << 20;
    buffer.erase(0, taken);
    taken = 0;
    if (buffer.capacity() > kLarge && buffer.size() < kLarge / 2)
        buffer.shrink_to_fit();
}

bool MessageReader::ReadMore()
{
    constexpr size_t kBlock = 65536;
    if (taken > kBlock || taken == buffer.size())
        DropTaken();
    if (!IsReady())
        return false;
    const size_t size = buffer.size();
    buffer.resize(size + kBlock);
    ssize_t got = -1;
    do
        got = ::read(descriptor, buffer.data() + size, kBlock);
    while (got < 0 && errno == EINTR);
    buffer.resize(size + static_cast<size_t>(std::max<ssize_t>(got, 0)));
    return got > 0;
}

MessageReader::Outcome MessageReader::Break(const std::string& why)
{
    problem = why;
    return IsStopped() ? Outcome::End : Outcome::Broken;
}

bool MessageReader::TakeLine(std::string& line)
{
    size_t searched = taken;
    size_t end = std::string::npos;
    while ((end = buffer.find('\n', searched)) == std::string::npos) {
        const size_t pending = buffer.size() - taken;
        if (pending > kLongestHeader || !ReadMore())
            return false;
        searched = taken + pending;
    }
    line.assign(buffer, taken, end - taken);
    taken = end + 1;
    if (line.ends_with('\r'))
        line.pop_back();
    return true;
}

bool MessageReader::TakeLength(const std::string& line, size_t& length, bool& hasLength)
{
    const size_t colon = line.find(':');
    if (colon == std::string::npos) {
        problem = "a line that is not a header";
        return false;
    }
    if (!IsHeader(Trimmed(std::string_view(line).substr(0, colon)), "content-length"))
        return true;
    const std::string_view number = Trimmed(std::string_view(line).substr(colon + 1));
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), length);
    hasLength = error == std::errc() && end == number.data() + number.size();
    if (!hasLength)
        problem = "a Content-Length that is not a number";
    else if (length > kLongestBody)
        problem = "a message of " + std::string(number) + " bytes";
    return hasLength && length <= kLongestBody;
}

MessageReader::Outcome MessageReader::Read(std::string& body)
{
    if (taken == buffer.size() && !ReadMore())
        return Outcome::End;
    size_t length = 0;
    bool hasLength = false;
    size_t headers = 0;
    for (std::string line;; headers += line.size()) {
        if (headers > kLongestHeader || !TakeLine(line))
            return Break("the input ends within a header, or the header is too long");
        if (line.empty())
            break;
        if (!TakeLength(line, length, hasLength))
            return Outcome::Broken;
    }
    if (!hasLength)
        return Break("a header without Content-Length");
    while (buffer.size() - taken < length)
        if (!ReadMore())
            return Break("the input ends within a message");
    body.assign(buffer, taken, length);
    taken += length;
    return Outcome::Message;
}

} // namespace wren::lsp
