// The editor as its program runs it, with a user who types a text and then sits there: somebody has to end it.
//
//     typing_editor TEXT [arguments of the editor]
#include "tests/desktop/hands/QtKeys.h"
#include "wren/desktop/Arguments.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/Endings.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/editor/CodeView.h"

#include <QApplication>

#include <string>

int main(int count, char** words)
{
    const std::string text = words[1];
    QApplication application(count, words);
    words[1] = words[0];
    int status = 0;
    const std::optional<wren::DesktopArguments> arguments = wren::ParseArguments(count - 1, words + 1, &status);
    if (!arguments)
        return status;
    wren::DesktopOptions options = arguments->options;
    options.understandsNames = false;
    wren::Editor editor(options);
    const wren::Endings endings(editor);
    editor.Show(arguments->places);
    for (const char character : text)
        ClickKey(*editor.Window().Tabs().CurrentView(), std::string(1, character), 0);
    return QApplication::exec();
}
