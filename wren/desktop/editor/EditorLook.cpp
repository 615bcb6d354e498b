#include "wren/desktop/editor/EditorLook.h"

namespace wren {

namespace {

EditorColours Light()
{
    EditorColours c;
    c.text = QColor(0x1f2328);
    c.paper = QColor(0xffffff);
    c.caretLine = QColor(0xf2f5f9);
    c.selection = QColor(0xbcd6f5);
    c.lineNumbers = QColor(0x646d77);
    c.margin = QColor(0xf6f8fa);
    c.keyword = QColor(0x0a3fa8);
    c.comment = QColor(0x4d6b50);
    c.string = QColor(0xa31515);
    c.number = QColor(0x0b6e74);
    c.preprocessor = QColor(0x7a4b00);
    c.type = QColor(0x7b2a9e);
    c.match = QColor(0xf2b01e);
    c.selectedMatch = QColor(0xff9a3d);
    c.occurrence = QColor(0x7f96b2);
    c.brace = QColor(0xa8e0b0);
    c.badBrace = QColor(0xffb3ad);
    return c;
}

EditorColours Dark()
{
    EditorColours c;
    c.text = QColor(0xd8dee6);
    c.paper = QColor(0x1c2027);
    c.caretLine = QColor(0x262c35);
    c.selection = QColor(0x31507a);
    c.lineNumbers = QColor(0x8b95a3);
    c.margin = QColor(0x20252d);
    c.keyword = QColor(0x82b4ff);
    c.comment = QColor(0x8fae8b);
    c.string = QColor(0xf0a58c);
    c.number = QColor(0x7fd1d1);
    c.preprocessor = QColor(0xd9b36c);
    c.type = QColor(0xd3a4f5);
    c.match = QColor(0xb8860b);
    c.selectedMatch = QColor(0xa84a0a);
    c.occurrence = QColor(0x6d8199);
    c.brace = QColor(0x2f6b45);
    c.badBrace = QColor(0x8a3030);
    return c;
}

} // namespace

const EditorColours& ColoursOf(bool dark)
{
    static const EditorColours kLight = Light();
    static const EditorColours kDark = Dark();
    return dark ? kDark : kLight;
}

} // namespace wren
