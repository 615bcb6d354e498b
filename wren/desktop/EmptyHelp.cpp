#include "wren/desktop/EmptyHelp.h"

#include "wren/desktop/editor/CodeView.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace wren {

namespace {

constexpr int kBesideChoice = 24; // pixels, from a choice to what stands beside it

QLabel* Line(const QString& text, const QColor& ink)
{
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setStyleSheet("color: " + ink.name());
    return label;
}

QPushButton* ButtonOf(const EmptyHelp::Choice& choice, const EditorColours& colours)
{
    auto* button = new QPushButton(QString(choice.text).replace('&', "&&"));
    button->setFlat(true);
    button->setFocusPolicy(Qt::NoFocus);
    button->setCursor(Qt::PointingHandCursor);
    button->setStyleSheet(QString("QPushButton { color: %1; border: none; text-align: left; padding: 3px } "
                                  "QPushButton:hover { text-decoration: underline }")
                              .arg(colours.keyword.name()));
    // Later: what it does may take the panel away.
    QObject::connect(button, &QPushButton::clicked, button->window(),
                     [choose = choice.choose] { QTimer::singleShot(0, choose); });
    return button;
}

} // namespace

EmptyHelp::EmptyHelp(std::function<Content()> content) : content(std::move(content)) {}

EmptyHelp::~EmptyHelp()
{
    delete panel;
}

void EmptyHelp::Update(CodeView* view, bool isEmpty)
{
    if (panel != nullptr && (!isEmpty || panel->parent() != view))
        delete panel;
    if (panel == nullptr && isEmpty && view != nullptr)
        Show(*view);
}

void EmptyHelp::Show(CodeView& view)
{
    const EditorColours& colours = ColoursOf(view.Look().dark);
    const Content shown = content();
    panel = new QWidget(&view);
    panel->setObjectName("emptyHelp");
    panel->setAccessibleName(shown.title);
    auto* rows = new QGridLayout(panel);
    rows->setHorizontalSpacing(kBesideChoice);
    rows->setColumnStretch(1, 1);
    QLabel* title = Line(shown.title, colours.text);
    QFont large = title->font();
    large.setPointSizeF(large.pointSizeF() * 1.6);
    title->setFont(large);
    rows->addWidget(title, 0, 0, 1, 2);
    rows->addWidget(Line(shown.sentence, colours.lineNumbers), 1, 0, 1, 2);
    for (const Choice& choice : shown.choices) {
        const int row = rows->rowCount();
        rows->addWidget(ButtonOf(choice, colours), row, 0);
        rows->addWidget(Line(choice.beside, colours.lineNumbers), row, 1);
    }
    view.installEventFilter(this);
    Place();
    panel->show();
}

void EmptyHelp::Place()
{
    const auto* view = static_cast<const CodeView*>(panel->parentWidget());
    const QRect area = view->viewport()->geometry();
    const QSize size = panel->sizeHint().boundedTo(area.size());
    QRect place(QPoint(0, 0), size);
    place.moveCenter(area.center());
    panel->setGeometry(place);
}

bool EmptyHelp::eventFilter(QObject*, QEvent* event)
{
    if (panel != nullptr && event->type() == QEvent::Resize)
        QTimer::singleShot(0, panel, [this] { Place(); }); // once the text has taken its size
    return false;
}

} // namespace wren
