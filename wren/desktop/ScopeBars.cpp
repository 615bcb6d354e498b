#include "wren/desktop/ScopeBars.h"

#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/symbols/ScopeBar.h"

#include <QEvent>
#include <QFontMetrics>

namespace wren {

namespace {

constexpr int kAroundText = 6; // pixels, above and below together

int HeightFor(const CodeView& view)
{
    return QFontMetrics(view.Look().font).height() + kAroundText;
}

} // namespace

ScopeBar* ScopeBars::BarOf(const CodeView& view) const
{
    return view.findChild<ScopeBar*>(QString(), Qt::FindDirectChildrenOnly);
}

void ScopeBars::Update(CodeView& view, bool isShown)
{
    ScopeBar* bar = BarOf(view);
    if (!isShown) {
        delete bar;
        view.removeEventFilter(this);
        return view.SetTopMargin(0);
    }
    if (bar == nullptr) {
        bar = new ScopeBar(&view);
        connect(bar, &ScopeBar::Asked, this,
                [this, &view](const std::vector<PaletteItem>& siblings) { emit Asked(view, siblings); });
        view.installEventFilter(this);
    }
    const EditorColours& colours = ColoursOf(view.Look().dark);
    bar->SetLook(view.Look().font, colours.text, colours.margin);
    view.SetTopMargin(HeightFor(view));
    Place(view, *bar);
    bar->show();
}

bool ScopeBars::eventFilter(QObject* watched, QEvent* event)
{
    const auto* view = qobject_cast<const CodeView*>(watched);
    if (view != nullptr && (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest))
        if (ScopeBar* bar = BarOf(*view))
            Place(*view, *bar);
    return false;
}

void ScopeBars::Place(const CodeView& view, ScopeBar& bar)
{
    const int frame = view.frameWidth();
    bar.setGeometry(frame, frame, view.width() - 2 * frame, HeightFor(view));
}

} // namespace wren
