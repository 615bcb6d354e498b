// What is looked for in files, and where.
#pragma once

#include <QDockWidget>

#include <string>
#include <vector>

class QHBoxLayout;
class QLabel;
class QLineEdit;
class QToolButton;

namespace wren {

// As the user has filled in the fields.
struct FilesWanted {
    std::string text;
    bool isExpression = false;
    bool matchesCase = false;
    bool wholeWords = false;
    std::vector<std::string> globs;
    std::string folder; // "" for the whole project; else absolute, or relative to the project
    std::string with;   // what is to take the place of matches
};

// Enter asks, in the field of the replacement for a preview of it; Escape closes it. The fields keep what they were
// given. GUI thread.
class FilesFindBar : public QDockWidget {
    Q_OBJECT
public:
    explicit FilesFindBar(QWidget* parent = nullptr);

    void Open(const std::string& text); // takes the keyboard; "" leaves the text that was there
    void ShowReplacement();             // the row of the replacement, which stays
    FilesWanted Wanted() const;
    void Tell(const QString& problem); // beside the fields; "" for none
    QString Problem() const;

signals:
    void Asked();
    void PreviewAsked(); // of replacements
    void Left();         // the text gets the keyboard back

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QLineEdit* AddField(QHBoxLayout& row, const char* name, const QString& hint, const QString& tip, int share);
    QToolButton* AddToggle(QHBoxLayout& row, const char* name, const QString& label, const QString& tip);

    QLineEdit* text;
    QToolButton* matchCase;
    QToolButton* wholeWords;
    QToolButton* expression;
    QLineEdit* files;
    QLineEdit* folder;
    QLineEdit* with;
    QWidget* replacement;
    QLabel* problem;
};

} // namespace wren
