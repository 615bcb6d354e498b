#include "wren/desktop/Tour.h"

#include "wren/core/TextFile.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <filesystem>
#include <iterator>
#include <string_view>
#include <system_error>
#include <utility>

namespace wren {

namespace {

namespace fs = std::filesystem;

constexpr int kCardWidth = 380; // pixels
constexpr int kFromSide = 24;   // pixels

struct Example {
    const char* name;
    const char* text;
};
// ".wren" says that the directory is a project.
constexpr Example kExamples[] = {
    {".wren", ""},
    {"shapes.h", "#pragma once\n\n"
                 "// Something that can be painted.\n"
                 "class Shape {\npublic:\n"
                 "    virtual ~Shape() = default;\n\n"
                 "    // The room that it takes, in square points.\n"
                 "    virtual double Area() const = 0;\n"
                 "    virtual void Paint(int x, int y) const = 0;\n};\n\n"
                 "class Circle : public Shape {\npublic:\n"
                 "    explicit Circle(double radius) : radius(radius) {}\n\n"
                 "    double Area() const override;\n"
                 "    void Paint(int x, int y) const override;\n\n"
                 "private:\n    double radius;\n};\n"},
    {"circle.cpp", "#include \"shapes.h\"\n\n#include <cstdio>\n\n"
                   "double Circle::Area() const\n{\n    return 3.14159 * radius * radius;\n}\n\n"
                   "void Circle::Paint(int x, int y) const\n{\n"
                   "    std::printf(\"a circle of %g at %d, %d\\n\", Area(), x, y);\n}\n"},
    {"main.cpp", "#include \"shapes.h\"\n\n"
                 "static double Total(const Circle& left, const Circle& right)\n{\n"
                 "    return left.Area() + right.Area();\n}\n\n"
                 "int main()\n{\n"
                 "    Circle small(1.0);\n    Circle large(9.0);\n"
                 "    small.Paint(10, 20);\n    \n"
                 "    return Total(small, large) > 100.0 ? 0 : 1;\n}\n"},
};

struct Stop {
    const char* title;
    const char* text;
    const char* file;
    const char* caret; // behind these letters
};
constexpr Stop kStops[] = {
    {"Where is it defined?",
     "The caret is on \"Area\". Press F12: you are at its definition, in another file. Alt-Left brings you back. "
     "Control-F12 goes to the declaration, and Control with a click does what F12 does.",
     "main.cpp", "return left.Are"},
    {"Who uses it?",
     "Press Shift-F12. The panel below lists all uses, a group for each file. F4 goes to the next, Shift-F4 to the one "
     "before, and Escape gives the keyboard back to the text.",
     "main.cpp", "small.Pai"},
    {"What is it?",
     "Let the mouse rest on a name, or press Control-I: the declaration, its comment and where it is. While you type "
     "the arguments of a call, its parameters are shown above the line.",
     "main.cpp", "double Tot"},
    {"What fits here?",
     "Type \"small.\": the list has the members of its class. Letters narrow it, Enter or Tab takes one. Names of "
     "other files come from the third letter on.",
     "main.cpp", "small.Paint(10, 20);\n    "},
    {"Go anywhere",
     "Control-T goes to a symbol by some of its letters, Control-P to a file, Control-Shift-O to a symbol of this "
     "text. Control-Shift-F finds text in all files.",
     "main.cpp", "small.Paint(10, 20);\n    "},
    {"Keep the overview",
     "Control-Shift-L opens the outline. The bar above the text says where the caret is, and each part opens what "
     "stands beside it. All of it follows what you type, and what other programs change. That is all: open a tree of "
     "your own with Control-O.",
     "circle.cpp", "Circle::Pai"},
};

const char* TextOf(std::string_view file)
{
    for (const Example& example : kExamples)
        if (file == example.name)
            return example.text;
    return "";
}

} // namespace

Tour::Tour(QWidget& texts, std::string directory, OpenAt openAt)
    : QFrame(texts.window()), texts(texts), directory(std::move(directory)), openAt(std::move(openAt)),
      title(new QLabel), text(new QLabel), back(new QPushButton(tr("&Back"))), next(new QPushButton)
{
    setObjectName("tour");
    setAccessibleName(tr("Tour"));
    setFrameShape(QFrame::StyledPanel);
    setBackgroundRole(QPalette::ToolTipBase);
    setAutoFillBackground(true);
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    auto* leave = new QPushButton(tr("&Leave the Tour"));
    auto* row = new QHBoxLayout;
    row->addWidget(leave);
    row->addStretch(1);
    row->addWidget(back);
    row->addWidget(next);
    auto* column = new QVBoxLayout(this);
    for (QLabel* label : {title, text}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        label->setForegroundRole(QPalette::ToolTipText);
        column->addWidget(label);
    }
    column->addLayout(row);
    next->setObjectName("next");
    for (QPushButton* button : {leave, back, next})
        button->setFocusPolicy(Qt::NoFocus); // the text keeps the keyboard
    connect(leave, &QPushButton::clicked, this, [this] { Go(Steps()); });
    connect(back, &QPushButton::clicked, this, [this] { Go(step - 1); });
    connect(next, &QPushButton::clicked, this, [this] { Go(step + 1); });
    texts.installEventFilter(this);
    hide();
}

int Tour::Steps()
{
    return static_cast<int>(std::size(kStops));
}

// What the user has changed in an earlier tour is written again.
bool Tour::Start(std::string* error)
{
    std::error_code problem;
    fs::create_directories(directory, problem);
    for (const Example& example : kExamples)
        if (!WriteWholeFile(directory + "/" + example.name, example.text, error))
            return false;
    Go(0);
    show();
    raise();
    return true;
}

void Tour::Go(int wanted)
{
    step = wanted;
    if (step < 0 || step >= Steps()) {
        hide();
        emit Ended();
        return;
    }
    const Stop& stop = kStops[step];
    title->setText(tr("%1 of %2: %3").arg(step + 1).arg(Steps()).arg(tr(stop.title)));
    text->setText(tr(stop.text));
    back->setEnabled(step > 0);
    next->setText(step + 1 == Steps() ? tr("&Done") : tr("&Next"));
    const std::string_view example = TextOf(stop.file);
    const std::string_view before = stop.caret;
    openAt(directory + "/" + stop.file, static_cast<long>(example.find(before) + before.size()));
    Place();
}

void Tour::Place()
{
    resize(kCardWidth, heightForWidth(kCardWidth));
    QRect place = rect();
    place.moveBottomRight(texts.mapTo(parentWidget(), texts.rect().bottomRight()) - QPoint(kFromSide, kFromSide));
    setGeometry(place);
    raise();
}

bool Tour::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::Resize && isVisible())
        Place();
    return false;
}

} // namespace wren
