// Makes it known, or unknown, whether a tags file is in order, however small it is.
#pragma once

#include "tags/KnownFiles.h"
#include "tags/LineReader.h"
#include "tags/NameOrder.h"

#include <fcntl.h>
#include <string>
#include <unistd.h>

inline FileIdentity IdentityOf(const std::string& path)
{
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    const FileIdentity identity = FileIdentity::Of(file).value();
    ::close(file);
    return identity;
}

// As a whole pass finds it.
inline FileOrder LearnedOrder(const std::string& path)
{
    LineReader reader;
    reader.Open(path.c_str());
    NameOrder order;
    for (std::string_view line; reader.Next(line);)
        order.Add(reader.Previous(), line);
    reader.Close();
    return {order.InOrder(), order.HeadSize()};
}

inline void MakeKnown(const std::string& path)
{
    KnownFiles::Instance().Remember(IdentityOf(path), LearnedOrder(path));
}

inline void MakeUnknown(const std::string& path)
{
    KnownFiles::Instance().Forget(IdentityOf(path));
}
