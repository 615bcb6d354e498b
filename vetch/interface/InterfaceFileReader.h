// Reads one part out of one interface file.
#pragma once

#include "vetch/interface/InterfaceFile.h"

#include <pugixml.hpp>

#include <cstddef>
#include <map>
#include <optional>
#include <string>

namespace vetch {

class InterfaceFileReader {
public:
    explicit InterfaceFileReader(std::string path);

    // Absent when the part has a fault; all faults have then been reported.
    std::optional<NibPart> Read(const std::string& partName);

private:
    bool Load();
    void ReadChildren(const pugi::xml_node& widget, BPoint origin);
    void ReadWidget(const pugi::xml_node& widget, BPoint origin);
    void CheckItem(const pugi::xml_node& widget, const NibControl& control);
    std::optional<BRect> Geometry(const pugi::xml_node& widget);

    void Complain(const pugi::xml_node& where, const std::string& what);
    void ComplainAt(std::ptrdiff_t offset, const std::string& what);
    long LineOf(std::ptrdiff_t offset) const; // from 1

    const std::string path;
    std::string content;
    pugi::xml_document document;
    NibPart part;
    std::map<long, long> lineOfItem;
    int depth = 0; // open containers
    bool sound = true;
};

} // namespace vetch
