// The panel below the text that lists places: what a name may mean, and where it is used.
#pragma once

#include "wren/desktop/symbols/FoundPlace.h"

#include <QDockWidget>

#include <string>
#include <vector>

class QLabel;
class QLineEdit;
class QToolButton;
class QTreeView;

namespace wren {

class MatchesModel;

struct CaretPlace {
    std::string path;
    long line = 0;   // from 1
    long column = 0; // bytes, from 1
};

// Results come in as they are found, and can be stopped. Typing narrows the list, arrows and pages move in it, Enter or
// a click goes to a place and keeps the panel, Escape gives the keyboard back to the text. GUI thread.
class MatchesPanel : public QDockWidget {
    Q_OBJECT
public:
    explicit MatchesPanel(QWidget* parent = nullptr);

    // Empty, and searching. Where the list has 'from', the place that the user comes from, steps begin there.
    void Begin(const QString& title, const CaretPlace& from = {});
    void Add(std::vector<FoundPlace> places);
    void End(bool more); // all are there; 'more' exist that were not looked for
    // Goes to the place after the one where the user was last, or to the first one; false at the end.
    bool Step(bool backwards);

    void TakeKeyboard();
    QString Title() const; // "12 references to 'name', in 3 files", as shown
    const MatchesModel& Model() const { return *model; }

signals:
    void Chosen(const FoundPlace& place);
    void StopAsked();
    void Left(); // the text gets the keyboard back

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool KeyPressed(const QObject* watched, const QKeyEvent& key);
    void Go(const QModelIndex& index);
    void StartNarrowing(const QString& letters);
    void Move(int rows);
    void MarkFirst();
    void MarkOrigin();
    void ShowTitle();

    QString subject; // "references to 'name'"
    CaretPlace origin;
    bool isVisited = false; // the marked place: the user has been there
    bool isSearching = false;
    bool hasMore = false;
    MatchesModel* model;
    QLabel* title;
    QLineEdit* filter;
    QToolButton* stop;
    QTreeView* tree;
};

} // namespace wren
