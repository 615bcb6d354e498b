#include "vetch/interface/InterfaceFileReader.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <sstream>

namespace vetch {

namespace {

// The kind of view for a widget class, and the property that holds its text.
struct WidgetClass {
    const char* name;
    std::optional<ViewDescription::Kind> kind; // none: a mere container
    const char* textProperty = "";
    bool multiLine = false;
    bool container = false;
};

constexpr int kDeepest = 100; // nested widgets: no real layout has as many, and the stack holds them

using Kind = ViewDescription::Kind;

const WidgetClass kClasses[] = {
    {"QLabel", Kind::Label, "text"},
    {"QPushButton", Kind::Button, "text"},
    {"QCheckBox", Kind::CheckBox, "text"},
    {"QLineEdit", Kind::Text, "text"},
    {"QPlainTextEdit", Kind::Text, "plainText", true},
    {"QTextEdit", Kind::Text, "plainText", true},
    {"QGroupBox", Kind::Group, "title", false, true},
    {"QWidget", std::nullopt, "", false, true},
    {"QFrame", std::nullopt, "", false, true},
    {"QDialog", std::nullopt, "", false, true},
};

const WidgetClass* FindClass(const char* name)
{
    const auto found =
        std::ranges::find_if(kClasses, [name](const WidgetClass& known) { return std::strcmp(known.name, name) == 0; });
    return found == std::end(kClasses) ? nullptr : &*found;
}

std::string Quoted(const std::string& text)
{
    return "\"" + text + "\"";
}

pugi::xml_node Property(const pugi::xml_node& widget, const char* name)
{
    return widget.find_child_by_attribute("property", "name", name);
}

std::string TextProperty(const pugi::xml_node& widget, const char* name)
{
    return Property(widget, name).child_value("string");
}

pugi::xml_node FindWidget(const pugi::xml_node& root, const std::string& name)
{
    return root.find_node([&name](const pugi::xml_node& node) {
        return std::strcmp(node.name(), "widget") == 0 && node.attribute("name").value() == name;
    });
}

} // namespace

InterfaceFileReader::InterfaceFileReader(std::string path) : path(std::move(path)) {}

std::optional<NibPart> InterfaceFileReader::Read(const std::string& partName)
{
    if (!Load())
        return std::nullopt;
    const pugi::xml_node root = document.child("ui");
    if (!root) {
        ComplainAt(0, "no interface file: there is no <ui>");
        return std::nullopt;
    }
    const pugi::xml_node widget = FindWidget(root, partName);
    if (!widget) {
        Complain(root, "no widget is called " + Quoted(partName));
        return std::nullopt;
    }
    part.title = TextProperty(widget, "windowTitle");
    part.frame = Geometry(widget).value_or(BRect());
    ReadChildren(widget, {});
    return sound ? std::optional(part) : std::nullopt;
}

bool InterfaceFileReader::Load()
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream read;
    if (file.peek() != std::ifstream::traits_type::eof())
        read << file.rdbuf();
    if (!file.is_open() || file.bad() || read.fail()) {
        ReportInterfaceProblem(path + ": cannot be read: " + std::strerror(errno));
        return false;
    }
    content = read.str();
    const pugi::xml_parse_result result = document.load_buffer(content.data(), content.size());
    if (!result)
        ComplainAt(result.offset, std::string("no XML: ") + result.description());
    return result;
}

void InterfaceFileReader::ReadChildren(const pugi::xml_node& widget, BPoint origin)
{
    if (depth == kDeepest)
        return Complain(widget, "widgets within more than " + std::to_string(kDeepest) + " others");
    ++depth;
    for (const pugi::xml_node& child : widget.children("widget"))
        ReadWidget(child, origin);
    --depth;
    if (const pugi::xml_node layout = widget.child("layout"))
        Complain(layout, "a layout: only absolute geometry is understood");
}

void InterfaceFileReader::ReadWidget(const pugi::xml_node& widget, BPoint origin)
{
    const WidgetClass* known = FindClass(widget.attribute("class").value());
    if (known == nullptr)
        return Complain(widget, "unknown widget class " + Quoted(widget.attribute("class").value()));
    const std::optional<BRect> frame = Geometry(widget);
    if (!frame)
        return;
    const BPoint corner{origin.x + frame->left, origin.y + frame->top};
    if (known->kind) {
        NibControl control;
        control.kind = *known->kind;
        control.item = Property(widget, "item").child("number").text().as_int();
        control.frame = {corner.x, corner.y, corner.x + frame->Width(), corner.y + frame->Height()};
        control.text = TextProperty(widget, known->textProperty);
        control.on = Property(widget, "checked").child("bool").text().as_bool();
        control.multiLine = known->multiLine;
        CheckItem(widget, control);
        part.controls.push_back(control);
    }
    if (known->container)
        ReadChildren(widget, corner);
}

void InterfaceFileReader::CheckItem(const pugi::xml_node& widget, const NibControl& control)
{
    const pugi::xml_node property = Property(widget, "item");
    if (!property)
        return;
    if (control.item <= 0)
        return Complain(property, "an item number that is no positive <number>");
    const auto [first, isFirst] = lineOfItem.emplace(control.item, LineOf(property.offset_debug()));
    if (!isFirst)
        Complain(property,
                 "item " + std::to_string(control.item) + " again, first on line " + std::to_string(first->second));
}

std::optional<BRect> InterfaceFileReader::Geometry(const pugi::xml_node& widget)
{
    const pugi::xml_node rect = Property(widget, "geometry").child("rect");
    if (!rect) {
        Complain(widget, "widget " + Quoted(widget.attribute("name").value()) + " has no geometry");
        return std::nullopt;
    }
    const float left = rect.child("x").text().as_float();
    const float top = rect.child("y").text().as_float();
    return BRect{left, top, left + rect.child("width").text().as_float(), top + rect.child("height").text().as_float()};
}

void InterfaceFileReader::Complain(const pugi::xml_node& where, const std::string& what)
{
    ComplainAt(where.offset_debug(), what);
}

void InterfaceFileReader::ComplainAt(std::ptrdiff_t offset, const std::string& what)
{
    sound = false;
    ReportInterfaceProblem(path + ":" + std::to_string(LineOf(offset)) + ": " + what);
}

long InterfaceFileReader::LineOf(std::ptrdiff_t offset) const
{
    const auto end = std::clamp<std::ptrdiff_t>(offset, 0, static_cast<std::ptrdiff_t>(content.size()));
    return 1 + std::count(content.begin(), content.begin() + end, '\n');
}

std::optional<NibPart> ReadInterfaceFile(const std::string& path, const std::string& part)
{
    return InterfaceFileReader(path).Read(part);
}

} // namespace vetch
