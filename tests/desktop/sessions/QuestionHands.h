// A user who answers whatever opens in front of the editor: alerts, menus, file panels, complaints.
#pragma once

#include "wren/script/ScriptDisplay.h"

#include <QObject>

#include <deque>
#include <optional>
#include <string>

class QFileDialog;
class QMenu;
class QMessageBox;

// They run loops of their own, so each is answered from there, with the mouse and the keyboard. GUI thread.
class QuestionHands : public QObject {
public:
    QuestionHands();

    // The plug-in's next alert, and its next panel; no answer leaves a panel open, a null one dismisses it.
    void AnswerNextAlert(long button) { alerts.push_back(button); }
    void AnswerNextPanel(const std::optional<std::optional<std::string>>& path) { panels.push_back(path); }

    // The next menu, by row or label; nothing dismisses it, and so does what cannot be chosen.
    void ChooseNext(const std::optional<wren::MenuChoice>& choice) { menus.push_back(choice); }

    // What a box that nobody expected said, which was closed; "" for none.
    std::string TakeComplaint() { return std::exchange(complaint, ""); }

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void Answer(QMessageBox& box);
    void Answer(QMenu& menu);
    void Answer(QFileDialog& panel);

    std::deque<long> alerts;
    std::deque<std::optional<wren::MenuChoice>> menus;
    std::deque<std::optional<std::optional<std::string>>> panels;
    std::string complaint;
};
