// A short tour of what a reader of code can do, on a small example.
#pragma once

#include <QFrame>

#include <functional>
#include <string>

class QLabel;
class QPushButton;

namespace wren {

// A card in a corner of the texts says what to try, a step at a time; the user tries it in the text, which keeps the
// keyboard. The example is written into the user's own state directory. GUI thread.
class Tour : public QFrame {
    Q_OBJECT
public:
    // Opens the file with the caret at that offset; false when that could not be done.
    using OpenAt = std::function<bool(const std::string& path, long offset)>;

    // 'texts' is the part of the window that it lies over. It belongs to the window, and is not shown yet.
    Tour(QWidget& texts, std::string directory, OpenAt openAt);

    bool Start(std::string* error); // false, with the reason, when the example cannot be written
    void Go(int step);              // from 0; beyond the last one it ends
    int Step() const { return step; }
    static int Steps();

signals:
    void Ended(); // the user has left it

protected:
    bool eventFilter(QObject* watched, QEvent* event) override; // of the texts

private:
    void Place();

    const QWidget& texts;
    const std::string directory;
    const OpenAt openAt;
    int step = 0;
    QLabel* title;
    QLabel* text;
    QPushButton* back;
    QPushButton* next;
};

} // namespace wren
