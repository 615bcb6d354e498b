// The names that complete what is typed, read from the tags files themselves.
#pragma once

#include <string>

class StringVector;
class Tags;

// Sets 'out' to the names that begin with the pattern for which 'tags' was made, with their qualifiers, in the order of
// the tags files, each once, at most 'max'; to nothing when neither file can be opened. Closes the files. Any thread.
void FindCandidates(Tags& tags, StringVector& out, size_t max);

// What all candidates begin with, in whole characters: two that differ only in the second byte of a character do not
// share that character.
std::string CommonBeginning(const StringVector& candidates);
