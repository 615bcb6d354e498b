// A field with editable text.
#pragma once

#include "vetch/interface/BControl.h"

#include <memory>
#include <string>

class BTextControlBase;

// Reads a text control's text.
class BTextControlValueGetter {
public:
    virtual ~BTextControlValueGetter() = default;
    virtual const char* Value() const = 0; // the caller reads it at once
};

// Stores the text that the user entered.
class BTextControlValueApplicator {
public:
    virtual ~BTextControlValueApplicator() = default;
    virtual void Invoke(const BTextControlBase* control) = 0;
};

// The common base of text fields.
class BTextControlBase : public BControl {
public:
    template <class T>
    class ValueGetterGlue;
    template <class T>
    class ValueApplicatorGlue;

    const char* Text() const { return text.c_str(); } // valid until the text changes

protected:
    BTextControlBase();

    std::string text;
};

// Refreshes itself from its getter at each notice that it watches for. When the user leaves the field or presses Enter,
// it calls the applicator and then Invoke(); SetText() calls neither. While the user types, only the text changes.
class BTextControl : public BTextControlBase {
public:
    BTextControl();

    // Null is "". An equal text keeps the selection; a new one puts the caret at its end.
    void SetText(const char* newText);
    void GetSelection(long* start, long* end) const;                     // in bytes
    void Select(long start, long end);                                   // limited to the text
    void SetValueGetter(BTextControlValueGetter* newGetter);             // takes ownership; refreshes at once
    void SetValueApplicator(BTextControlValueApplicator* newApplicator); // takes ownership

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

// Reads the text from a member of a borrowed object, which outlives the control.
template <class T>
class BTextControlBase::ValueGetterGlue : public BTextControlValueGetter {
public:
    ValueGetterGlue(const char* (T::*member)() const, const T* object) : member(member), object(object) {}
    const char* Value() const override { return (object->*member)(); }

private:
    const char* (T::*member)() const;
    const T* object;
};

// Passes the control's text to a member of a borrowed object, which outlives the control.
template <class T>
class BTextControlBase::ValueApplicatorGlue : public BTextControlValueApplicator {
public:
    ValueApplicatorGlue(void (T::*member)(const char*), T* object) : member(member), object(object) {}
    void Invoke(const BTextControlBase* control) override { (object->*member)(control->Text()); }

private:
    void (T::*member)(const char*);
    T* object;
};
