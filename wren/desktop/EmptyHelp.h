// What can be done next, over a text that is empty and has no file.
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <functional>
#include <vector>

namespace wren {

class CodeView;

// Buttons in the middle of the text, until it has text. The keyboard stays in the text. GUI thread.
class EmptyHelp : public QObject {
    Q_OBJECT
public:
    struct Choice {
        QString text;
        QString beside; // fainter: its keys, or where it is
        std::function<void()> choose;
    };
    struct Content {
        QString title;
        QString sentence; // below the title
        std::vector<Choice> choices;
    };
    explicit EmptyHelp(std::function<Content()> content);
    ~EmptyHelp() override;

    void Update(CodeView* view, bool isEmpty); // the current one, or null

    const QWidget* Panel() const { return panel; } // null while nothing is shown

protected:
    bool eventFilter(QObject* watched, QEvent* event) override; // of the view that it is shown in

private:
    void Show(CodeView& view);
    void Place();

    const std::function<Content()> content;
    QPointer<QWidget> panel; // belongs to the view
};

} // namespace wren
