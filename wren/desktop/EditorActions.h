// What the user can do in the editor, whether a menu, a key or another part asks for it.
#pragma once

#include "wren/desktop/DocumentActions.h"
#include "wren/desktop/FilesActions.h"
#include "wren/desktop/FinderActions.h"
#include "wren/desktop/PlaceActions.h"
#include "wren/desktop/PreferenceActions.h"
#include "wren/desktop/SymbolActions.h"
#include "wren/desktop/TabActions.h"
#include "wren/desktop/TextChooser.h"
#include "wren/desktop/WorksheetActions.h"

namespace wren {

// The Editor owns them, and they live as long as it does. GUI thread.
struct EditorActions {
    DocumentActions& documents;
    TabActions& tabs;
    TextChooser& texts;
    PlaceActions& places;
    WorksheetActions& worksheet;
    PreferenceActions& preferences;
    SymbolActions* symbols; // null where names are not understood
    FinderActions* finder;  // null there as well
    FilesActions* files;    // and this one
};

} // namespace wren
