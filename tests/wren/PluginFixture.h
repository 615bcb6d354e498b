// Shared by tests of the host: the loaded recording plug-in, and a home directory for the test.
#pragma once

#include "plugin/PluginInterface.h"
#include "tests/support/TempDirectory.h"
#include "tests/wren/bundles/RecordingPlugin.h"
#include "wren/core/Event.h"
#include "wren/core/PluginBundle.h"

#include <cstdlib>
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

class PluginFixture : public ::testing::Test {
protected:
    PluginFixture()
    {
        ::setenv("HOME", home.Path().c_str(), 1);
        const std::string directory = std::string(TEST_BUNDLES) + "/Recording.bundle";
        std::string error;
        bundle = wren::PluginBundle::Load(directory, &error);
        EXPECT_NE(bundle, nullptr) << error;
        void* library = ::dlopen((directory + "/Contents/Linux/Declaration").c_str(), RTLD_NOW | RTLD_NOLOAD);
        plugin = reinterpret_cast<RecordingPlugin* (*)()>(::dlsym(library, "TheRecordingPlugin"))();
        ::dlclose(library);
        plugin->main = [this](long event, PluginInterface* record) {
            events.push_back(event);
            return answer ? answer(event, record) : 0L;
        };
    }
    ~PluginFixture() override { plugin->main = nullptr; }

    // The events since the last call.
    std::vector<long> TakeEvents() { return std::exchange(events, {}); }

    TempDirectory home;
    std::unique_ptr<wren::PluginBundle> bundle;
    RecordingPlugin* plugin = nullptr;
    std::vector<long> events;
    std::function<long(long event, PluginInterface* record)> answer; // the reaction, after the event is recorded
};
