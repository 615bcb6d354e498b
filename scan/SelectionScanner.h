// What a user means by the caret or the selection: hands the host's document to the scanners (WordScan, PatternScan,
// CompletionEdit), which read it a character at a time.
//
// Called on the document thread during a call of PluginMain. Offsets and lengths are bytes of the document. Nothing is
// reported to the user: a scanner that finds nothing answers false and has made its output string empty.
#pragma once

#include <string>

class PluginInterface;

// Whether the caret stands right after an identifier (colons count as part of one): where the caret is, where the
// identifier starts and how long it is. All three are 0 when the answer is false.
//
// An identifier that begins the document is reported with start -1 and a length one too great.
bool IsPatternBeforeSelection(PluginInterface* host, long& caret, long& start, long& length);

// The word around a caret or a selection, with the colons in it ("std::string", "setObject:"). False when the selection
// spans lines, is longer than 1024 or holds anything but a piece of one word.
bool ScanForWord(PluginInterface* host, long selStart, long selEnd, std::string& word);

// The full pattern around a caret or a selection: a plain name, a C++ name with its scopes
// ("Outer<int>::Inner::member", without a leading "std::"), or the selector of a message ("setObject:forKey:").
//
// A lookup takes the whole of the name or selector, to the right of the selection too; a completion takes what is to
// the left of the selection's end, where it is being typed. 'start' and 'end' are where the pattern stands in the
// document except for a selector, whose pieces may be scattered: then only their difference, the pattern's length,
// means anything and 'start' may be negative. Both are left alone when the answer is false, so the selection's own
// variables may be passed.
bool ScanForSuggestionPattern(PluginInterface* host, long selStart, long selEnd, long& start, long& end,
                              std::string& pattern, bool forCompletion);

// Puts a chosen completion in place of what has been typed of it at the end of the selection, as one undoable edit. Of
// a C++ name the last component is replaced; of a selector the missing rest is inserted, with a blank behind each inner
// colon and the caret at the first argument. Does nothing when there is no pattern at the caret.
void ReplaceWord(PluginInterface* host, const std::string& completion);
