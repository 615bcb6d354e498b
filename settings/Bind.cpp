#include "settings/PluginSetting.h"
#include "vetch/interface/BCheckBox.h"
#include "vetch/interface/BTextControl.h"

void Bind(PluginSetting<bool>* setting, BCheckBox* box)
{
    using Setting = PluginSetting<bool>;
    box->SetValueGetter(new BCheckBox::ValueGetterGlue<Setting>(&Setting::Value, setting));
    box->SetValueApplicator(new BCheckBox::ValueApplicatorGlue<Setting>(&Setting::SetValue, setting));
    setting->StartWatchingBy(box, kSettingChanged);
}

void Bind(PluginSetting<const char*>* setting, BTextControl* control)
{
    using Setting = PluginSetting<const char*>;
    control->SetValueGetter(new BTextControlBase::ValueGetterGlue<Setting>(&Setting::Value, setting));
    control->SetValueApplicator(new BTextControlBase::ValueApplicatorGlue<Setting>(&Setting::SetValue, setting));
    setting->StartWatchingBy(control, kSettingChanged);
}
