// A user who answers whatever opens in front of the editor: alerts, menus, file panels, complaints.
#pragma once

#include "wren/headless/MenuChoosingDisplay.h"

#include <QObject>

#include <deque>
#include <optional>
#include <string>
#include <utility>
#include <vector>

class QFileDialog;
class QMenu;
class QMessageBox;

// They run loops of their own, so each is answered from there, with the mouse and the keyboard. GUI thread.
class QuestionHands : public QObject {
public:
    QuestionHands();

    // The next question, by a button's number or label, the plug-in's alerts among them; and the next panel, where no
    // answer leaves it open, and a null one dismisses it.
    void AnswerNextAlert(const wren::MenuChoice& button) { alerts.push_back(button); }
    void AnswerNextPanel(const std::optional<std::optional<std::string>>& path) { panels.push_back(path); }

    // The next menu, by row or label; nothing dismisses it, and so does what cannot be chosen.
    void ChooseNext(const std::optional<wren::MenuChoice>& choice) { menus.push_back(choice); }

    // The rows of the last menu that opened, each with the key that it shows behind a tab.
    const std::vector<std::string>& LastMenu() const { return rows; }

    // What a box that nobody expected said, which was closed; "" for none.
    std::string TakeComplaint() { return std::exchange(complaint, ""); }

    // What all boxes said since the last time, one after the other.
    std::vector<std::string> TakeHeard() { return std::exchange(heard, {}); }
    bool HasAnswersLeft() const { return !alerts.empty() || !panels.empty() || !menus.empty(); }

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void Answer(QMessageBox& box);
    void Answer(QMenu& menu);
    void Answer(QFileDialog& panel);

    std::deque<wren::MenuChoice> alerts;
    std::deque<std::optional<wren::MenuChoice>> menus;
    std::deque<std::optional<std::optional<std::string>>> panels;
    std::vector<std::string> rows;
    std::string complaint;
    std::vector<std::string> heard;
};
