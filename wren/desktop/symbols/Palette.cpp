#include "wren/desktop/symbols/Palette.h"

#include "wren/desktop/symbols/ListKeys.h"
#include "wren/desktop/symbols/SymbolList.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace wren {

namespace {

constexpr int kRows = 14;   // seen at once
constexpr int kWidth = 760; // pixels, at most
constexpr int kGap = 6;     // pixels, around and between the parts

// "name:12" is a name and a line; "Outer::name" is a name.
std::pair<QString, long> Split(const QString& typed)
{
    const qsizetype colon = typed.lastIndexOf(':');
    const bool isScope = colon > 0 && typed[colon - 1] == ':';
    bool isNumber = false;
    const long line = typed.mid(colon + 1).toLong(&isNumber);
    if (colon < 0 || isScope || !(isNumber || colon + 1 == typed.size()))
        return {typed.trimmed(), 0};
    return {typed.left(colon).trimmed(), std::max(line, 0L)};
}

} // namespace

Palette::Palette(QWidget* window) : QFrame(window), field(new QLineEdit), message(new QLabel), list(new SymbolList)
{
    setObjectName("palette");
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(kGap, kGap, kGap, kGap);
    column->setSpacing(kGap);
    column->addWidget(field);
    column->addWidget(message);
    column->addWidget(list);
    field->setObjectName("paletteField");
    field->setClearButtonEnabled(true);
    message->setTextFormat(Qt::PlainText);
    message->setWordWrap(true);
    list->setFocusPolicy(Qt::NoFocus);
    connect(field, &QLineEdit::textEdited, this, &Palette::Typed);
    connect(field, &QLineEdit::textChanged, this, [this] {
        if (field->text().isEmpty() && isVisible()) // the button that clears
            Typed();
    });
    connect(list, &SymbolList::clicked, this, &Palette::Choose);
    field->installEventFilter(this);
    window->installEventFilter(this);
    hide();
}

void Palette::Open(PaletteUse wanted)
{
    use = std::move(wanted);
    field->blockSignals(true);
    field->clear();
    field->blockSignals(false);
    field->setPlaceholderText(use.title);
    field->setAccessibleName(use.title);
    list->setAccessibleName(use.title);
    list->Show({});
    message->hide();
    Fit();
    show();
    raise();
    field->setFocus();
    Typed();
}

void Palette::Show(PaletteAnswer answer)
{
    if (!isVisible())
        return;
    isWaiting = false;
    if (answer.items.empty())
        return Tell(Letters().isEmpty() ? "" : tr("Nothing is called \u201c%1\u201d.").arg(Letters()));
    message->setText(tr("The first %1; more letters find the others").arg(answer.items.size()));
    message->setVisible(answer.more);
    list->Show(std::move(answer.items));
    list->Mark(0);
    Fit();
    if (choosesFirst)
        Choose();
}

void Palette::Tell(const QString& text)
{
    list->Show({});
    message->setText(text);
    message->setVisible(!text.isEmpty());
    Fit();
}

void Palette::Close()
{
    if (!isVisible())
        return;
    hide();
    emit Closed();
}

void Palette::AskAgain()
{
    if (isVisible())
        Typed();
}

QString Palette::Letters() const
{
    return Split(field->text()).first;
}

const std::vector<PaletteItem>& Palette::Items() const
{
    return list->Items();
}

int Palette::Marked() const
{
    return list->Marked();
}

void Palette::Typed()
{
    isWaiting = !Letters().isEmpty() || use.listsWithoutLetters;
    choosesFirst = false;
    if (isWaiting)
        use.ask(Letters());
    else
        Show({});
}

// People type faster than a search ends: what is listed may answer earlier letters.
void Palette::Choose()
{
    choosesFirst = isWaiting;
    const int row = Marked();
    if (row < 0 || isWaiting)
        return;
    const PaletteItem item = list->Items()[static_cast<size_t>(row)];
    const long line = Split(field->text()).second;
    const auto choose = use.choose;
    Close();
    choose(item, line);
}

bool Palette::KeyPressed(int key)
{
    const int rows = RowsFor(key, kRows);
    if (key == Qt::Key_Escape)
        Close();
    else if (key == Qt::Key_Return || key == Qt::Key_Enter)
        Choose();
    else if (rows != 0)
        list->Move(rows);
    else
        return false;
    return true;
}

bool Palette::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == parent() && event->type() == QEvent::Resize && isVisible())
        Fit();
    if (watched != field)
        return false;
    if (event->type() == QEvent::KeyPress)
        return KeyPressed(static_cast<const QKeyEvent*>(event)->key());
    if (event->type() == QEvent::FocusOut &&
        static_cast<const QFocusEvent*>(event)->reason() != Qt::ActiveWindowFocusReason && isVisible())
        hide(); // the keyboard is somewhere else already
    return false;
}

void Palette::Fit()
{
    const QRect area = parentWidget()->rect();
    const int rows = std::min(list->Count(), kRows);
    list->setFixedHeight(rows * list->RowHeight());
    list->setVisible(rows > 0);
    const int width = std::min(kWidth, area.width() * 9 / 10);
    layout()->activate();
    resize(width, layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(width) : sizeHint().height());
    move((area.width() - width) / 2, area.height() / 12);
}

} // namespace wren
