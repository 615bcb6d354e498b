// Finds what the caret or the selection refers to: hands the host's document to the scanners (WordScan, PatternScan,
// CompletionEdit), which read single characters.
//
// Called on the document thread during a call of PluginMain. Offsets and lengths are bytes of the document. Nothing is
// reported to the user: a scanner that finds nothing returns false and empties its output string.
#pragma once

#include <string>

class PluginInterface;

// True when the caret stands right after an identifier (colons count as part of one). Outputs the caret, and the
// identifier's start and length; all three are 0 when false.
//
// An identifier that begins the document has the start -1 and a length one too great.
bool IsPatternBeforeSelection(PluginInterface* host, long& caret, long& start, long& length);

// The word around a caret or a selection, with its colons ("std::string", "setObject:"). False when the selection spans
// lines, exceeds 1024 bytes or is not part of one word.
bool ScanForWord(PluginInterface* host, long selStart, long selEnd, std::string& word);

// The full pattern around a caret or a selection: a plain name, a C++ name with its scopes
// ("Outer<int>::Inner::member", without a leading "std::"), or the selector of a message ("setObject:forKey:").
//
// A lookup takes the whole name or selector, also right of the selection; a completion takes the part left of the
// selection's end, where the user is typing. 'start' and 'end' are the pattern's range in the document. The pieces of a
// selector may be scattered: then only their difference, the pattern's length, counts, and 'start' may be negative.
// Both are unchanged when false, so the selection's own variables may be passed.
bool ScanForSuggestionPattern(PluginInterface* host, long selStart, long selEnd, long& start, long& end,
                              std::string& pattern, bool forCompletion);

// Replaces the typed beginning at the end of the selection with a chosen completion, as one undoable edit. For a C++
// name, replaces the last component. For a selector, inserts the missing rest, with a blank behind each inner colon and
// the caret at the first argument. Does nothing without a pattern at the caret.
void ReplaceWord(PluginInterface* host, const std::string& completion);
