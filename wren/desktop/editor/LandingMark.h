// The name that a jump has landed on, marked for a moment.
#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>

namespace wren {

class CodeView;

// In one view at a time. The text may change meanwhile. GUI thread.
class LandingMark : public QObject {
    Q_OBJECT
public:
    explicit LandingMark(QObject* parent = nullptr);

    void Show(CodeView& view, long offset, long size); // bytes; ends an earlier one
    void End();

    static constexpr int kIndicator = 20; // of Scintilla

private:
    QPointer<CodeView> shown;
    QTimer end;
};

} // namespace wren
