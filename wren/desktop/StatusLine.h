// The line at the window's bottom: where the caret is, how the file is written, and what happens in the background.
#pragma once

#include <QObject>

#include <functional>

class QLabel;
class QStatusBar;
class QToolButton;

namespace wren {

class CodeView;
class Document;

// GUI thread. While one lives, the plug-in's threads wake the loop when they begin and end, so that nobody needs to
// look again and again.
class StatusLine : public QObject {
    Q_OBJECT
public:
    explicit StatusLine(QStatusBar* bar); // borrowed
    ~StatusLine() override;

    void Show(const Document* document, const CodeView* view); // null for none

    // What the plug-in does in the background now.
    void ShowBackground();
    void SetMakingTags(std::function<bool()> answers); // whether tags are made now; null for never

    void OfferRebuild(bool offered); // shows a button for it, or takes it away

signals:
    void RebuildAsked();

private:
    std::function<bool()> isMakingTags;
    QToolButton* rebuild;
    QLabel* background;
    QLabel* position;
    QLabel* ends;
};

} // namespace wren
