// A tree of sources in one text, with the place that is asked about and the places of the answer in it.
#pragma once

#include "symbols/Index.h"
#include "tests/support/SourcesInText.h"
#include "tests/support/TempDirectory.h"
#include "wren/lsp/features/Methods.h"
#include "wren/lsp/protocol/Uri.h"
#include "wren/lsp/session/RequestContext.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace lsp_test {

using wren::lsp::Json;

struct FeatureOptions {
    bool isIndexed = true;
    bool isOpen = true; // the text with the caret
    bool withSystem =
        false; // without an index: headers of the system that a text includes, once a place was asked about
    Json capabilities = Json::object();
    wren::lsp::Settings settings;
};

// "== shape.h\nint «area»();\n== main.cpp\nint x = ar|ea();": '|' is the place, « and » stand around an expected range.
// A text without "==" is a file "a.cpp". In a text with '||', the place is written "<|>". Nothing runs beside a test
// that has no index; with one, it is complete before the first question.
class FeatureFixture {
public:
    explicit FeatureFixture(const std::string& text, FeatureOptions given = {})
        : options(std::move(given)), client(options.capabilities), projects(Listener())
    {
        tree.Write(".wren", "");
        for (const auto& [path, marked] : SourcesInText(text))
            AddFile(path, marked);
        projects.Configure(ProjectOptions(options), {{tree.Path(), options.isIndexed}});
        if (options.isIndexed)
            Update();
        if (options.isOpen && !caretPath.empty())
            Open(caretPath, caretText);
    }

    // The answer to a request at the caret. 'more' are further members of its parameters.
    Json Ask(std::string_view method, const Json& more = Json::object()) const
    {
        Json params = {{"textDocument", {{"uri", UriOf(caretPath)}}}, {"position", caret}};
        params.update(more);
        return Handle(method, params);
    }
    Json Handle(std::string_view method, const Json& params) const
    {
        const wren::lsp::Handler handler = wren::lsp::HandlerOf(method);
        if (handler == nullptr)
            throw std::runtime_error("no such method: " + std::string(method));
        return handler(params, Context());
    }
    // The sentence of a refusal, behind its code: "-32803 ...". "" when the request is answered.
    std::string Refusal(std::string_view method, const Json& more = Json::object()) const
    {
        try {
            Ask(method, more);
        } catch (const wren::lsp::Failure& failure) {
            return std::to_string(static_cast<int>(failure.code)) + " " + failure.what();
        }
        return "";
    }

    wren::lsp::RequestContext Context() const
    {
        return {client, options.settings, documents.All(), projects, cancel, sendPart};
    }

    void Open(const std::string& path, const std::string& text, const std::string& languageId = "")
    {
        wren::lsp::Document document;
        document.uri = UriOf(path);
        document.languageId = languageId.empty() ? LanguageOf(path) : languageId;
        document.text = std::make_shared<const wren::lsp::Text>(text);
        std::string problem;
        const wren::lsp::DocumentPointer opened = documents.Open(std::move(document), problem);
        projects.For(opened->path)->TextChanged(opened->path, AsOpenText(opened));
    }
    void Update() const // makes the index current
    {
        const base::Result<void> result = projects.For(tree / "a")->Refresh({}, cancel);
        ASSERT_TRUE(result) << result.Failure().Message();
    }

    std::string UriOf(const std::string& path) const { return wren::lsp::UriOfPath(tree / path); }

    // The marked ranges: "shape.h:0:4-0:8", lines and UTF-16 units from 0.
    const std::vector<std::string>& Marks() const { return marks; }
    // The same of a Location, a LocationLink, a range in the caret's text, or of each in a list.
    std::vector<std::string> Places(const Json& result) const
    {
        if (!result.is_array())
            return {PlaceOf(result)};
        std::vector<std::string> places;
        for (const Json& each : result)
            places.push_back(PlaceOf(each));
        return places;
    }

    TempDirectory tree;
    mutable base::CancelToken cancel;
    std::function<void(const Json& part)> sendPart;
    wren::lsp::Position caret;
    std::string caretPath;
    std::string caretText;

private:
    static wren::ProjectsOptions ProjectOptions(const FeatureOptions& options)
    {
        wren::ProjectsOptions made;
        static const TempDirectory cache;
        made.cache = cache.Path();
        made.withIndex = options.isIndexed;
        made.withSystem = options.withSystem;
        if (base::Result<tagging::Settings> tagging = symbols::IndexSettings())
            made.tagging = *std::move(tagging);
        return made;
    }
    static wren::IndexListener Listener()
    {
        wren::IndexListener listener;
        listener.begin = [](const std::string&, const std::function<void()>&) { return nullptr; };
        listener.warn = [](const std::string& text) { ADD_FAILURE() << text; };
        return listener;
    }
    static std::string LanguageOf(const std::string& path)
    {
        if (path.ends_with(".c"))
            return "c";
        if (path.ends_with(".m"))
            return "objective-c";
        return path.ends_with(".mm") ? "objective-cpp" : "cpp";
    }

    void AddFile(const std::string& path, const std::string& marked)
    {
        const std::string_view sign = CaretSignIn(marked);
        std::string text;
        std::vector<size_t> ends; // of marks, in turn with their begins
        size_t place = std::string::npos;
        for (size_t at = 0; at < marked.size();) {
            const std::string_view rest = std::string_view(marked).substr(at);
            if (rest.starts_with(sign) && place == std::string::npos) {
                place = text.size();
                at += sign.size();
            } else if (rest.starts_with("«") || rest.starts_with("»")) {
                ends.push_back(text.size());
                at += std::string_view("«").size();
            } else {
                text += marked[at++];
            }
        }
        tree.Write(path, text);
        const wren::lsp::Text lines(text);
        for (size_t i = 0; i + 1 < ends.size(); i += 2)
            marks.push_back(path + ":" + Shown(lines.RangeOf(ends[i], ends[i + 1], client.Encoding())));
        if (place == std::string::npos)
            return;
        caret = lines.PositionOf(place, client.Encoding());
        caretPath = path;
        caretText = text;
    }

    static std::string Shown(const wren::lsp::Range& range)
    {
        return std::to_string(range.start.line) + ":" + std::to_string(range.start.character) + "-" +
               std::to_string(range.end.line) + ":" + std::to_string(range.end.character);
    }
    std::string PlaceOf(const Json& json) const
    {
        const bool isLink = json.contains("targetUri");
        const std::string uri = isLink ? json["targetUri"] : json.value("uri", Json(UriOf(caretPath)));
        const Json& range = isLink ? json["targetSelectionRange"] : json.contains("range") ? json["range"] : json;
        const std::string path = wren::lsp::PathOfUri(uri).value_or(uri);
        const bool isInTree = path.starts_with(tree.Path() + "/");
        return (isInTree ? path.substr(tree.Path().size() + 1) : path) + ":" + Shown(range.get<wren::lsp::Range>());
    }

    const FeatureOptions options;
    const wren::lsp::ClientAbilities client;
    wren::lsp::Documents documents;
    mutable wren::Projects projects;
    std::vector<std::string> marks;
};

} // namespace lsp_test
