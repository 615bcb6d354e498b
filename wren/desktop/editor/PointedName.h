// The name under the mouse: with Control held it is underlined and can be clicked, and the mouse can rest on it.
#pragma once

#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QSet>

#include <functional>
#include <optional>

class QKeyEvent;
class QMouseEvent;

namespace wren {

class CodeView;

// Only what the colours of the text show as a name counts: no keyword, comment, string or number. GUI thread.
class PointedName : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    void Watch(CodeView& view); // a second time does nothing

    std::function<bool()> mayClick; // whether Control-click means a name; null for always

    static constexpr int kIndicator = 21; // of Scintilla

    static bool IsStyleOfNames(int style); // of Scintilla, as the lexer of code colours

signals:
    void Clicked(CodeView& view, long offset); // bytes
    void Rested(CodeView& view, long offset);
    void Gone(); // the mouse is no longer on the name that it rested on, or a key was pressed

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Name { // bytes
        long start = 0;
        long end = 0;

        bool operator==(const Name&) const = default;
    };
    static std::optional<Name> NameAt(const CodeView& view, QPoint point); // of the viewport
    bool OfText(CodeView& view, QEvent& event);
    bool Pressed(CodeView& view, const QMouseEvent& event);
    bool Released(CodeView& view, const QMouseEvent& event);
    void Moved(CodeView& view, QPoint point, Qt::KeyboardModifiers held);
    void KeyChanged(CodeView& view, const QKeyEvent& event);
    void Underline(CodeView& view, const Name& name);
    void EndUnderline();
    void EndRest();
    bool IsLink(Qt::KeyboardModifiers held) const;

    QSet<const QObject*> watchedViews;
    QPointer<CodeView> underlinedIn;
    Name underlined;
    std::optional<Name> pressed;
    std::optional<Name> rested;
};

} // namespace wren
