// A code with named values: loopers, windows and the application exchange them.
#pragma once

#include "vetch/storage/EntryRef.h"
#include "vetch/support/Types.h"

#include <map>
#include <memory>
#include <string>
#include <variant>
#include <vector>

// A value type. A name may hold several values of one type, in the order of their addition. A find returns B_ERROR for
// a missing name or index and for another type; its output is unchanged. Not thread-safe; copies are independent.
class BMessage {
public:
    uint32 what;

    explicit BMessage(uint32 what = 0);

    // B_ERROR when the name already holds values of another type, or a pointer argument is null.
    status_t AddInt8(const char* name, int8 value);
    status_t AddInt32(const char* name, int32 value);
    status_t AddString(const char* name, const char* value);
    status_t AddRef(const char* name, const EntryRef* ref);
    status_t AddMessage(const char* name, const BMessage* message);

    status_t FindInt8(const char* name, int32 index, int8* value) const;
    status_t FindInt32(const char* name, int32* value) const;
    status_t FindString(const char* name, const char** value) const; // valid while this message is unchanged
    status_t FindRef(const char* name, EntryRef* ref) const;
    status_t FindRef(const char* name, int32 index, EntryRef* ref) const;
    status_t FindMessage(const char* name, BMessage* message) const;

private:
    using Value = std::variant<int8, int32, std::string, EntryRef, std::shared_ptr<const BMessage>>;

    status_t Add(const char* name, Value value);
    template <class T>
    const T* Find(const char* name, int32 index) const;
    template <class T>
    status_t Read(const char* name, int32 index, T* value) const;

    std::map<std::string, std::vector<Value>> fields;
};
