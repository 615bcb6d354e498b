// Windows and panels from files: one part of a Qt Designer .ui file.
//
// A part is a named widget anywhere in the file. Geometry is absolute; a control's item number is its dynamic property
// "item". The reader does not need Qt.
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
    BRect frame;   // in the part's coordinates, not its container's
    std::string text;
    bool on = false;        // a check box's first value
    bool multiLine = false; // a text control with several lines
};

// A window or panel.
struct NibPart {
    std::string title;
    BRect frame; // a window's is on the screen
    std::vector<NibControl> controls;
};

// The nib of that name in the bundle's resources; "" without a bundle.
std::string InterfaceFilePath(const __CFBundle* bundle, const char* nib);

// Reads a part of a file. Faults are reported ("path:line: what"), and the result is then absent.
std::optional<NibPart> ReadInterfaceFile(const std::string& path, const std::string& part);

// Reads a part of a bundle's nib; absent too when an argument is null.
std::optional<NibPart> ReadNibPart(const __CFBundle* bundle, const char* nib, const char* part);

// Makes a view of the part, empty when the file cannot be read. The caller owns it until it adds it to a window.
BView* MakeViewFromNib(__CFBundle* bundle, const char* nib, const char* part);

// Reports a fault of an interface file to the sink, which is standard error at first. Any thread.
void ReportInterfaceProblem(const std::string& text);
void SetInterfaceProblemSink(std::function<void(const std::string&)> sink); // null for standard error

} // namespace vetch
