// Reads the pictures of an .icns file (the icon file of bundles).
#pragma once

#include <QIcon>

#include <string>

namespace wren {

// Reads PNG pictures in all their sizes, and the packed 24-bit ones of older kinds (is32, il32, ih32, it32) with their
// masks. A null icon for a file that is missing, damaged or without pictures.
QIcon ReadIcns(const std::string& path);

} // namespace wren
