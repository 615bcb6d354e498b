#include "wren/lsp/protocol/Json.h"

namespace wren::lsp {

bool Says(const Json& object, const std::string& way)
{
    const Json* at = &object;
    for (size_t start = 0; start <= way.size();) {
        const size_t end = std::min(way.find('/', start), way.size());
        const auto member = at->is_object() ? at->find(way.substr(start, end - start)) : at->end();
        if (!at->is_object() || member == at->end())
            return false;
        at = &*member;
        start = end + 1;
    }
    return at->is_boolean() && at->get<bool>();
}

void RefuseParameters(const std::string& why)
{
    throw Failure(FailureCode::InvalidParams, why);
}

std::string TextOf(const Json& message)
{
    return message.dump(-1, ' ', false, Json::error_handler_t::replace);
}

} // namespace wren::lsp
