// Measures how long the editor waits for a key stroke that completes, through the plug-in's bundle without a screen.
//
//     key_strokes_bench loaded TAGS ROUNDS    with loaded names; reads prefixes, one per line, from standard input
//     key_strokes_bench loading TAGS PAUSE    while the names load, with PAUSE microseconds between the keys
//
// TAGS are the system's tags. Prints JSON. For each prefix: the microseconds of the event after the key (median, 99th
// percentile, maximum) and the number of shown names. For a load: the number of keys meanwhile, and the slowest one,
// from the key down to the end of its effects.

#include "HeadlessEditor.h"
#include "vetch/app/Loop.h"
#include "vetch/support/FThread.h"
#include "wren/headless/Keyboard.h"
#include "wren/headless/PressKey.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

double MicrosecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::micro>(Clock::now() - start).count();
}

// A prefix with one colon is a selector, and is typed into a message.
std::string TextFor(const std::string& prefix)
{
    const size_t colon = prefix.find(':');
    if (colon == std::string::npos || prefix.compare(colon, 2, "::") == 0)
        return "x = " + prefix;
    return "[x " + std::string(prefix).insert(colon + 1, "y ");
}

class Typist {
public:
    explicit Typist(const std::string& systemTags) : display(&face), editor(face, display)
    {
        editor.Start(systemTags);
        std::string error;
        document = editor.TheHost().Open("/nowhere/a.mm", "", false, &error);
        if (document == nullptr)
            Fail(error);
    }

    // Types the last character of the text; returns the time of the event that the editor sends after the insertion.
    double TypeLast(const std::string& text)
    {
        Prepare(text);
        const std::string key(1, text.back());
        editor.TheHost().RouteKey(*wren::StrokeOf(key, 0));
        wren::ApplyKey(*document, key, 0);
        const auto start = Clock::now();
        editor.TheHost().Events().KeyTyped();
        return MicrosecondsSince(start);
    }

    // The same, with the time of the whole key stroke.
    double StrikeLast(const std::string& text)
    {
        Prepare(text);
        const std::string key(1, text.back());
        const wren::KeyStroke stroke = *wren::StrokeOf(key, 0);
        const auto start = Clock::now();
        wren::PressKey(editor.TheHost(), key, stroke);
        return MicrosecondsSince(start);
    }

    void CloseLists()
    {
        editor.TheHost().Events().Dismissed();
        vetch::Settle();
    }

    size_t CountShown()
    {
        vetch::Settle();
        for (const auto& window : display.Windows())
            if (window.visible && window.list)
                return window.list->items.size();
        return 0;
    }

    void WaitForLoad() { editor.TheHost().WaitForBackground(std::chrono::minutes(10)); }

private:
    void Prepare(const std::string& text)
    {
        vetch::Settle();
        document->SetText(text.substr(0, text.size() - 1));
        document->Select(document->Length(), document->Length());
    }

    BenchFace face;
    vetch::HeadlessDisplay display;
    HeadlessEditor editor;
    wren::Document* document = nullptr;
};

void MeasureLoaded(Typist& typist, long rounds)
{
    typist.TypeLast("str");
    typist.WaitForLoad();
    for (std::string prefix; std::getline(std::cin, prefix);) {
        const std::string text = TextFor(prefix);
        std::vector<double> taken;
        size_t shown = 0;
        for (long round = 0; round < rounds; ++round) {
            // The list opens at every other key stroke; at the others it is refilled.
            if (round % 2 == 0)
                typist.CloseLists();
            taken.push_back(typist.TypeLast(text));
            shown = typist.CountShown();
        }
        std::sort(taken.begin(), taken.end());
        std::printf(R"({"prefix": "%s", "median": %.1f, "p99": %.1f, "worst": %.1f, "shown": %zu})"
                    "\n",
                    prefix.c_str(), taken[rounds / 2], taken[rounds * 99 / 100], taken.back(), shown);
    }
}

// Nobody types without pauses, and the scheduler favours sleepers: a thread that has slept runs as soon as it wakes up,
// and a thread that never sleeps shares its core with the others.
void MeasureLoading(Typist& typist, std::chrono::microseconds pause)
{
    double slowest = 0;
    long strokes = 0;
    do {
        slowest = std::max(slowest, typist.StrikeLast("strto"));
        ++strokes;
        if (pause.count() > 0)
            std::this_thread::sleep_for(pause);
    } while (!vetch::ThreadsAreIdle());
    std::printf(R"({"strokes": %ld, "slowest": %.1f})"
                "\n",
                strokes, slowest);
}

} // namespace

int main(int count, char** words)
{
    const std::string way = count > 1 ? words[1] : "";
    if (way == "loaded" && count == 4) {
        Typist typist(words[2]);
        MeasureLoaded(typist, std::max(1L, std::atol(words[3])));
        return 0;
    }
    if (way == "loading" && count == 4) {
        Typist typist(words[2]);
        MeasureLoading(typist, std::chrono::microseconds(std::max(0L, std::atol(words[3]))));
        return 0;
    }
    std::fputs("usage: key_strokes_bench loaded TAGS ROUNDS, or key_strokes_bench loading TAGS PAUSE\n", stderr);
    return 2;
}
