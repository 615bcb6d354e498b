#include "vetch/app/BApplication.h"

#include "vetch/app/Loop.h"
#include "vetch/app/LooperState.h"
#include "vetch/app/Reaper.h"
#include "vetch/app/ThreadNumber.h"

#include <cassert>

BApplication* be_app = nullptr;

BApplication::BApplication() : BLooper(vetch::Service::Application)
{
    assert(!be_app);
    be_app = this;
    state->KeepFromReaper();
    vetch::SetDocumentThread(vetch::CurrentThread());
    Run();
}

BApplication::~BApplication()
{
    assert(vetch::OnDocumentThread() && vetch::PluginCall::Depth() == 0);
    while (vetch::Reaper::ReapOne()) {
    }
    vetch::SetDocumentThread(vetch::kNoThread);
    be_app = nullptr;
}

void BApplication::Quit()
{
    AcceptQuit();
}

BMenuBar* BApplication::MenuBar() const
{
    return menuBar;
}

void BApplication::SetMenuBar(BMenuBar* bar)
{
    menuBar = bar;
}
