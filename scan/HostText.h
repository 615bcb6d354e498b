// The host's document as a text for scanners.
#pragma once

#include "scan/Text.h"

class PluginInterface;

namespace scan {

// Each operation is one call of the host's corresponding one: valid during the call of PluginMain that 'host' came
// with, on the document thread only.
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
