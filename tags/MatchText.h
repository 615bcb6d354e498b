// How matches read in a list.
#pragma once

#include "tags/TagData.h"

#include <string>
#include <vector>

// "class View - view.h", or with the directory "class View : view.h - ~/src/lib". Follows a link to the file's
// directory. 'home' is the directory that is shown as "~/", with a "/" at its end; "" for none.
std::string MatchText(const TagData& match, bool showDirectory, const std::string& home);

// True when two different files among the matches have the same leaf name. All matches of a list then show their
// directories, so that the list reads alike.
bool FileNamesAreAmbiguous(const std::vector<TagData>& matches);

// An order of references by leaf name, byte by byte; those without a name come last.
bool MatchEntryName(const EntryRef* a, const EntryRef* b);

// A directory's path, shortened for display.
std::string MakeDisplayPath(const std::string& path); // with the user's home
std::string MakeDisplayPath(const std::string& path, const std::string& home);
