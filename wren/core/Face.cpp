#include "wren/core/Face.h"

#include "wren/core/PlainText.h"

namespace wren {

std::unique_ptr<TextStore> Face::MakeText(long)
{
    return std::make_unique<PlainText>();
}

} // namespace wren
