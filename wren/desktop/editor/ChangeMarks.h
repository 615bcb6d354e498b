// Bars beside the lines that were changed since the text was saved.
#pragma once

#include "wren/desktop/editor/EditorLook.h"
#include "wren/desktop/editor/ViewText.h"

#include <vector>

namespace wren {

// The bars belong to the text, and move with it: another view of it shows the same. GUI thread.
class ChangeMarks {
public:
    explicit ChangeMarks(const ViewText& text); // borrowed

    void SetUp(); // the margin that shows them
    void SetLook(const EditorLook& look);

    // Call it before each change, which inserts or deletes. Of more lines than this the first ones are marked.
    static constexpr long kMostAtOnce = 10'000;
    void Changing(long offset, long length, bool inserts); // bytes
    void Changed(); // call it some time after a change, and before the lines are asked for

    void Forget();                   // the text is as it was saved
    std::vector<long> Lines() const; // from 0

    void Hide(); // for a text that is not compared with its file

private:
    struct Insertion {
        long offset = 0;
        long length = 0; // 0 for none
        bool startedLine = false;
        bool endedLine = false;
    };
    void Mark(long line) const;

    const ViewText& text;
    bool isHidden = false;
    Insertion came; // its lines are not marked yet
};

} // namespace wren
