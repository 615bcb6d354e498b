// Clients that send more than the server can work off.
#include "Require.h"
#include "Stories.h"
#include "tests/lsp/load/LoadClient.h"

#include <algorithm>

using Json = nlohmann::json;

std::string Functions(int count)
{
    std::string text;
    for (int number = 0; number < count; ++number)
        text += "int function" + std::to_string(number) + "(int a, int b) { return a + b; }\n";
    return text;
}

Json SymbolsOf(LoadClient& client, const std::string& uri)
{
    return client.Ask("textDocument/documentSymbol", {{"textDocument", {{"uri", uri}}}});
}

// A program that writes into a text: all changes come at once, and nothing is asked meanwhile.
void FloodOfChanges(int changes)
{
    constexpr int kLines = 1000;
    const TempDirectory directory;
    LoadClient client(directory);
    client.Begin();
    const std::string uri = client.Uri("flood.c");
    client.Open(uri, Functions(kLines));
    long before = 0;
    for (int change = 0; change < changes; ++change) {
        client.Replace(uri, change + 2, change % kLines, "int changed" + std::to_string(change) + "(void);");
        if (change != changes / 4)
            continue;
        SymbolsOf(client, uri);
        before = client.Memory();
    }
    const Json symbols = SymbolsOf(client, uri);
    Require(symbols.size() == kLines, "each line has its symbol");
    const Json last = symbols[static_cast<size_t>((changes - 1) % kLines)];
    Require(last["name"] == "changed" + std::to_string(changes - 1), "the last state counts");
    RequireGrowth("memory", before, client.Memory(), 8192);
    Require(client.End() == 0, "the server ends in good order");
}

// Files that change all the time, as in a build that makes sources.
void FloodOfFiles(int changes)
{
    const TempDirectory directory;
    LoadClient client(directory);
    directory.Write("tree/made.c", Functions(10));
    client.Begin();
    client.Ask("workspace/executeCommand", {{"command", "wren.index"}});
    const Json change = {{"uri", client.Uri("made.c")}, {"type", 2}};
    const long before = client.PeakMemory();
    for (int number = 0; number < changes; ++number)
        client.Tell("workspace/didChangeWatchedFiles", {{"changes", Json::array({change})}});
    directory.Write("tree/made.c", "int behind_all(void) { return 1; }\n");
    client.Ask("workspace/executeCommand", {{"command", "wren.index"}});
    Require(client.Ask("workspace/symbol", {{"query", "behind_all"}}).size() == 1, "the last state is found");
    RequireGrowth("the most memory", before, client.PeakMemory(), 8192);
    Require(client.End() == 0, "the server ends in good order");
}

// A client that announces new settings all the time, and never says which.
void FloodOfConfigurations(int changes)
{
    const TempDirectory directory;
    LoadClient client(directory);
    client.Begin({{"workspace", {{"configuration", true}}}});
    const long before = client.PeakMemory();
    for (int number = 0; number < changes; ++number)
        client.Tell("workspace/didChangeConfiguration", {{"settings", nullptr}});
    client.Ask("workspace/executeCommand", {{"command", "wren.status"}});
    RequireGrowth("the most memory", before, client.PeakMemory(), 8192);
    Require(client.End() == 0, "the server ends in good order");
}

// The text of each of many windows; each calls a function of the next one.
void ManyTexts(int changes)
{
    const int texts = std::max(20, changes / 100);
    const TempDirectory directory;
    LoadClient client(directory);
    client.Begin();
    const auto uri = [&](int text) { return client.Uri("text" + std::to_string(text) + ".c"); };
    const auto content = [&](int text) {
        return "int of" + std::to_string(text) + "(void);\nint user" + std::to_string(text) + "(void) { return of" +
               std::to_string((text + 1) % texts) + "(); }\n" + Functions(50);
    };
    for (int text = 0; text < texts; ++text)
        client.Open(uri(text), content(text));
    for (int text = 0; text < texts; text += std::max(1, texts / 20)) {
        const std::string call = content(text).substr(content(text).find('\n') + 1);
        const Json place = {{"line", 1}, {"character", call.find("return of") + 8}};
        const Json found =
            client.Ask("textDocument/definition", {{"textDocument", {{"uri", uri(text)}}}, {"position", place}});
        Require(found.size() == 1 && found[0]["uri"] == uri((text + 1) % texts), "a name leads to another text");
    }
    const long before = client.Memory();
    for (int change = 0; change < changes / 10; ++change)
        client.Replace(uri(change % texts), change + 2, 0, "int of" + std::to_string(change % texts) + "(void);");
    Require(SymbolsOf(client, uri(0)).size() == 52, "the symbols of one text");
    RequireGrowth("memory", before, client.Memory(), 16384);
    for (int text = 0; text < texts; ++text)
        client.Tell("textDocument/didClose", {{"textDocument", {{"uri", uri(text)}}}});
    Require(client.End() == 0, "the server ends in good order");
}
