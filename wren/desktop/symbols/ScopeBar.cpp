#include "wren/desktop/symbols/ScopeBar.h"

#include "wren/desktop/symbols/KindIcon.h"
#include "wren/desktop/symbols/RowText.h"
#include "wren/desktop/symbols/ScopePath.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

#include <utility>

namespace wren {

namespace {

constexpr int kLongestName = 48; // characters

QString Shortened(const QString& name)
{
    return name.size() <= kLongestName ? name : name.left(kLongestName - 1) + QChar(0x2026);
}

// The usual button leaves two blanks free beside its text. They are wide in the font of a text.
class ScopeButton : public QToolButton {
public:
    using QToolButton::QToolButton;

    QSize sizeHint() const override
    {
        const QSize usual = QToolButton::sizeHint();
        return {usual.width() - 2 * fontMetrics().horizontalAdvance(' '), usual.height()};
    }
};

} // namespace

ScopeBar::ScopeBar(QWidget* parent) : QWidget(parent), row(new QHBoxLayout(this))
{
    setAccessibleName(tr("Scope of the caret"));
    setAutoFillBackground(true);
    row->setContentsMargins(4, 0, 4, 0);
    row->setSpacing(0);
    row->addStretch(1);
    Fill();
}

void ScopeBar::SetLook(const QFont& newFont, const QColor& ink, const QColor& paper)
{
    QPalette look = palette();
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text})
        look.setColor(role, ink);
    for (const QPalette::ColorRole role : {QPalette::Window, QPalette::Button})
        look.setColor(role, paper);
    setPalette(look);
    setFont(newFont);
    for (QWidget* part : parts)
        part->setFont(newFont);
}

void ScopeBar::Show(std::vector<PaletteItem> newSymbols)
{
    symbols = std::move(newSymbols);
    scopes = ScopesAt(symbols, caret);
    Fill();
}

void ScopeBar::FollowCaret(long line)
{
    if (std::exchange(caret, line) == line)
        return;
    std::vector<size_t> now = ScopesAt(symbols, line);
    if (now == scopes)
        return;
    scopes = std::move(now);
    Fill();
}

void ScopeBar::Fill()
{
    for (QWidget* shown : std::exchange(parts, {})) { // one of them may be handling a click
        row->removeWidget(shown);
        shown->hide();
        shown->deleteLater();
    }
    buttons.clear();
    const PaletteItem* outer = nullptr;
    for (const size_t scope : scopes) {
        const std::string name = NameIn(std::exchange(outer, &symbols[scope]), symbols[scope]);
        QToolButton* button = Add(Shortened(Shown(name)), SiblingsOf(symbols, scope));
        button->setIcon(KindIcon(symbols[scope].kind));
        button->setToolTip(tr("%1, line %2").arg(KindName(symbols[scope].kind)).arg(symbols[scope].line));
    }
    const std::vector<size_t> inner = ContentsOf(symbols, scopes.empty() ? std::nullopt : std::optional(scopes.back()));
    if (inner.empty())
        return;
    QToolButton* button = Add(QChar(0x2026), inner);
    button->setAccessibleName(tr("Symbols in this scope"));
    button->setToolTip(tr("Symbols in this scope"));
}

QToolButton* ScopeBar::Add(const QString& text, const std::vector<size_t>& asked)
{
    if (!buttons.empty())
        Append(new QLabel(QChar(0x203a), this));
    auto* button = new ScopeButton(this);
    button->setText(text);
    button->setAutoRaise(true);
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setFocusPolicy(Qt::NoFocus); // the text keeps the keyboard
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    connect(button, &QToolButton::clicked, this, [this, asked] { Ask(asked); });
    Append(button);
    buttons.push_back(button);
    return button;
}

void ScopeBar::Append(QWidget* part)
{
    part->setFont(font());
    row->insertWidget(row->count() - 1, part); // before the stretch
    parts.push_back(part);
    part->show();
}

void ScopeBar::Ask(const std::vector<size_t>& asked)
{
    std::vector<PaletteItem> siblings;
    siblings.reserve(asked.size());
    for (const size_t each : asked)
        siblings.push_back(symbols[each]);
    for (PaletteItem& each : siblings)
        each.depth = 0;
    emit Asked(siblings);
}

void ScopeBar::OpenLast()
{
    if (!scopes.empty())
        Ask(SiblingsOf(symbols, scopes.back()));
    else if (!symbols.empty())
        Ask(ContentsOf(symbols, std::nullopt));
}

QStringList ScopeBar::Path() const
{
    QStringList path;
    for (const QToolButton* button : buttons)
        path << button->text();
    return path;
}

} // namespace wren
