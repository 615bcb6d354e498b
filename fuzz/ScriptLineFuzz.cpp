// Plays any lines as a script, with the whole plug-in. Each line is answered, a refused line says why and changes
// nothing, and the document stays consistent.
//
// A script may name files and run commands. Here all paths are inside a temporary directory, and no command runs.
#include "fuzz/Lines.h"
#include "fuzz/Require.h"
#include "tests/support/TempDirectory.h"
#include "vetch/app/Modifiers.h"
#include "vetch/support/ShellCommand.h"
#include "vetch/support/ShellEscape.h"
#include "wren/core/Event.h"
#include "wren/core/PluginBundle.h"
#include "wren/script/HeadlessStage.h"
#include "wren/script/ScriptSession.h"
#include "wren/script/StateJson.h"

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <unistd.h>

namespace {

using wren::Document;
using wren::Json;

constexpr size_t kMostLines = 20;

const char kTags[] = "Outer\ta.h\t1;\"\tc\n"
                     "inner\ta.h\t2;\"\tm\tclass:Outer\n"
                     "insertObject:atIndex:\ta.h\t3;\"\tm\tclass:Outer\n"
                     "operator <\ta.h\t4;\"\tf\n"
                     "outermost\ta.h\t5;\"\tf\n"
                     "outermost\tb.h\t5;\"\tf\n";

const char* const kDefaults[] = {"DeclOptionClickToFindDeclaration on", "DeclCtrlOptionClickToFindDefinition on",
                                 "DeclAutomaticallyRebuild on", "DeclAutoComplete on"};

std::string Inside(std::string path, const std::string& directory)
{
    ReplaceAll(path, "..", "__");
    return path.starts_with("/") && !path.starts_with(directory) ? directory + path : path;
}

// Any text that might be taken for a path, anywhere in the line.
void KeepInside(Json& value, const std::string& directory)
{
    if (value.is_string())
        value = Inside(value.get<std::string>(), directory);
    else if (value.is_structured())
        for (Json& each : value)
            KeepInside(each, directory);
}

class Player {
public:
    Player()
    {
        ::setenv("HOME", files.Path().c_str(), 1);
        ::setenv("XDG_CACHE_HOME", (files / "cache").c_str(), 1);
        files.Write("Library/Caches/SystemHeaderTags", kTags);
        files.Write("tags", kTags);
        files.Write("a.h", "class Outer {\n    int inner;\n};\n");
        Require(::chdir(files.Path().c_str()) == 0, "there is a directory to be in");
        vetch::SetShellRunner([](const char*, const vetch::ShellRequest&) { return 0; });
        std::string error;
        bundle = wren::PluginBundle::Load(BUNDLE, &error);
        Require(bundle != nullptr, error.c_str());
        stage = std::make_unique<wren::HeadlessStage>(*bundle, "");
        session = std::make_unique<wren::ScriptSession>(*stage);
    }
    ~Player()
    {
        session.reset();
        stage.reset();
    }

    void Play(const std::string& line)
    {
        Json object = Json::parse(line, nullptr, false);
        if (IsTooMuch(object))
            return;
        KeepInside(object, files.Path());
        Wait();
        const Json before = State();
        const Json answer = session->Answer(object.is_discarded() ? line : object.dump());
        Wait();
        answer.dump(); // throws for invalid UTF-8
        Require(answer.at("log").is_array() && answer.at("ok").is_boolean(), "a line is answered");
        Require(!object.is_object() || !object.contains("id") || answer.at("id") == object["id"],
                "an answer has its line's id");
        if (answer["ok"] == false) {
            Require(answer.at("error").is_string(), "a line that is refused says why");
            Require(State() == before, "a line that is refused changes nothing");
        }
        RequireOrder();
    }

    // Everything that the next script could notice.
    void CleanUp()
    {
        for (const auto& window : stage->Windows())
            stage->Close(window.number);
        Wait();
        for (Document* document : Host().AllDocuments().All())
            Host().Close(*document);
        for (const char* line : kDefaults)
            Host().Events().SettingsCommand(wren::SplitAtBlanks(line));
        Host().Commands().Bind("SymbolCompletion", {'.', B_CONTROL_KEY});
        stage->SetInputPending(false);
        stage->SetScreen({0, 0, 1280, 800});
        Wait();
        stage->Log().Take();
    }

private:
    wren::Host& Host() { return stage->TheHost(); }

    // Lines that wait for a time limit, and lines that unload the plug-in, after which nothing is left to test.
    static bool IsTooMuch(const Json& object)
    {
        return object.is_object() && ((object.contains("do") && object["do"] == "settle") ||
                                      (object.contains("event") && object["event"] == wren::Event::kUnload));
    }

    void Wait() { Require(Host().WaitForBackground(std::chrono::seconds(20)), "the background comes to rest"); }
    Json State() { return wren::StateJson(Host(), stage->Windows()); }

    void RequireOrder()
    {
        for (const Document* document : Host().AllDocuments().All()) {
            const auto selected = document->Selected();
            Require(0 <= selected.start && selected.start <= selected.end && selected.end <= document->Length(),
                    "the selection is in the text");
        }
    }

    TempDirectory files;
    std::unique_ptr<wren::PluginBundle> bundle;
    std::unique_ptr<wren::HeadlessStage> stage;
    std::unique_ptr<wren::ScriptSession> session;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static Player player;
    const std::vector<std::string> lines = Split(data, size, '\n');
    if (lines.size() > kMostLines)
        return 0;
    for (const std::string& line : lines)
        player.Play(line);
    player.CleanUp();
    return 0;
}
