#include "wren/desktop/Look.h"

#include <QApplication>
#include <QFontDatabase>
#include <QKeySequence>
#include <QPalette>
#include <QStyle>

#include <algorithm>

namespace wren {

namespace {

// Fields are lighter than the window: the style frames fields and boxes with a darker line, which would be lost
// otherwise.
QPalette DarkPalette()
{
    QPalette palette(QColor(60, 63, 68), QColor(43, 45, 49));
    palette.setColor(QPalette::Base, QColor(62, 65, 71));
    palette.setColor(QPalette::AlternateBase, QColor(60, 63, 68));
    palette.setColor(QPalette::Text, QColor(222, 224, 228));
    palette.setColor(QPalette::WindowText, QColor(222, 224, 228));
    palette.setColor(QPalette::ButtonText, QColor(222, 224, 228));
    palette.setColor(QPalette::PlaceholderText, QColor(150, 154, 160));
    for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(125, 129, 135));
    palette.setColor(QPalette::Disabled, QPalette::Base, QColor(48, 50, 55));
    palette.setColor(QPalette::Highlight, QColor(52, 101, 164));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(114, 159, 207));
    palette.setColor(QPalette::ToolTipBase, QColor(64, 66, 72));
    palette.setColor(QPalette::ToolTipText, QColor(230, 230, 230));
    return palette;
}

QPalette LightPalette()
{
    QPalette palette(QColor(239, 239, 239));
    palette.setColor(QPalette::Highlight, QColor(48, 140, 198));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, QColor(255, 255, 220));
    palette.setColor(QPalette::ToolTipText, Qt::black);
    return palette;
}

// Dark when the text is lighter than its background.
bool IsDark(const QPalette& palette)
{
    return palette.color(QPalette::WindowText).lightness() > palette.color(QPalette::Window).lightness();
}

Qt::KeyboardModifier KeyFor(PreferenceValues::Modifier modifier)
{
    switch (modifier) {
    case PreferenceValues::Modifier::Alt:
        return Qt::AltModifier;
    case PreferenceValues::Modifier::Super:
        return Qt::MetaModifier;
    default:
        return Qt::ControlModifier;
    }
}

} // namespace

EditorLook LookFor(const PreferenceValues& values, int zoom)
{
    EditorLook look;
    look.font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    if (!values.font.empty())
        look.font.setFamily(QString::fromStdString(values.font));
    look.font.setStyleHint(QFont::Monospace);
    look.font.setPointSize(std::clamp(values.fontSize + zoom, 4, 100));
    look.dark = IsDark(QApplication::palette());
    look.tabWidth = values.tabWidth;
    look.indentsWithTabs = values.indentsWithTabs;
    look.wraps = values.wrapsLines;
    look.showsBlanks = values.showsBlanks;
    look.showsGuides = values.showsGuides;
    return look;
}

ModifierKeys KeysFor(const PreferenceValues& values)
{
    return {KeyFor(values.command), KeyFor(values.control), KeyFor(values.option)};
}

void ApplyColours(PreferenceValues::Colours colours)
{
    if (colours == PreferenceValues::Colours::Dark)
        QApplication::setPalette(DarkPalette());
    else if (colours == PreferenceValues::Colours::Light)
        QApplication::setPalette(LightPalette());
    else
        QApplication::setPalette(QPalette()); // the desktop's
}

std::optional<KeyBinding> BindingFrom(const std::string& key, const ModifierKeys& keys)
{
    const QKeySequence sequence = QKeySequence::fromString(QString::fromStdString(key), QKeySequence::PortableText);
    if (sequence.count() != 1)
        return std::nullopt;
    const QKeyCombination combination = sequence[0];
    const int code = combination.key();
    const uint32 modifiers = ModifierBits(combination.keyboardModifiers(), keys);
    if (code >= Qt::Key_F1 && code < Qt::Key_F1 + KeyCode::kFunctionKeys)
        return KeyBinding{KeyCode::OfFunctionKey(code - Qt::Key_F1 + 1), modifiers};
    if (code < Qt::Key_Space || code > Qt::Key_AsciiTilde)
        return std::nullopt;
    return KeyBinding{QChar(code).toLower().toLatin1(), modifiers};
}

} // namespace wren
