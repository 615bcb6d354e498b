// Reads the pictures of an .icns file (the icon file of bundles).
#pragma once

#include <QIcon>

#include <string>

namespace wren {

// Its PNG pictures in all their sizes; entries of older kinds are left out. A null icon for a file that is missing, damaged
// or without any.
QIcon ReadIcns(const std::string& path);

} // namespace wren
