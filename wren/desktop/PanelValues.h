// What the fields of a panel held.
#pragma once

#include <QPointer>
#include <QString>

#include <utility>
#include <vector>

class QCheckBox;
class QLineEdit;
class QPlainTextEdit;
class QWidget;

namespace wren {

// Puts the values of boxes and texts back as a user would, so that the owner of the panel hears of it. Nothing is sent
// for a field that holds its value still. GUI thread.
class PanelValues {
public:
    explicit PanelValues(const QWidget& panel);

    void Restore() const;

private:
    std::vector<std::pair<QPointer<QCheckBox>, bool>> boxes;
    std::vector<std::pair<QPointer<QLineEdit>, QString>> lines;
    std::vector<std::pair<QPointer<QPlainTextEdit>, QString>> areas;
};

} // namespace wren
