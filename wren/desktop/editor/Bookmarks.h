// Lines that the user has marked to come back to. They move with the text.
#pragma once

#include "wren/desktop/editor/EditorLook.h"
#include "wren/desktop/editor/ViewText.h"

#include <optional>
#include <vector>

namespace wren {

enum class BookmarkCommand { Toggle, Next, Previous, RemoveAll };

// Lines count from 0, as Scintilla counts them. GUI thread.
namespace bookmarks {

constexpr int kMarker = 0; // of Scintilla; the folds' margin shows it
constexpr size_t kMost = 1000;

void SetUp(const ViewText& text);
void SetLook(const ViewText& text, const EditorLook& look);

void Toggle(const ViewText& text); // the caret's line
std::vector<long> Lines(const ViewText& text);
void SetLines(const ViewText& text, const std::vector<long>& lines); // those that the text has, instead of all others

// From the caret's line on, and past the end from the beginning. Absent when no line is marked.
std::optional<long> Next(const ViewText& text, bool backwards);

} // namespace bookmarks

} // namespace wren
