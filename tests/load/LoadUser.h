// Somebody who does everything that can be done in the editor, in no order and without a pause.
#pragma once

#include "tests/load/Workspace.h"
#include "wren/script/HeadlessStage.h"

#include <map>
#include <string>

class LoadUser {
public:
    LoadUser(wren::HeadlessStage& stage, Workspace& workspace, Random& random); // borrowed

    void Step(); // a few keys, and seldom something else

    // Closes all that is open and waits for what is at work.
    void Rest();

    long Keys() const { return keys; }
    long Lookups() const { return lookups; }

    // How often the plug-in did what the log has names for.
    const std::map<std::string, long>& Deeds() const { return deeds; }

private:
    void TypePhrase(const std::string& phrase);
    void GoToEnd();
    void Type(const std::string& text);
    void Press(const std::string& key, uint32 modifiers = 0);
    void Settle();
    void TakeLog();
    void OpenSomeSource();
    long SomeWord(const wren::Document& document);
    void LookUp();
    void ChooseInWindows();
    void DoSomethingElse();
    void ChangeSetting();
    void ChangeWorld();
    wren::Document& Current();

    wren::HeadlessStage& stage;
    Workspace& workspace;
    Random& random;
    long keys = 0;
    long lookups = 0;
    std::map<std::string, long> deeds;
};
