// Tells the user of something that needs no answer, above the text, until it is dismissed.
#pragma once

#include <QFrame>

class QLabel;

namespace wren {

// Hidden while there is nothing to tell. GUI thread.
class NoticeBar : public QFrame {
    Q_OBJECT
public:
    explicit NoticeBar(QWidget* parent = nullptr);

    void Tell(const QString& text); // below what is told already; the same thing once
    QString Told() const;

private:
    void Dismiss();

    QLabel* label;
    QStringList told;
};

} // namespace wren
