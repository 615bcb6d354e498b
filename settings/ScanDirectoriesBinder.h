// Takes what the user wrote into the field of system directories.
#pragma once

#include "vetch/interface/BTextControl.h"

class DeclarationSettings;

// Stores the directories separated by blanks, and shows them one a line again. The settings are borrowed.
class ScanDirectoriesBinder : public BTextControlValueApplicator {
public:
    explicit ScanDirectoriesBinder(DeclarationSettings* settings) : settings(settings) {}

    void Invoke(const BTextControlBase* control) override;

private:
    DeclarationSettings* settings;
};
