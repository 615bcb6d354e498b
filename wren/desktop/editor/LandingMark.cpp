#include "wren/desktop/editor/LandingMark.h"

#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/editor/ViewText.h"

#include <algorithm>
#include <chrono>

namespace wren {

namespace {

using namespace std::chrono_literals;

constexpr auto kShown = 1500ms; // the eye has found the line by then
constexpr int kAlpha = 90;      // of the box and of its outline
constexpr int kOutlineAlpha = 200;

} // namespace

LandingMark::LandingMark(QObject* parent) : QObject(parent)
{
    end.setSingleShot(true);
    end.setInterval(kShown);
    connect(&end, &QTimer::timeout, this, &LandingMark::End);
}

void LandingMark::Show(CodeView& view, long offset, long size)
{
    End();
    const ViewText text(view);
    size = std::min(size, text.Length() - offset);
    if (offset < 0 || size <= 0)
        return;
    view.indicatorDefine(QsciScintilla::StraightBoxIndicator, kIndicator);
    view.setIndicatorForegroundColor(ColoursOf(view.Look().dark).keyword, kIndicator);
    text.Send(QsciScintillaBase::SCI_INDICSETALPHA, kIndicator, kAlpha);
    text.Send(QsciScintillaBase::SCI_INDICSETOUTLINEALPHA, kIndicator, kOutlineAlpha);
    text.Send(QsciScintillaBase::SCI_SETINDICATORCURRENT, kIndicator);
    text.Send(QsciScintillaBase::SCI_INDICATORFILLRANGE, offset, size);
    shown = &view;
    end.start();
}

void LandingMark::End()
{
    end.stop();
    if (shown == nullptr)
        return;
    const ViewText text(*shown);
    text.Send(QsciScintillaBase::SCI_SETINDICATORCURRENT, kIndicator);
    text.Send(QsciScintillaBase::SCI_INDICATORCLEARRANGE, 0, text.Length());
    shown = nullptr;
}

} // namespace wren
