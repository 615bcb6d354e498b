// The pop-ups beside a document.
#pragma once

// Quits the lookup results, then the completions, if open. The destructor of each clears its global. The symbol entry
// dialog is not a palette and stays. Document thread, no lock held.
void CloseAnyPalettes();
