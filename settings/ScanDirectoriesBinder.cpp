#include "settings/ScanDirectoriesBinder.h"

#include "settings/DeclarationSettings.h"
#include "settings/DirectoriesText.h"

namespace {

// Keeps the selection: the text's length is unchanged.
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
    // An applicator gets its control read-only, but this one also tidies the control's text.
    ReplaceText(const_cast<BTextControl*>(static_cast<const BTextControl*>(control)),
                SystemDirectoriesStringForControl(stored));
    settings->scanSystemDirectories.SetValue(stored.c_str());
}
