#include "wren/lsp/protocol/Uri.h"

#include <cctype>

namespace wren::lsp {

namespace {

bool IsPlain(char byte)
{
    return std::string_view("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/").find(byte) !=
           std::string_view::npos;
}

int HexDigit(char digit)
{
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    const int letter = std::tolower(static_cast<unsigned char>(digit));
    return letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : -1;
}

// What is no escape stays as it is.
std::string Decoded(std::string_view text)
{
    std::string decoded;
    for (size_t at = 0; at < text.size(); ++at) {
        const int high = text[at] == '%' && at + 2 < text.size() ? HexDigit(text[at + 1]) : -1;
        const int low = high >= 0 ? HexDigit(text[at + 2]) : -1;
        decoded += low >= 0 ? static_cast<char>(high * 16 + low) : text[at];
        at += low >= 0 ? 2 : 0;
    }
    return decoded;
}

bool StartsWithoutCase(std::string_view text, std::string_view start)
{
    for (size_t at = 0; at < start.size(); ++at)
        if (at >= text.size() || std::tolower(static_cast<unsigned char>(text[at])) != start[at])
            return false;
    return true;
}

} // namespace

std::optional<std::string> PathOfUri(std::string_view uri)
{
    if (!StartsWithoutCase(uri, "file:"))
        return std::nullopt;
    uri.remove_prefix(5);
    if (uri.starts_with("//")) {
        uri.remove_prefix(2);
        if (StartsWithoutCase(uri, "localhost/"))
            uri.remove_prefix(9);
    }
    if (!uri.starts_with('/') && !uri.starts_with("%2F") && !uri.starts_with("%2f"))
        return std::nullopt; // another host
    uri = uri.substr(0, uri.find_first_of("?#"));
    std::string path = Decoded(uri);
    if (path.find('\0') != std::string::npos)
        return std::nullopt;
    return path;
}

std::string UriOfPath(std::string_view absolute)
{
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string uri = "file://";
    for (const char byte : absolute) {
        if (IsPlain(byte)) {
            uri += byte;
            continue;
        }
        const auto value = static_cast<unsigned char>(byte);
        uri += {'%', kDigits[value >> 4], kDigits[value & 15]};
    }
    return uri;
}

} // namespace wren::lsp
