// The result of an operation that can fail for a reason that its caller should see.
#pragma once

#include <cerrno>
#include <cstring>
#include <string>
#include <utility>
#include <variant>

namespace base {

struct Error {
    std::string text; // what failed, in words for the user, without a full stop
    int number = 0;   // the errno with the reason; 0 when the text contains it

    std::string Message() const { return number == 0 ? text : text + ": " + std::strerror(number); }
};

// The error of the system call that has just failed.
inline Error SystemError(std::string text)
{
    const int number = errno; // before the text is moved
    return {std::move(text), number};
}

// A value or an error. Check which before using the value.
template <class T>
class [[nodiscard]] Result {
public:
    Result(T value) : content(std::in_place_index<0>, std::move(value)) {}
    Result(Error error) : content(std::in_place_index<1>, std::move(error)) {}

    explicit operator bool() const { return content.index() == 0; }
    T& operator*() { return *std::get_if<0>(&content); }
    const T& operator*() const { return *std::get_if<0>(&content); }
    T* operator->() { return std::get_if<0>(&content); }
    const T* operator->() const { return std::get_if<0>(&content); }

    const Error& Failure() const { return *std::get_if<1>(&content); } // only when there is no value

private:
    std::variant<T, Error> content;
};

// For an operation without a value.
template <>
class [[nodiscard]] Result<void> {
public:
    Result() = default;
    Result(Error error) : error(std::move(error)), failed(true) {}

    explicit operator bool() const { return !failed; }
    const Error& Failure() const { return error; }

private:
    Error error;
    bool failed = false;
};

} // namespace base
