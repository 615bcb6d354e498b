// The status line: the caret's place, the encoding and the line ends of the file, and work in the background.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <functional>

class QLabel;
class QMenu;
class QStatusBar;
class QToolButton;

namespace wren {

class CodeView;
class Document;

// While it exists, the plug-in's threads wake the loop when they begin and end, so that no timer needs to look for
// them. GUI thread.
class StatusLine : public QObject {
    Q_OBJECT
public:
    explicit StatusLine(QStatusBar* bar); // borrowed
    ~StatusLine() override;

    void Show(const Document* document, const CodeView* view); // null for none

    void ShowBackground(); // whether tags are being made, and since when, or symbols loaded
    bool IsMakingTags() const { return isMakingTags && isMakingTags(); }
    // Of the symbols' index; "" for none.
    void ShowIndex(const QString& activity, const QString& problem, bool isStopped);
    void SetIndexMenu(QMenu* menu); // borrowed; the index is not shown before

    void SetEndsMenu(QMenu* menu);                          // borrowed; where the line ends are shown
    void SetEncodingMenu(QMenu* menu);                      // the same for the encoding
    void ShowTags(const QString& text, const QString& tip); // which ones serve the text; "" for none

    void SetMakingTags(std::function<bool()> answers); // whether tags are being made; null for never

    void OfferRebuild(bool offered); // shows a button for it, or takes it away

signals:
    void RebuildAsked();
    void StopAsked(); // of the tags that are being made

private:
    void FollowTags(); // they began to be made, or ended

    std::function<bool()> isMakingTags;
    QToolButton* rebuild;
    QToolButton* stop;
    QToolButton* index;
    QLabel* tags;
    QLabel* background;
    QLabel* position;
    QToolButton* ends;
    QToolButton* encoding;
    QElapsedTimer making; // valid while tags are being made
    QTimer second;
};

} // namespace wren
