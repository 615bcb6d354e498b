#include "wren/desktop/finder/FilesFindBar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QToolButton>
#include <QVBoxLayout>

namespace wren {

namespace {

constexpr int kMargin = 4; // pixels

// "*.c, src/, !test": separated by commas or blanks.
std::vector<std::string> GlobsIn(const QString& text)
{
    std::vector<std::string> globs;
    static const QRegularExpression kBetween("[,\\s]+");
    for (const QString& each : text.split(kBetween, Qt::SkipEmptyParts))
        globs.push_back(each.toStdString());
    return globs;
}

} // namespace

FilesFindBar::FilesFindBar(QWidget* parent) : QDockWidget(tr("Find in Files"), parent)
{
    setObjectName("findInFiles");
    setAllowedAreas(Qt::BottomDockWidgetArea | Qt::TopDockWidgetArea);
    auto* content = new QWidget;
    auto* rows = new QVBoxLayout(content);
    rows->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    auto* row = new QHBoxLayout;
    rows->addLayout(row);
    text = AddField(*row, "text", tr("Find in files"), tr("What to find"), 3);
    matchCase = AddToggle(*row, "case", tr("Aa"), tr("Upper and lower case differ"));
    wholeWords = AddToggle(*row, "words", tr("Word"), tr("Whole words"));
    expression = AddToggle(*row, "expression", tr(".*"), tr("Regular expression"));
    files = AddField(*row, "files", tr("All files"),
                     tr("Which files: *.c, *.h for these, src/ for a directory, !test/ for all others"), 2);
    folder =
        AddField(*row, "folder", tr("The whole project"), tr("Which directory: absolute, or below the project"), 2);
    auto* find = new QToolButton;
    find->setObjectName("find");
    find->setText(tr("Find"));
    connect(find, &QToolButton::clicked, this, &FilesFindBar::Asked);
    row->addWidget(find);
    replacement = new QWidget;
    auto* second = new QHBoxLayout(replacement);
    second->setContentsMargins(0, 0, 0, 0);
    with = AddField(*second, "with", tr("Replace with"),
                    tr("What takes the place of matches; $1 is the first group of an expression, $0 all of it"), 1);
    auto* preview = new QToolButton;
    preview->setObjectName("preview");
    preview->setText(tr("Preview Replacements"));
    preview->setToolTip(tr("Show each line before and after; nothing is replaced yet"));
    connect(preview, &QToolButton::clicked, this, &FilesFindBar::PreviewAsked);
    second->addWidget(preview);
    replacement->hide();
    rows->addWidget(replacement);
    problem = new QLabel;
    problem->setTextFormat(Qt::PlainText);
    problem->setWordWrap(true);
    problem->hide();
    rows->addWidget(problem);
    rows->addStretch();
    content->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setWidget(content);
}

QLineEdit* FilesFindBar::AddField(QHBoxLayout& row, const char* name, const QString& hint, const QString& tip,
                                  int share)
{
    auto* field = new QLineEdit;
    field->setObjectName(name);
    field->setPlaceholderText(hint);
    field->setToolTip(tip);
    field->setAccessibleName(tip);
    field->setClearButtonEnabled(true);
    row.addWidget(field, share);
    return field;
}

QToolButton* FilesFindBar::AddToggle(QHBoxLayout& row, const char* name, const QString& label, const QString& tip)
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

void FilesFindBar::Open(const std::string& wanted)
{
    if (!wanted.empty())
        text->setText(QString::fromStdString(wanted));
    Tell("");
    show();
    text->setFocus();
    text->selectAll();
}

void FilesFindBar::ShowReplacement()
{
    replacement->show();
}

FilesWanted FilesFindBar::Wanted() const
{
    FilesWanted wanted;
    wanted.text = text->text().toStdString();
    wanted.isExpression = expression->isChecked();
    wanted.matchesCase = matchCase->isChecked();
    wanted.wholeWords = wholeWords->isChecked();
    wanted.globs = GlobsIn(files->text());
    wanted.folder = folder->text().trimmed().toStdString();
    wanted.with = with->text().toStdString();
    return wanted;
}

void FilesFindBar::Tell(const QString& told)
{
    problem->setText(told);
    problem->setVisible(!told.isEmpty());
}

QString FilesFindBar::Problem() const
{
    return problem->text();
}

void FilesFindBar::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        with->hasFocus() ? emit PreviewAsked() : emit Asked();
    } else if (event->key() == Qt::Key_Escape) {
        hide();
        emit Left();
    } else {
        QDockWidget::keyPressEvent(event);
    }
}

} // namespace wren
