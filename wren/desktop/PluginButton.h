// The plug-in's button in the tool bar.
#pragma once

#include <QTimer>
#include <QToolButton>

namespace wren {

// Holding the button down, or a click with the other mouse button, asks for its pop-up menu.
class PluginButton : public QToolButton {
    Q_OBJECT
public:
    explicit PluginButton(const QIcon& icon, QWidget* parent = nullptr);

signals:
    void Clicked(Qt::KeyboardModifiers held);
    void PopUpAsked();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void AskForPopUp();

    QTimer held; // runs while the button is down
};

} // namespace wren
