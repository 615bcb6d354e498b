#include "wren/desktop/PreferenceSearch.h"

#include <QAccessible>
#include <QLineEdit>
#include <QListWidget>
#include <QPalette>
#include <QTableWidget>
#include <QWidget>

#include <algorithm>

namespace wren {

namespace {

bool HasAll(const QString& text, const QStringList& words)
{
    return std::all_of(words.begin(), words.end(),
                       [&](const QString& word) { return text.contains(word, Qt::CaseInsensitive); });
}

// Rich texts of tooltips do not occur here.
QString WordsOf(QWidget& control)
{
    QStringList words = {control.toolTip(), control.accessibleDescription()};
    if (QAccessibleInterface* said = QAccessible::queryAccessibleInterface(&control))
        words.push_back(said->text(QAccessible::Name));
    return words.join('\n');
}

bool SelectRowIn(QTableWidget& table, const QStringList& words)
{
    table.clearSelection();
    for (int row = 0; row < table.rowCount(); ++row) {
        const QTableWidgetItem* title = table.item(row, 0);
        if (words.isEmpty() || title == nullptr || !HasAll(title->text(), words))
            continue;
        table.selectRow(row);
        table.scrollToItem(title);
        return true;
    }
    return false;
}

// A field is named by the label before it, which is marked in its place.
bool SaysItself(const QWidget& control)
{
    return control.inherits("QLabel") || control.inherits("QAbstractButton") || control.inherits("QGroupBox");
}

} // namespace

PreferenceSearch::PreferenceSearch(QLineEdit& field, QListWidget& titles) : titles(titles)
{
    connect(&field, &QLineEdit::textChanged, this, &PreferenceSearch::Search);
}

void PreferenceSearch::AddPage(QWidget* page)
{
    pages.push_back(page);
}

void PreferenceSearch::Search(const QString& typed)
{
    Unmark();
    const QStringList words = typed.split(' ', Qt::SkipEmptyParts);
    int first = -1;
    for (int row = 0; row < static_cast<int>(pages.size()); ++row) {
        const bool isTitle = HasAll(titles.item(row)->text(), words);
        const bool isFound = MarkIn(*pages[static_cast<size_t>(row)], words) || isTitle;
        titles.item(row)->setHidden(!isFound);
        if (isFound && first < 0)
            first = row;
    }
    const QListWidgetItem* current = titles.currentItem();
    if (first >= 0 && (current == nullptr || current->isHidden()))
        titles.setCurrentRow(first);
}

// Without words nothing is marked, and everything is found.
bool PreferenceSearch::MarkIn(QWidget& page, const QStringList& words)
{
    bool isFound = words.isEmpty();
    for (auto* table : page.findChildren<QTableWidget*>())
        isFound = SelectRowIn(*table, words) || isFound;
    if (words.isEmpty())
        return true;
    for (auto* control : page.findChildren<QWidget*>()) {
        if (!SaysItself(*control) || control->isHidden() || !HasAll(WordsOf(*control), words))
            continue;
        Mark(*control);
        isFound = true;
    }
    return isFound;
}

// In the colours of tooltips, which every theme has.
void PreferenceSearch::Mark(QWidget& control)
{
    marked.emplace_back(&control);
    QPalette colours = control.palette();
    colours.setColor(QPalette::Window, colours.color(QPalette::ToolTipBase));
    colours.setColor(QPalette::WindowText, colours.color(QPalette::ToolTipText));
    control.setPalette(colours);
    control.setAutoFillBackground(true);
}

void PreferenceSearch::Unmark()
{
    for (const QPointer<QWidget>& control : marked) {
        if (control.isNull())
            continue;
        control->setPalette(QPalette());
        control->setAutoFillBackground(false);
    }
    marked.clear();
}

} // namespace wren
