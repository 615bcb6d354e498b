// Writers that put pairs of files into a store, and readers that check them: a pair changes in one step, so both of its
// files always tell the same generation.
#pragma once

#include "symbols/store/Store.h"

#include <string>

// One source with a symbol "NAME_of" in a scope that says the generation.
tagging::ParsedSource SourceOf(const std::string& name, unsigned generation);

// Puts the pair of 'name' with growing generations, 1 to 'last', a commit each. Returns what went wrong, "" for
// nothing.
std::string WriteGenerations(symbols::Store& store, const std::string& name, unsigned last);

// The generation of the pair in this state, 0 when there is none; what is wrong goes to 'error'.
unsigned GenerationIn(const symbols::Snapshot& snapshot, const std::string& name, std::string& error);

// Lets two threads write the pairs "one" and "other" of the store at this place up to the last generation, while others
// read them. Half of the readers share a store with the first writer. Returns what went wrong, "" for nothing.
std::string ShareStoreBetweenThreads(const std::string& place, int readers, unsigned last);

// Reads the pairs of both names until they have the last generation. Returns what went wrong, "" for nothing.
std::string ReadGenerations(const symbols::Store& store, const std::string& one, const std::string& other,
                            unsigned last);
