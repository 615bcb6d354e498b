#include "settings/ScanDirectoriesBinder.h"

#include "settings/DeclarationSettings.h"
#include "settings/DirectoriesText.h"

namespace {

// The user stays where he was: the text is as long as before.
void ReplaceText(BTextControl* control, const std::string& text)
{
    long start = 0, end = 0;
    control->GetSelection(&start, &end);
    control->SetText(text.c_str());
    control->Select(start, end);
}

} // namespace

void ScanDirectoriesBinder::Invoke(const BTextControlBase* control)
{
    const std::string stored = SystemDirectoriesStringForStore(control->Text());
    // An applicator is only told of its control, but this one also tidies up in it.
    ReplaceText(const_cast<BTextControl*>(static_cast<const BTextControl*>(control)),
                SystemDirectoriesStringForControl(stored));
    settings->scanSystemDirectories.SetValue(stored.c_str());
}
