// A field with a text that the user can edit.
#pragma once

#include "vetch/interface/BControl.h"

#include <memory>
#include <string>

class BTextControlBase;

// Where a text control takes its text from.
class BTextControlValueGetter {
public:
    virtual ~BTextControlValueGetter() = default;
    virtual const char* Value() const = 0; // read at once
};

// Where a text control puts the text that the user entered.
class BTextControlValueApplicator {
public:
    virtual ~BTextControlValueApplicator() = default;
    virtual void Invoke(const BTextControlBase* control) = 0;
};

// What all text fields share: the text.
class BTextControlBase : public BControl {
public:
    template <class T>
    class ValueGetterGlue;
    template <class T>
    class ValueApplicatorGlue;

    const char* Text() const { return text.c_str(); } // until the text next changes

protected:
    BTextControlBase();

    std::string text;
};

// Refreshes itself from its getter whenever a notice arrives that it watches for. When the user has entered a text, by
// leaving the field or with Enter, the applicator is called and then the control invoked; SetText() does neither. While
// the user types, only the text changes.
class BTextControl : public BTextControlBase {
public:
    BTextControl();

    // Null is "". A text that is the same already leaves the selection alone; a new one puts the caret at its end.
    void SetText(const char* newText);
    void GetSelection(long* start, long* end) const;                     // bytes of the text
    void Select(long start, long end);                                   // kept within the text
    void SetValueGetter(BTextControlValueGetter* newGetter);             // takes it over, and refreshes at once
    void SetValueApplicator(BTextControlValueApplicator* newApplicator); // takes it over

    void MessageReceived(BMessage* message) override;
    void NoticeReceived(uint32 what, const BMessage* message) override;

protected:
    void AttachedToWindow() override;
    bool SetUpFromNib(const vetch::NibControl& control) override;
    void Describe(vetch::ViewDescription& description) const override;

private:
    void TakeEdit(const BMessage& message);
    void Refresh();
    void TellSelection() const;
    long TextLength() const;

    bool multiLine = false;
    long selectionStart = 0;
    long selectionEnd = 0;
    std::unique_ptr<BTextControlValueGetter> getter;
    std::unique_ptr<BTextControlValueApplicator> applicator;
};

// Reads the text from a member of some object, which is borrowed and outlives the control.
template <class T>
class BTextControlBase::ValueGetterGlue : public BTextControlValueGetter {
public:
    ValueGetterGlue(const char* (T::*member)() const, const T* object) : member(member), object(object) {}
    const char* Value() const override { return (object->*member)(); }

private:
    const char* (T::*member)() const;
    const T* object;
};

// Passes the control's text to a member of some object, which is borrowed and outlives the control.
template <class T>
class BTextControlBase::ValueApplicatorGlue : public BTextControlValueApplicator {
public:
    ValueApplicatorGlue(void (T::*member)(const char*), T* object) : member(member), object(object) {}
    void Invoke(const BTextControlBase* control) override { (object->*member)(control->Text()); }

private:
    void (T::*member)(const char*);
    T* object;
};
