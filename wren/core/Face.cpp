#include "wren/core/Face.h"

#include "wren/text/PlainText.h"

namespace wren {

std::unique_ptr<TextStore> Face::MakeText(long)
{
    return std::make_unique<PlainText>();
}

} // namespace wren
