// Notices above the text that need no answer; the user dismisses them.
#pragma once

#include <QFrame>
#include <QHash>
#include <QStringList>

#include <functional>
#include <list>
#include <vector>

class QLabel;
class QScrollArea;
class QToolButton;

namespace wren {

// Hidden while there are no notices. Many lines scroll, so that the text below stays usable. Of very many notices the
// newest are shown, and a button opens them all: thousands of bad lines in a file must not keep the editor from
// starting. GUI thread.
class NoticeBar : public QFrame {
    Q_OBJECT
public:
    explicit NoticeBar(QWidget* parent = nullptr);

    // Adds a notice below the others. A text is shown once; a new notice about a subject replaces the older one.
    void Tell(const QString& text, const QString& subject = {});
    void TellAll(const QStringList& texts); // the same for each text, but lays them out once

    // A notice with buttons. A press withdraws it, and then does what was chosen. The newest offer alone has buttons.
    struct Choice {
        QString label;
        std::function<void()> chosen;
    };
    void Offer(const QString& text, const QString& subject, const std::vector<Choice>& choices);

    void Withdraw(const QString& subject); // removes the subject's notice, which is no longer true
    QString Told() const;                  // all notices, also those that are not shown

    static constexpr size_t kMostShown = 50;

signals:
    void AllAsked(); // the user wants to read the notices that are not shown as well

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
    QWidget* choices;
    QString offered; // the subject that 'choices' belong to
    QToolButton* all;
    std::list<Notice> told; // each text once, and each subject
    QHash<QString, std::list<Notice>::iterator> byText;
    QHash<QString, std::list<Notice>::iterator> bySubject;
    bool atEnd = true; // the last notice is in view; the user may scroll up
};

} // namespace wren
