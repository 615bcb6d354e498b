// A switch with a label.
#pragma once

#include "vetch/interface/BControl.h"

#include <memory>

class BCheckBox;

// Reads a check box's value.
class BCheckBoxValueGetter {
public:
    virtual ~BCheckBoxValueGetter() = default;
    virtual bool Value() const = 0;
};

// Stores the value that the user chose.
class BCheckBoxValueApplicator {
public:
    virtual ~BCheckBoxValueApplicator() = default;
    virtual void Invoke(const BCheckBox* box) = 0;
};

// Refreshes itself from its getter at each notice that it watches for. When the user switches it, it calls the
// applicator and then Invoke(); SetValue() calls neither.
class BCheckBox : public BControl {
public:
    template <class T>
    class ValueGetterGlue;
    template <class T>
    class ValueApplicatorGlue;

    BCheckBox();

    bool Value() const { return value; }
    void SetValue(bool on);
    void SetValueGetter(BCheckBoxValueGetter* newGetter);             // takes ownership; refreshes at once
    void SetValueApplicator(BCheckBoxValueApplicator* newApplicator); // takes ownership

    void MessageReceived(BMessage* message) override;
    void NoticeReceived(uint32 what, const BMessage* message) override;

protected:
    void AttachedToWindow() override;
    bool SetUpFromNib(const vetch::NibControl& control) override;

private:
    void Refresh();

    bool value = false;
    std::unique_ptr<BCheckBoxValueGetter> getter;
    std::unique_ptr<BCheckBoxValueApplicator> applicator;
};

// Reads the value from a member of a borrowed object, which outlives the box.
template <class T>
class BCheckBox::ValueGetterGlue : public BCheckBoxValueGetter {
public:
    ValueGetterGlue(bool (T::*member)() const, const T* object) : member(member), object(object) {}
    bool Value() const override { return (object->*member)(); }

private:
    bool (T::*member)() const;
    const T* object;
};

// Passes the box's value to a member of a borrowed object, which outlives the box.
template <class T>
class BCheckBox::ValueApplicatorGlue : public BCheckBoxValueApplicator {
public:
    ValueApplicatorGlue(void (T::*member)(bool), T* object) : member(member), object(object) {}
    void Invoke(const BCheckBox* box) override { (object->*member)(box->Value()); }

private:
    void (T::*member)(bool);
    T* object;
};
