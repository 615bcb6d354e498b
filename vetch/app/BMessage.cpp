#include "vetch/app/BMessage.h"

BMessage::BMessage(uint32 what) : what(what) {}

status_t BMessage::AddInt8(const char* name, int8 value)
{
    return Add(name, value);
}

status_t BMessage::AddInt32(const char* name, int32 value)
{
    return Add(name, value);
}

status_t BMessage::AddString(const char* name, const char* value)
{
    return value ? Add(name, std::string(value)) : B_ERROR;
}

status_t BMessage::AddRef(const char* name, const EntryRef* ref)
{
    return ref ? Add(name, *ref) : B_ERROR;
}

status_t BMessage::AddMessage(const char* name, const BMessage* message)
{
    return message ? Add(name, std::make_shared<const BMessage>(*message)) : B_ERROR;
}

status_t BMessage::FindInt8(const char* name, int32 index, int8* value) const
{
    return Read(name, index, value);
}

status_t BMessage::FindInt32(const char* name, int32* value) const
{
    return Read(name, 0, value);
}

status_t BMessage::FindString(const char* name, const char** value) const
{
    const auto* found = Find<std::string>(name, 0);
    if (!found || !value)
        return B_ERROR;
    *value = found->c_str();
    return B_OK;
}

status_t BMessage::FindRef(const char* name, EntryRef* ref) const
{
    return FindRef(name, 0, ref);
}

status_t BMessage::FindRef(const char* name, int32 index, EntryRef* ref) const
{
    return Read(name, index, ref);
}

status_t BMessage::FindMessage(const char* name, BMessage* message) const
{
    const auto* found = Find<std::shared_ptr<const BMessage>>(name, 0);
    if (!found || !message)
        return B_ERROR;
    // Keeps it alive during the copy: 'message' may be this one, whose fields the copy replaces.
    const std::shared_ptr<const BMessage> kept = *found;
    *message = *kept;
    return B_OK;
}

status_t BMessage::Add(const char* name, Value value)
{
    if (!name)
        return B_ERROR;
    std::vector<Value>& values = fields[name];
    if (!values.empty() && values.front().index() != value.index())
        return B_ERROR;
    values.push_back(std::move(value));
    return B_OK;
}

template <class T>
const T* BMessage::Find(const char* name, int32 index) const
{
    if (!name)
        return nullptr;
    const auto field = fields.find(name);
    if (field == fields.end() || index < 0 || static_cast<size_t>(index) >= field->second.size())
        return nullptr;
    return std::get_if<T>(&field->second[index]);
}

template <class T>
status_t BMessage::Read(const char* name, int32 index, T* value) const
{
    const T* found = Find<T>(name, index);
    if (!found || !value)
        return B_ERROR;
    *value = *found;
    return B_OK;
}
