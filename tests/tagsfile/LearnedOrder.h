// Makes the order of a tags file of any size known or unknown.
#pragma once

#include "tagsfile/KnownFiles.h"
#include "tagsfile/LineReader.h"
#include "tagsfile/NameOrder.h"

#include <fcntl.h>
#include <string>
#include <unistd.h>

inline base::FileIdentity IdentityOf(const std::string& path)
{
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    const auto identity = base::FileIdentity::OfPlainFile(file).value();
    ::close(file);
    return identity;
}

// The order that a complete pass finds.
inline tagsfile::FileOrder LearnedOrder(const std::string& path)
{
    tagsfile::LineReader reader;
    reader.Open(path.c_str());
    tagsfile::NameOrder order;
    for (std::string_view line; reader.Next(line);)
        order.Add(reader.Previous(), line);
    reader.Close();
    return {order.InOrder(), order.HeadSize()};
}

inline void MakeKnown(const std::string& path)
{
    tagsfile::KnownFiles::Instance().Remember(IdentityOf(path), LearnedOrder(path));
}

inline void MakeUnknown(const std::string& path)
{
    tagsfile::KnownFiles::Instance().Forget(IdentityOf(path));
}
