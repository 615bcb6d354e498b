#include "tests/desktop/hands/QuestionHands.h"

#include <QApplication>
#include <QEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTextDocument>

#include <utility>

namespace {

template <class T>
T TakeFirst(std::deque<T>& queue)
{
    T first = queue.front();
    queue.pop_front();
    return first;
}

// A menu shows a row's shortcut behind a tab, and doubles the mark of keys.
std::string LabelOf(const QAction& action)
{
    return action.text().section('\t', 0, 0).replace("&&", "&").toStdString();
}

// They stand in the order in which they were added.
QPushButton* Chosen(const QMessageBox& box, const wren::MenuChoice& choice)
{
    const QList<QPushButton*> buttons = box.findChildren<QPushButton*>();
    if (const long* number = std::get_if<long>(&choice))
        return buttons.value(static_cast<int>(*number));
    for (QPushButton* button : buttons)
        if (button->text().remove('&').toStdString() == std::get<std::string>(choice))
            return button;
    return nullptr;
}

QAction* Chosen(const QMenu& menu, const std::optional<wren::MenuChoice>& choice)
{
    if (!choice)
        return nullptr;
    const QList<QAction*> actions = menu.actions();
    for (long row = 0; row < actions.size(); ++row) {
        const bool meant = std::holds_alternative<long>(*choice)
                               ? std::get<long>(*choice) == row
                               : std::get<std::string>(*choice) == LabelOf(*actions[row]);
        if (meant)
            return actions[row]->isEnabled() && !actions[row]->isSeparator() ? actions[row] : nullptr;
    }
    return nullptr;
}

} // namespace

QuestionHands::QuestionHands()
{
    qApp->installEventFilter(this);
}

bool QuestionHands::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() != QEvent::Show)
        return false;
    const auto answerSoon = [this](auto* question) {
        const QPointer guarded(question);
        const auto answer = [this, guarded] {
            if (guarded != nullptr)
                Answer(*guarded);
        };
        QMetaObject::invokeMethod(this, answer, Qt::QueuedConnection);
    };
    if (auto* box = qobject_cast<QMessageBox*>(object))
        answerSoon(box);
    else if (auto* menu = qobject_cast<QMenu*>(object))
        answerSoon(menu);
    else if (auto* panel = qobject_cast<QFileDialog*>(object))
        answerSoon(panel);
    return false;
}

void QuestionHands::Answer(QMessageBox& box)
{
    // Nothing of what boxes say is meant as markup, whatever it looks like.
    const bool isMarkup = box.textFormat() != Qt::PlainText && Qt::mightBeRichText(box.text());
    heard.push_back((isMarkup ? "(shown as markup) " : "") + box.text().toStdString());
    QPushButton* button = alerts.empty() ? nullptr : Chosen(box, TakeFirst(alerts));
    if (button != nullptr)
        return QTest::mouseClick(button, Qt::LeftButton);
    complaint = box.text().toStdString();
    box.reject();
}

void QuestionHands::Answer(QMenu& menu)
{
    rows.clear();
    for (const QAction* row : menu.actions())
        rows.push_back(row->text().toStdString());
    QAction* action = Chosen(menu, menus.empty() ? std::nullopt : TakeFirst(menus));
    if (action == nullptr)
        QTest::keyClick(&menu, Qt::Key_Escape);
    else
        QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(action).center());
}

void QuestionHands::Answer(QFileDialog& panel)
{
    if (panels.empty())
        return;
    const std::optional<std::optional<std::string>> path = TakeFirst(panels);
    if (!path)
        return;
    if (!*path)
        return QTest::keyClick(&panel, Qt::Key_Escape);
    auto* field = panel.findChild<QLineEdit*>("fileNameEdit");
    field->setText(QString::fromStdString(**path));
    const QPointer guarded(&panel);
    QTest::keyClick(field, Qt::Key_Return);
    if (guarded != nullptr && panel.isVisible())
        Answer(panel); // it was not content with the last answer
}
