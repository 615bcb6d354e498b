// A host around the recording plug-in, with its own display and a log of the plug-in's changes.
#pragma once

#include "tests/wren/PluginFixture.h"
#include "vetch/app/Loop.h"
#include "wren/core/Host.h"
#include "wren/script/GridFace.h"
#include "wren/script/ScriptLog.h"

class RecordingFace : public wren::GridFace {
public:
    void OpenMatch(const std::string& path, long line) override { opened.push_back(path + ":" + std::to_string(line)); }
    void Warn(const std::string& text) override { warnings.push_back(text); }

    std::vector<std::string> opened;
    std::vector<std::string> warnings;
};

class HostFixture : public PluginFixture {
protected:
    HostFixture() { vetch::SetDisplay(&display); }
    ~HostFixture() override
    {
        answer = nullptr; // drops references to the test
        host.reset();
        vetch::SetDisplay(nullptr);
    }

    void MakeHost(const std::string& settings = "")
    {
        host = std::make_unique<wren::Host>(*bundle, face, log, settings);
    }
    void StartHost(const std::string& settings = "")
    {
        MakeHost(settings);
        host->Start();
        events.clear();
        log.Take();
    }
    wren::Document& OpenText(const std::string& path, const std::string& text)
    {
        std::string error;
        return *host->Open(path, text, false, &error);
    }

    wren::ScriptLog log;
    vetch::HeadlessDisplay display{&log};
    RecordingFace face;
    std::unique_ptr<wren::Host> host;
};
