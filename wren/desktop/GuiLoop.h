// Lets the framework's messages and display updates through whenever Qt's loop runs.
#pragma once

#include <QObject>

class QSocketNotifier;

namespace wren {

class QtDisplay;

// Display updates are always carried out. Messages for documents and windows that the document thread serves wait while
// a plug-in call is active, and while one of them is being dispatched already: a question to the user in the middle of
// one runs Qt's loop again. Nothing wakes up while nothing happens. GUI thread.
class GuiLoop : public QObject {
    Q_OBJECT
public:
    explicit GuiLoop(QtDisplay& display); // borrowed
    ~GuiLoop() override;

    void LetThrough(); // all messages and updates that wait, at once

    static void Wake(); // Woke() is emitted soon, if there is a loop. Any thread

signals:
    void Woke(); // after all that was there was let through

private:
    void Woken();

    QtDisplay& display;
    QSocketNotifier* notifier;
    bool dispatching = false;
};

} // namespace wren
