#include "wren/cli/Complete.h"

#include "base/Identifier.h"
#include "vetch/app/Loop.h"
#include "vetch/support/ThreadStart.h"
#include "wren/headless/Keyboard.h"
#include "wren/headless/PressKey.h"

#include <cctype>
#include <chrono>

namespace wren {

namespace {

using Outcome = CompleteResult::Outcome;

// A list shows that many candidates; its last item then only says that there are more.
constexpr size_t kMostCandidates = 200;

size_t BeginOfName(const std::string& text, size_t offset)
{
    while (offset > 0 && base::IsIdentifierCharacter(text[offset - 1]))
        --offset;
    return offset;
}

size_t EndOfName(const std::string& text, size_t offset)
{
    while (offset < text.size() && base::IsIdentifierCharacter(text[offset]))
        ++offset;
    return offset;
}

class CompleteSession {
public:
    CompleteSession() : display(&face), editor(face, display) {}

    CompleteResult Ask(const CompleteOptions& options)
    {
        CompleteResult result;
        if (!editor.Start(options.editor, &result.error))
            return result;
        Document* document = editor.OpenAt(options.place, WithoutColumn::LineEnd, &result.error);
        if (document == nullptr)
            return result;
        result.directory = DirectoryOf(*document);
        if (options.whileTyping)
            AskByTyping(*document, result);
        else
            AskByCommand(*document, result);
        if (FoundNothing(result) && vetch::ThreadsWereRefused()) {
            result.outcome = Outcome::Unusable;
            result.error = "the candidates cannot be listed without another thread";
        }
        return result;
    }

private:
    static bool FoundNothing(const CompleteResult& result)
    {
        return result.outcome == Outcome::NoCompletion || result.outcome == Outcome::NoWord;
    }

    void AskByCommand(const Document& document, CompleteResult& result)
    {
        const std::string before = document.Text();
        const long caret = document.Selected().end;
        RunCommand();
        if (face.WasAsked())
            result.outcome = Outcome::NoTags;
        else if (document.Text() != before)
            ReadEdit(document, caret, document.Length() - static_cast<long>(before.size()), result);
        else if (!ReadList(result))
            result.outcome = display.Beeps() > 0 || face.WasEdited() ? Outcome::NoCompletion : Outcome::NoWord;
    }

    void AskByTyping(Document& document, CompleteResult& result)
    {
        // The first key stroke that would complete has the names loaded instead.
        TypeLastCharacterAgain(document);
        while (!editor.TheHost().WaitForBackground(std::chrono::minutes(1)))
            continue;
        TypeLastCharacterAgain(document);
        if (ReadList(result))
            return;
        // While typing nobody is told that there are no tags files; by command the user is.
        RunCommand();
        result.outcome = face.WasAsked() ? Outcome::NoTags : Outcome::NoCompletion;
    }

    void RunCommand()
    {
        editor.TheHost().Events().Command("SymbolCompletion");
        vetch::Settle();
    }

    void TypeLastCharacterAgain(Document& document)
    {
        const long caret = document.Selected().end;
        const std::string before = document.Text();
        Press("backspace");
        const long start = document.Selected().end;
        if (start < caret)
            Press(before.substr(start, caret - start));
    }

    void Press(const std::string& key)
    {
        PressKey(editor.TheHost(), key, *StrokeOf(key, 0));
        vetch::Settle();
    }

    // 'added' bytes have come in before the caret, where an edit ends.
    static void ReadEdit(const Document& document, long caret, long added, CompleteResult& result)
    {
        const std::string& text = document.Text();
        const long end = caret + added;
        const long start = document.LineStart(document.LineAt(end));
        result.word = WordAround(text, std::min(caret, end), end);
        result.line = text.substr(start, document.LineEnd(document.LineAt(end)) - start);
        result.outcome = Outcome::Inserted;
    }

    // False when no list is to be seen.
    bool ReadList(CompleteResult& result)
    {
        for (const vetch::HeadlessDisplay::WindowState& window : display.Windows()) {
            if (!window.visible || !window.list)
                continue;
            result.candidates = window.list->items;
            result.more = result.candidates.size() > kMostCandidates;
            if (result.more)
                result.candidates.resize(kMostCandidates);
            result.outcome = Outcome::Offered;
            return true;
        }
        return false;
    }

    AskedFace face;
    vetch::HeadlessDisplay display;
    AskedEditor editor;
};

} // namespace

CompleteResult Complete(const CompleteOptions& options)
{
    return CompleteSession().Ask(options);
}

std::string WordAround(const std::string& text, size_t start, size_t end)
{
    start = BeginOfName(text, start);
    while (start > 2 && text.compare(start - 2, 2, "::") == 0 && base::IsIdentifierCharacter(text[start - 3]))
        start = BeginOfName(text, start - 2);
    if (end > 0 && base::IsIdentifierCharacter(text[end - 1]))
        end = EndOfName(text, end);
    return text.substr(start, end - start);
}

} // namespace wren
