// Tells the user of something that needs no answer, above the text, until it is dismissed.
#pragma once

#include <QFrame>
#include <QHash>
#include <QStringList>

#include <list>

class QLabel;
class QScrollArea;
class QToolButton;

namespace wren {

// Hidden while there is nothing to tell; many lines are scrolled, so that the text below stays usable. Of very many the
// newest are shown, and a button offers all: thousands of wrong lines of a file must not keep the editor from starting.
// GUI thread.
class NoticeBar : public QFrame {
    Q_OBJECT
public:
    explicit NoticeBar(QWidget* parent = nullptr);

    // Below what is told already; the same thing once, and of a subject what was told last.
    void Tell(const QString& text, const QString& subject = {});
    void TellAll(const QStringList& texts); // the same for each of them, at the price of one
    void Withdraw(const QString& subject);  // it is so no more
    QString Told() const;                   // all of it

    static constexpr size_t kMostShown = 50;

signals:
    void AllAsked(); // the user wants to read what is not shown as well

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Notice {
        QString subject; // "" for none
        QString text;
    };
    void Add(const QString& text, const QString& subject);
    void Remove(std::list<Notice>::iterator notice);
    void Changed();
    void Show();
    void Dismiss();
    void FitHeight();
    void FollowEnd();

    QLabel* label;
    QScrollArea* area;
    QToolButton* all;
    std::list<Notice> told; // each text once, and each subject
    QHash<QString, std::list<Notice>::iterator> byText;
    QHash<QString, std::list<Notice>::iterator> bySubject;
    bool atEnd = true; // the last one is seen: until the user scrolls up
};

} // namespace wren
