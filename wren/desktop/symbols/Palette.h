// The field over the text in which the user types a few letters and chooses from a list.
#pragma once

#include "wren/desktop/symbols/PaletteQuestions.h"

#include <QFrame>

#include <functional>
#include <vector>

class QLabel;
class QLineEdit;

namespace wren {

class SymbolList;

// What is offered, and what happens to it.
struct PaletteUse {
    QString title;                                                  // what the field is for: "Go to symbol"
    std::function<void(const QString& letters)> ask;                // the answer comes by Palette::Show()
    std::function<void(const PaletteItem& item, long line)> choose; // the line that was typed behind ":"; 0 for none
    bool listsWithoutLetters = false;
};

// A child of the window that it covers, so that it needs no window manager. It closes when it loses the keyboard.
// Enter chooses, also before the answer has come; Escape leaves; arrows and pages move: all while the field has the
// keyboard. GUI thread.
class Palette : public QFrame {
    Q_OBJECT
public:
    explicit Palette(QWidget* window);

    void Open(PaletteUse use);
    void Show(PaletteAnswer answer);   // to the latest letters
    void Tell(const QString& message); // in place of items: why there are none
    void Close();
    void AskAgain(); // if it is open: the answers may be other ones now

    QString Letters() const; // without ":" and a line
    const std::vector<PaletteItem>& Items() const;
    int Marked() const; // the row; -1 for none

signals:
    void Closed(); // the keyboard is free

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool KeyPressed(int key);
    void Typed();
    void Choose();
    void Fit();

    PaletteUse use;
    QLineEdit* field;
    QLabel* message;
    SymbolList* list;
    bool isWaiting = false;    // for the answer to the latest letters
    bool choosesFirst = false; // of that answer, when it comes
};

} // namespace wren
