// A host for unit tests: a document as a string, and a record of the plug-in's calls.
#pragma once

#include "plugin/PluginInterface.h"
#include "vetch/interface/BMenu.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <map>
#include <string>
#include <utility>
#include <vector>

// The document's text contains its selection: "|" is a caret, "[[" and "]]" enclose a selection. Without either the
// caret is at 0.
class FakeHost : public PluginInterface {
public:
    explicit FakeHost(const std::string& markedText = "") { SetMarked(markedText); }
    virtual ~FakeHost() = default;

    std::string text;
    long selectionStart = 0;
    long selectionEnd = 0;
    EntryRef file;
    bool worksheet = false;
    bool pending = false;
    std::string worksheetDirectory;
    std::map<std::string, std::pair<char, uint32>> shortcuts;
    std::vector<std::string> log; // "BeginUndo 1 2 name", ...

    void SetMarked(const std::string& marked)
    {
        text = marked;
        selectionStart = selectionEnd = 0;
        if (auto caret = text.find('|'); caret != std::string::npos) {
            text.erase(caret, 1);
            selectionStart = selectionEnd = static_cast<long>(caret);
        } else if (auto open = text.find("[["); open != std::string::npos) {
            text.erase(open, 2);
            const auto close = text.find("]]", open);
            text.erase(close, 2);
            selectionStart = static_cast<long>(open);
            selectionEnd = static_cast<long>(close);
        }
    }
    std::string Marked() const
    {
        std::string marked = text;
        if (selectionStart == selectionEnd)
            return marked.insert(selectionStart, "|");
        marked.insert(selectionEnd, "]]");
        return marked.insert(selectionStart, "[[");
    }

    void SetResourceIDs(long first, long second) override { Log("SetResourceIDs", first, second); }
    void GetSelection(long* start, long* end) override
    {
        *start = selectionStart;
        *end = selectionEnd;
    }
    long TextLength() override { return static_cast<long>(text.size()); }
    void GetText(char* buffer, long offset, long length) override
    {
        for (long i = 0; i < length; ++i)
            if (offset + i >= 0 && offset + i < TextLength())
                buffer[i] = text[offset + i];
    }
    char CharAt(long offset) override { return offset >= 0 && offset < TextLength() ? text[offset] : '\0'; }
    void GetMouse(BPoint* where, uint32* buttons, bool) override
    {
        *where = mouse;
        *buttons = mouseButtons;
    }
    long OffsetAt(const BPoint* where) override { return static_cast<long>(where->x / 7); }
    BPoint PointAt(long offset) const override
    {
        ++pointsAsked;
        return {48 + 7.0f * static_cast<float>(offset), 96};
    }
    BRect TextBounds() override { return {0, 0, 700, 600}; }
    BRect ButtonFrame() override { return {8, 4, 24, 20}; }
    void RegisterSetting(const char* name) override { Log("RegisterSetting", name); }
    void RegisterCommand(const char* name, const char* help) override { Log("RegisterCommand", name, help); }
    void SetPluginFlags(long flags) override { Log("SetPluginFlags", flags); }
    void CommandDone(long status) override { Log("CommandDone", status); }
    const EntryRef* DocumentRef() override { return &file; }
    bool InputPending() override { return pending; }
    bool IsWorksheet() override { return worksheet; }
    void WriteSettings(const char* format, ...) override __attribute__((format(printf, 2, 3)))
    {
        char buffer[4096];
        va_list arguments;
        va_start(arguments, format);
        std::vsnprintf(buffer, sizeof buffer, format, arguments);
        va_end(arguments);
        Log("WriteSettings", std::string(buffer));
    }
    long LineAt(long offset) override { return std::count(text.begin(), text.begin() + Within(offset), '\n'); }
    void BeginUndo(long selStart, long selEnd, const char* name) override { Log("BeginUndo", selStart, selEnd, name); }
    void InsertText(const char* inserted, long length, long offset) override
    {
        text.insert(Within(offset), inserted, length);
        Log("InsertText", std::string(inserted, length), offset);
    }
    void DeleteText(long offset, long length) override
    {
        text.erase(Within(offset), Within(offset + length) - Within(offset));
        Log("DeleteText", offset, length);
    }
    void Select(long start, long end) override
    {
        selectionStart = Within(start);
        selectionEnd = Within(end);
        Log("Select", start, end);
    }
    char* ExpandVariables(const char*, long) override
    {
        char* result = new char[worksheetDirectory.size() + 1];
        std::memcpy(result, worksheetDirectory.c_str(), worksheetDirectory.size() + 1);
        return result;
    }
    void AppendToWorksheet(const char* added, bool a, bool b, bool c) override
    {
        Log("AppendToWorksheet", added, a, b, c);
    }
    void GetCommandShortcut(const char* command, char* key, uint32* modifiers) override
    {
        const auto bound = shortcuts.find(command);
        *key = bound == shortcuts.end() ? 0 : bound->second.first;
        *modifiers = bound == shortcuts.end() ? 0 : bound->second.second;
    }
    BMenuItem* AddMenuItem(BMenu* menu, long index, const char* label, const char* command, char key,
                           uint32 bits) override
    {
        Log("AddMenuItem", index, label, command, static_cast<int>(key), bits);
        if (menu == nullptr)
            return nullptr;
        auto* item = new BMenuItem(label, nullptr, key, bits);
        menu->AddItem(item, index);
        return item;
    }
    void RegisterPreferencePanel(const char* identifier, const char* title, const char* icon) override
    {
        Log("RegisterPreferencePanel", identifier, title, icon);
    }

    BPoint mouse;
    uint32 mouseButtons = 1;
    mutable int pointsAsked = 0; // calls of PointAt

private:
    long Within(long offset) { return std::clamp(offset, 0L, TextLength()); } // as hosts do

    static std::string Word(const char* word) { return word == nullptr ? "(null)" : word; }
    static std::string Word(const std::string& word) { return word; }
    template <class T>
    static std::string Word(T number)
    {
        return std::to_string(number);
    }
    template <class... Words>
    void Log(const char* operation, Words... words)
    {
        std::string line = operation;
        ((line += " " + Word(words)), ...);
        log.push_back(line);
    }
};
