// Tells the user of something that needs no answer, above the text, until it is dismissed.
#pragma once

#include <QFrame>

#include <vector>

class QLabel;
class QScrollArea;

namespace wren {

// Hidden while there is nothing to tell; many lines are scrolled, so that the text below stays usable. GUI thread.
class NoticeBar : public QFrame {
    Q_OBJECT
public:
    explicit NoticeBar(QWidget* parent = nullptr);

    // Below what is told already; the same thing once, and of a subject what was told last.
    void Tell(const QString& text, const QString& subject = {});
    void Withdraw(const QString& subject); // it is so no more
    QString Told() const;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Notice {
        QString subject; // "" for none
        QString text;
    };
    void Show();
    void Dismiss();
    void FitHeight();
    void FollowEnd();

    QLabel* label;
    QScrollArea* area;
    std::vector<Notice> told;
    bool atEnd = true; // the last one is seen: until the user scrolls up
};

} // namespace wren
