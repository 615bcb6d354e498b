// Why a request is not answered (JSON-RPC 2.0; Language Server Protocol 3.17, "ErrorCodes").
#pragma once

#include <stdexcept>
#include <string>

namespace wren::lsp {

enum class FailureCode {
    ParseError = -32700,
    InvalidRequest = -32600,
    MethodNotFound = -32601,
    InvalidParams = -32602,
    InternalError = -32603,
    ServerNotInitialized = -32002,
    RequestFailed = -32803,
    ContentModified = -32801,
    RequestCancelled = -32800,
};

// Thrown by whatever works for a request, on the request's thread; the dispatcher answers the client with it. The text
// is a sentence for the user, in UTF-8.
struct Failure : std::runtime_error {
    Failure(FailureCode code, const std::string& text) : std::runtime_error(text), code(code) {}

    FailureCode code;
};

} // namespace wren::lsp
