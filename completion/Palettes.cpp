#include "completion/Palettes.h"

#include "completion/CompletionWindow.h"
#include "windows/SearchWindow.h"

void CloseAnyPalettes()
{
    if (SearchWindow* results = SearchWindow::gSearchWin)
        results->Quit();
    if (CompletionWindow* completions = CompletionWindow::gCompletionWindow)
        completions->Quit();
}
