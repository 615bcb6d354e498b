// Copies of unsaved texts, for the start after a crash.
#pragma once

#include "wren/desktop/state/CopyWriter.h"
#include "wren/desktop/state/FileMark.h"
#include "wren/text/TextEncoding.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace wren {

// What the user saw of a text.
struct SeenPlace {
    long caret = 0;     // bytes
    long firstLine = 0; // from 0, as CodeView::FirstVisibleLine()
};

struct UnsavedText {
    std::string path; // "" for a text without a file
    std::string text;
    std::string savedAt; // for a person: date and time of the copy
    std::string file;    // where the copy is
    FileMark was;        // what the text was made from
    SeenPlace seen;      // may lie beyond the text's end
    TextEncoding encoding;
    bool isOld = false; // the file's text before a save that was interrupted: the file is torn
};

// Every running editor has a directory of its own below StateDirectory()/recovery, with a lock that dies with it. A
// copy is a line of JSON that names the document, and then the text. Not thread-safe.
class Recovery {
public:
    // The problem is why the copy could not be written, without a path; "" for none.
    using OnKept = std::function<void(long document, const std::string& problem)>;

    // Without a state directory, or locks in it, it keeps nothing, and Problem() says so, until Retry(). 'onKept' is
    // called on the thread that writes.
    explicit Recovery(OnKept onKept = {});
    ~Recovery(); // removes its copies: a regular end has asked about every unsaved text

    // Done soon, on another thread. A copy replaces the last one by rename.
    void Keep(long document, const std::string& path, std::string text, const FileMark& was = {},
              const SeenPlace& seen = {}, const TextEncoding& encoding = {});
    void Forget(long document);
    void Finish();                                            // returns when all copies are written
    bool Holds(long document, const std::string& text) const; // true when a copy of that text is on the disk

    const std::string& Problem() const { return problem; } // the reason why no copies can be kept; "" when they can
    static std::string Place();                            // where they are kept; "" for nowhere

    // Retries when there is no directory to keep copies in, or it was removed. True when there is a new directory: the
    // texts have to be kept once more.
    bool Retry();

    // The texts that ended editors have left, the oldest first, also those of files that they were writing
    // (LeftOverwritten). Reading removes no text that is needed; Discard() does. A damaged copy is skipped and stays.
    std::vector<UnsavedText> Left() const;
    void Discard(const UnsavedText& text);

private:
    struct Own;
    void Begin();

    std::unique_ptr<Own> own;
    std::string problem;
    CopyWriter writer;
};

} // namespace wren
