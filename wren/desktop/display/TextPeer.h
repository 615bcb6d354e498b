// A text field on the screen.
#pragma once

#include "vetch/app/BHandler.h"
#include "wren/desktop/display/EditEchoes.h"
#include "wren/desktop/display/ViewPeer.h"

#include <QLineEdit>
#include <QPlainTextEdit>

#include <string>
#include <utility>

namespace wren {

// What fields of one line and of several share. Each edit by the user is posted at once; that the value counts is
// posted when the user presses Enter, or leaves a field that was edited.
class TextPeer : public ViewPeer {
public:
    void SetText(const std::string& text) override;
    void SelectText(long start, long end) override;

protected:
    explicit TextPeer(vetch::HandlerToken control) : control(control) {}

    void Edited();
    void Entered();
    void Left();

private:
    virtual QString Shown() const = 0;
    virtual void Show(const QString& text) = 0;
    virtual void Select(int start, int end) = 0; // in UTF-16 units
    virtual std::pair<int, int> Selection() const = 0;
    TextEdit Current() const;

    const vetch::HandlerToken control;
    std::string told; // the text last heard of, or posted
    EditEchoes echoes;
    bool unentered = false; // edited, and not yet said that it counts
};

class LinePeer : public QLineEdit, public TextPeer {
public:
    LinePeer(vetch::HandlerToken control, QWidget* parent);

    QWidget& Widget() override { return *this; }

protected:
    void focusOutEvent(QFocusEvent* event) override;

private:
    QString Shown() const override;
    void Show(const QString& text) override;
    void Select(int start, int end) override;
    std::pair<int, int> Selection() const override;
};

class AreaPeer : public QPlainTextEdit, public TextPeer {
public:
    AreaPeer(vetch::HandlerToken control, QWidget* parent);

    QWidget& Widget() override { return *this; }

protected:
    void focusOutEvent(QFocusEvent* event) override;

private:
    QString Shown() const override;
    void Show(const QString& text) override;
    void Select(int start, int end) override;
    std::pair<int, int> Selection() const override;
};

} // namespace wren
