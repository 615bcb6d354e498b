// The pop-ups that stand open beside a document.
#pragma once

// Quits the lookup results, then the completions, where they are open. Each clears its own global when it is destroyed;
// the symbol entry dialog is no palette and stays. Document thread, no lock held.
void CloseAnyPalettes();
