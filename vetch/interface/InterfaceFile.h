// Windows and panels laid out in files: what a Qt Designer .ui file says of one of its parts.
//
// A part is a named widget anywhere in the file. Geometry is absolute; a control's item number is its dynamic property
// "item". Nothing of Qt is needed to read it.
#pragma once

#include "vetch/display/Display.h"
#include "vetch/support/Geometry.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

class BView;
struct __CFBundle;

namespace vetch {

// One control of a part.
struct NibControl {
    ViewDescription::Kind kind = ViewDescription::Kind::Label;
    long item = 0; // 0 for none
    BRect frame;   // in the part's coordinates, whatever containers it lies in
    std::string text;
    bool on = false;        // a check box's first value
    bool multiLine = false; // a text control of several lines
};

// A window or panel.
struct NibPart {
    std::string title;
    BRect frame; // a window's on the screen
    std::vector<NibControl> controls;
};

// The nib of that name in the bundle's resources; "" without a bundle.
std::string InterfaceFilePath(const __CFBundle* bundle, const char* nib);

// Reads a part of a file. What is wrong with the file is reported ("path:line: what"), the part then absent.
std::optional<NibPart> ReadInterfaceFile(const std::string& path, const std::string& part);

// The part of a bundle's nib; absent as well when anything is null.
std::optional<NibPart> ReadNibPart(const __CFBundle* bundle, const char* nib, const char* part);

// The part as a view to put into a window; an empty view when it cannot be read. The caller owns it until then.
BView* MakeViewFromNib(__CFBundle* bundle, const char* nib, const char* part);

// Tells whoever installed the sink, standard error at first, of something wrong with an interface file. Any thread.
void ReportInterfaceProblem(const std::string& text);
void SetInterfaceProblemSink(std::function<void(const std::string&)> sink); // null for standard error

} // namespace vetch
