// The panel below the text that shows what a replacement in files would do.
#pragma once

#include "wren/desktop/finder/ReplaceModel.h"

#include <QDockWidget>

class QLabel;
class QToolButton;
class QTreeView;

namespace wren {

// Each match with its line before and after. Space or a click sets a check mark, Enter or a double click goes to the
// place, Escape gives the keyboard back to the text. GUI thread.
class ReplacePanel : public QDockWidget {
    Q_OBJECT
public:
    explicit ReplacePanel(QWidget* parent = nullptr);

    void Begin(); // empty, and searching
    void Add(FileReplacements file);
    void End(bool more);             // all are there; 'more' exist that were not looked for
    void Finish(const QString& did); // empty, and says what was done

    ReplaceModel& Model() { return *model; }
    QString Title() const; // as shown

signals:
    void ReplaceAsked();
    void Chosen(const FileReplacements& file, const FoundLine& line);
    void Left(); // the text gets the keyboard back

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ShowState();
    void Go(const QModelIndex& index);

    bool isSearching = false;
    bool hasMore = false;
    ReplaceModel* model;
    QLabel* title;
    QToolButton* replace;
    QTreeView* tree;
};

} // namespace wren
