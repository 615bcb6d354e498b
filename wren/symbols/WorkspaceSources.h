// The files of a workspace, for what resolves names.
#pragma once

#include "resolve/Resolver.h"
#include "symbols/Workspace.h"

#include <optional>
#include <string>

namespace wren {

class WorkspaceSources final : public resolve::Sources {
public:
    explicit WorkspaceSources(const symbols::Workspace& workspace) : workspace(workspace) {} // borrowed

    std::optional<std::string> Read(const std::string& path) const override { return workspace.Read(path); }

private:
    const symbols::Workspace& workspace;
};

} // namespace wren
