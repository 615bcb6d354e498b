// Stores the text of the system directories' field.
#pragma once

#include "vetch/interface/BTextControl.h"

class DeclarationSettings;

// Stores the directories separated by blanks and shows them one a line again. Borrows the settings.
class ScanDirectoriesBinder : public BTextControlValueApplicator {
public:
    explicit ScanDirectoriesBinder(DeclarationSettings* settings) : settings(settings) {}

    void Invoke(const BTextControlBase* control) override;

private:
    DeclarationSettings* settings;
};
