// The host's document as a text to scan.
#pragma once

#include "scan/Text.h"

class PluginInterface;

namespace scan {

// Each operation is one call of the host's operation of that kind, so it is good for as long as the call of PluginMain
// that 'host' came with, and on the document thread only.
class HostText final : public Text {
public:
    explicit HostText(PluginInterface* host) : host(host) {}

    char At(long offset) const override;
    long Length() const override;
    std::string Range(long start, long end) const override;
    long LineAt(long offset) const override;

private:
    PluginInterface* host;
};

} // namespace scan
