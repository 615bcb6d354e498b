#include "plugin/PluginInterface.h"
#include "settings/DeclarationSettings.h"
#include "settings/DirectoriesText.h"
#include "settings/ScanDirectoriesBinder.h"
#include "vetch/interface/BCheckBox.h"
#include "vetch/interface/BTextControl.h"

namespace {

// The panel controls' item numbers in the interface file.
enum : long {
    kAutomaticallyRebuildBox = 10,
    kOptionClickBox = 11,
    kCtrlOptionClickBox = 13,
    kAutoCompleteBox = 14,
    kScanSystemDirectoriesField = 20,
    kIgnoreStringsField = 21,
    kIndexSuffixesField = 23,
};

template <class Control>
Control* TakeControl(BView* panel, long number)
{
    Control* control = new Control;
    panel->AddChildFromNib(control, number);
    return control;
}

} // namespace

void DeclarationSettings::AddPreferencePanel(PluginInterface* host)
{
    BView* panel = host->panelView;
    Bind(&optionClickToFindDeclaration, TakeControl<BCheckBox>(panel, kOptionClickBox));
    Bind(&ctrlOptionClickToFindDefinition, TakeControl<BCheckBox>(panel, kCtrlOptionClickBox));
    Bind(&automaticallyRebuild, TakeControl<BCheckBox>(panel, kAutomaticallyRebuildBox));
    Bind(&autoComplete, TakeControl<BCheckBox>(panel, kAutoCompleteBox));
    BindScanDirectories(TakeControl<BTextControl>(panel, kScanSystemDirectoriesField));
    Bind(&ignoreStrings, TakeControl<BTextControl>(panel, kIgnoreStringsField));
    Bind(&indexSuffixes, TakeControl<BTextControl>(panel, kIndexSuffixesField));
}

void DeclarationSettings::BindScanDirectories(BTextControl* control)
{
    using Glue = BTextControlBase::ValueGetterGlue<DeclarationSettings>;
    control->SetValueGetter(new Glue(&DeclarationSettings::ScanSystemDirectoriesForEditItem, this));
    control->SetValueApplicator(new ScanDirectoriesBinder(this));
    scanSystemDirectories.StartWatchingBy(control, kSettingChanged);
}

const char* DeclarationSettings::ScanSystemDirectoriesForEditItem() const
{
    editItem = SystemDirectoriesStringForControl(scanSystemDirectories.Value());
    return editItem.c_str();
}
