#include "vetch/storage/Home.h"

#include "base/UserDirectories.h"

std::string Home()
{
    return base::Home();
}
