// Tells the user of something that needs no answer, above the text, until it is dismissed.
#pragma once

#include <QFrame>

class QLabel;
class QScrollArea;

namespace wren {

// Hidden while there is nothing to tell; many lines are scrolled, so that the text below stays usable. GUI thread.
class NoticeBar : public QFrame {
    Q_OBJECT
public:
    explicit NoticeBar(QWidget* parent = nullptr);

    void Tell(const QString& text); // below what is told already; the same thing once
    QString Told() const;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void Dismiss();
    void FitHeight();

    QLabel* label;
    QScrollArea* area;
    QStringList told;
};

} // namespace wren
