// Finds preferences by their words.
#pragma once

#include <QObject>
#include <QPointer>
#include <QStringList>

#include <vector>

class QLineEdit;
class QListWidget;
class QWidget;

namespace wren {

// While the field has words, only the titles of pages with all of them stay, and the controls that have them are
// marked. What a control says is its accessible name, its description and its tooltip. GUI thread.
class PreferenceSearch : public QObject {
    Q_OBJECT
public:
    PreferenceSearch(QLineEdit& field, QListWidget& titles); // borrows both

    void AddPage(QWidget* page); // belongs to the next title; borrowed

private:
    void Search(const QString& typed);
    bool MarkIn(QWidget& page, const QStringList& words);
    void Mark(QWidget& control);
    void Unmark();

    QListWidget& titles;
    std::vector<QWidget*> pages;
    std::vector<QPointer<QWidget>> marked;
};

} // namespace wren
