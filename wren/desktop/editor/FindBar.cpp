#include "wren/desktop/editor/FindBar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace wren {

namespace {

constexpr long kLongestFound = 10'000'000; // bytes: a longer text is not looked through at every key

QLineEdit* MakeField(QHBoxLayout& row, const char* name, const QString& hint)
{
    auto* field = new QLineEdit;
    field->setObjectName(name);
    field->setPlaceholderText(hint);
    field->setAccessibleName(hint);
    field->setClearButtonEnabled(true);
    field->setMinimumWidth(220);
    row.addWidget(field, 1);
    return field;
}

std::string SelectedWithinLine(const CodeView& view)
{
    const ViewText text(view);
    const Selection selected = text.Selected();
    const std::string bytes = text.Copy(selected.start, std::min(selected.end, selected.start + 1000));
    return bytes.find_first_of("\r\n") == std::string::npos ? bytes : "";
}

} // namespace

FindBar::FindBar(QWidget* parent) : QWidget(parent)
{
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(6, 4, 6, 4);
    rows->setSpacing(4);
    rows->addWidget(MakeFindRow());
    rows->addWidget(MakeReplaceRow());
    connect(find, &QLineEdit::textChanged, this, &FindBar::TellCount);
    for (QToolButton* toggle : {expression, matchCase, wholeWords}) {
        connect(toggle, &QToolButton::toggled, this, &FindBar::TellCount);
        connect(toggle, &QToolButton::toggled, this, &FindBar::FindTyped);
    }
    connect(find, &QLineEdit::textEdited, this, &FindBar::FindTyped);
    setTabOrder(find, with);
    hide();
}

QWidget* FindBar::MakeFindRow()
{
    auto* widget = new QWidget;
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    find = MakeField(*row, "find", tr("Find"));
    matchCase = AddToggle(*row, "case", tr("Aa"), tr("Upper and lower case differ"));
    wholeWords = AddToggle(*row, "words", tr("Word"), tr("Whole words"));
    expression = AddToggle(*row, "expression", tr(".*"), tr("Regular expression"));
    AddButton(*row, "previous", tr("Previous"), &FindBar::Previous);
    AddButton(*row, "next", tr("Next"), &FindBar::Next);
    message = new QLabel;
    message->setMinimumWidth(150);
    row->addWidget(message);
    return widget;
}

QWidget* FindBar::MakeReplaceRow()
{
    auto* widget = new QWidget;
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    with = MakeField(*row, "with", tr("Replace with"));
    AddButton(*row, "replace", tr("Replace"), &FindBar::Replace);
    AddButton(*row, "replaceAll", tr("Replace All"), &FindBar::ReplaceAll);
    AddButton(*row, "close", tr("Close"), &FindBar::Close);
    return widget;
}

QToolButton* FindBar::AddToggle(QHBoxLayout& row, const char* name, const QString& label, const QString& tip)
{
    auto* toggle = new QToolButton;
    toggle->setObjectName(name);
    toggle->setText(label);
    toggle->setToolTip(tip);
    toggle->setAccessibleName(tip);
    toggle->setCheckable(true);
    row.addWidget(toggle);
    return toggle;
}

void FindBar::AddButton(QHBoxLayout& row, const char* name, const QString& label, void (FindBar::*pressed)())
{
    auto* button = new QToolButton;
    button->setObjectName(name);
    button->setText(label);
    connect(button, &QToolButton::clicked, this, pressed);
    row.addWidget(button);
}

void FindBar::SetView(CodeView* newView)
{
    EndMarks();
    view = newView;
    shown.reset();
    if (isVisible())
        TellCount();
}

void FindBar::Open()
{
    const std::string selected = view ? SelectedWithinLine(*view) : "";
    if (!selected.empty())
        find->setText(QString::fromStdString(selected));
    show();
    find->setFocus();
    find->selectAll();
    TellCount();
}

void FindBar::Close()
{
    hide();
    EndMarks();
    if (view)
        view->setFocus();
}

TextSearch FindBar::Wanted() const
{
    TextSearch wanted;
    wanted.text = find->text().toStdString();
    wanted.regularExpression = expression->isChecked();
    wanted.matchCase = matchCase->isChecked();
    wanted.wholeWords = wholeWords->isChecked();
    return wanted;
}

QString FindBar::Message() const
{
    return message->text();
}

void FindBar::FindIn(bool backwards)
{
    if (!CanFind())
        return;
    TextSearch wanted = Wanted();
    wanted.backwards = backwards;
    if (view->Find(wanted))
        TellCount();
    else
        Tell(tr("Not found"), true);
}

// Again from the same place while nothing but the typing moves the selection.
void FindBar::FindTyped()
{
    if (!view || ViewText(*view).Length() > kLongestFound)
        return;
    const ViewText text(*view);
    if (shown != text.Selected())
        began = text.Selected().start;
    if (find->text().isEmpty())
        text.Select(began, began);
    else if (view->IsValid(Wanted()))
        view->FindFrom(began, Wanted());
    shown = ViewText(*view).Selected();
    TellCount();
}

void FindBar::Replace()
{
    if (!CanFind())
        return;
    view->ReplaceSelected(Wanted(), with->text().toStdString());
    TellCount();
}

void FindBar::ReplaceAll()
{
    if (!CanFind())
        return;
    const long replaced = view->ReplaceAll(Wanted(), with->text().toStdString());
    Tell(replaced == 0 ? tr("Not found") : tr("%1 replaced").arg(replaced), replaced == 0);
}

bool FindBar::CanFind()
{
    Tell("", false);
    if (!view || find->text().isEmpty())
        return false;
    if (view->IsValid(Wanted()))
        return true;
    Tell(tr("Not a valid expression"), true);
    return false;
}

void FindBar::TellCount()
{
    if (!CanFind() || !isVisible()) {
        EndMarks();
        return;
    }
    if (!marks) {
        marks = new MatchMarks(*view, MatchMarks::Of::Search);
        connect(marks, &MatchMarks::Changed, this, &FindBar::CountChanged);
    }
    countIsTold = true;
    marks->SetSearch(Wanted());
    CountChanged();
}

// Only over another count: "3 replaced" stays until the user does something in the bar.
void FindBar::CountChanged()
{
    if (!countIsTold || !marks)
        return;
    Tell(CountMessage(), marks->Count() == 0 && marks->IsComplete());
    countIsTold = true;
}

QString FindBar::CountMessage() const
{
    const long count = marks->Count();
    if (count == 0)
        return marks->IsComplete() ? tr("Not found") : tr("Counting\u2026");
    const std::optional<long> number = marks->NumberOf(ViewText(*view).Selected());
    const QString all = marks->IsComplete() ? QString::number(count) : tr("%1 or more").arg(count);
    if (number)
        return tr("%1 of %2").arg(*number).arg(all);
    return count == 1 && marks->IsComplete() ? tr("1 match") : tr("%1 matches").arg(all);
}

void FindBar::EndMarks()
{
    if (marks) {
        marks->SetSearch({});
        delete marks;
    }
    countIsTold = false;
}

void FindBar::Tell(const QString& told, bool wrong)
{
    countIsTold = false;
    message->setText(told);
    QFont font = message->font();
    font.setBold(wrong);
    message->setFont(font);
}

void FindBar::keyPressEvent(QKeyEvent* event)
{
    const bool backwards = event->modifiers() & Qt::ShiftModifier;
    if (event->key() == Qt::Key_Escape)
        Close();
    else if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        QWidget::keyPressEvent(event);
    else if (with->hasFocus() && !backwards)
        Replace();
    else
        FindIn(backwards);
}

} // namespace wren
