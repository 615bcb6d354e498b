// The line at the window's bottom: where the caret is, how the file is written, and what happens in the background.
#pragma once

#include <QObject>

class QLabel;
class QStatusBar;

namespace wren {

class CodeView;
class Document;

// GUI thread. While one lives, threads and shell commands of the plug-in's wake the loop when they begin and end, so that
// nobody needs to look again and again.
class StatusLine : public QObject {
    Q_OBJECT
public:
    explicit StatusLine(QStatusBar* bar); // borrowed
    ~StatusLine() override;

    void Show(const Document* document, const CodeView* view); // null for none

    // What the plug-in does in the background now.
    void ShowBackground();

private:
    QLabel* background;
    QLabel* position;
    QLabel* ends;
};

} // namespace wren
