#include "plugin/PluginInterface.h"
#include "scan/DocumentText.h"
#include "scan/Predicates.h"
#include "scan/SelectionScanner.h"

namespace {

// A colon belongs to the word wherever it stands: "std::string" and "setObject:" are words, and so is the "b:c" of
// "a ? b:c".
long WordEnd(PluginInterface* pi, long offset)
{
    const long length = pi->TextLength();
    while (offset < length && IsIDCharOrColon(pi->CharAt(offset)))
        ++offset;
    return offset;
}

// Where the word that ends at 'end' starts; a word that begins the document starts at 0.
long WordStart(PluginInterface* pi, long end)
{
    long offset = end - 1; // -1 in front of the document, where the host answers '\0'
    while (IsIDCharOrColon(pi->CharAt(offset))) {
        if (offset == 0)
            return 0;
        --offset;
    }
    return offset + 1;
}

// The same, but a word that begins the document starts at -1. Key handling only compares the starts of the identifier
// before and after a key, and never reads there; so it also takes the empty beginning of a document for an identifier.
long WordStartForKeys(PluginInterface* pi, long end)
{
    for (long offset = end - 1; offset >= 0; --offset)
        if (!IsIDCharOrColon(pi->CharAt(offset)))
            return offset + 1;
    return -1;
}

} // namespace

bool IsPatternBeforeSelection(PluginInterface* pi, long& caret, long& start, long& length)
{
    caret = start = length = 0;
    long selStart = 0, selEnd = 0;
    pi->GetSelection(&selStart, &selEnd);
    // A caret is short and on one line; the host is asked all the same, as for a selection, and its answer counts.
    if (selStart != selEnd || !scan::IsScannable(pi, selStart, selEnd))
        return false;

    const long wordEnd = WordEnd(pi, selEnd);
    const long wordStart = WordStartForKeys(pi, selStart);
    // There is no greatest length: a name of thousands of characters is being typed like any other.
    if (wordStart >= wordEnd || wordStart > selStart || wordEnd > selEnd)
        return false;
    caret = selStart;
    start = wordStart;
    length = wordEnd - wordStart;
    return true;
}

bool ScanForWord(PluginInterface* pi, long selStart, long selEnd, std::string& word)
{
    word.clear();
    if (!scan::IsScannable(pi, selStart, selEnd))
        return false;

    // The word at the selection's end is the one; it must reach back to the start. The selection is limited, the word
    // is not: a generated name is found however long it is.
    const long wordEnd = WordEnd(pi, selEnd);
    const long wordStart = WordStart(pi, selEnd);
    if (wordStart >= wordEnd || wordStart > selStart)
        return false;
    word = scan::TextBetween(pi, wordStart, wordEnd);
    return true;
}
