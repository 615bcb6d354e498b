#include "tests/desktop/hands/QtKeys.h"

#include "vetch/app/Modifiers.h"

#include <QString>
#include <QTest>

#include <map>

namespace {

const std::map<std::string, Qt::Key> kNamedKeys = {
    {"enter", Qt::Key_Return},        {"tab", Qt::Key_Tab},       {"escape", Qt::Key_Escape},
    {"backspace", Qt::Key_Backspace}, {"delete", Qt::Key_Delete}, {"left", Qt::Key_Left},
    {"right", Qt::Key_Right},         {"up", Qt::Key_Up},         {"down", Qt::Key_Down},
};

} // namespace

Qt::KeyboardModifiers QtModifiers(uint32 modifiers)
{
    Qt::KeyboardModifiers held;
    held.setFlag(Qt::ShiftModifier, (modifiers & B_SHIFT_KEY) != 0);
    held.setFlag(Qt::MetaModifier, (modifiers & B_COMMAND_KEY) != 0);
    held.setFlag(Qt::ControlModifier, (modifiers & B_CONTROL_KEY) != 0);
    held.setFlag(Qt::AltModifier, (modifiers & B_OPTION_KEY) != 0);
    return held;
}

void ClickKey(QWidget& widget, const std::string& key, uint32 modifiers)
{
    const Qt::KeyboardModifiers held = QtModifiers(modifiers);
    if (const auto named = kNamedKeys.find(key); named != kNamedKeys.end())
        return QTest::keyClick(&widget, named->second, held);
    const QString text = QString::fromStdString(key);
    const int code = text.size() == 1 ? text[0].toUpper().unicode() : int{Qt::Key_unknown};
    const bool types = !held.testFlag(Qt::ControlModifier);
    QTest::sendKeyEvent(QTest::Click, &widget, static_cast<Qt::Key>(code), types ? text : QString(), held);
}
