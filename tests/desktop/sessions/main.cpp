// Plays a script in front of the desktop editor: takes lines and gives answers as "wren script" does, so that the
// runner of scripted sessions can run either.
#include "tests/desktop/hands/EditorIdle.h"
#include "tests/desktop/sessions/DesktopStage.h"
#include "wren/core/ProgramOutput.h"
#include "wren/script/RunScript.h"
#include "wren/script/ScriptSession.h"

#include <CLI/CLI.hpp>
#include <QApplication>

#include <cstdlib>

int main(int count, char** words)
{
    CLI::App program("Plays a script in front of the desktop editor.");
    CLI::App& script = *program.add_subcommand("script");
    program.require_subcommand(1);
    std::string bundle, home, settings;
    script.add_option("--bundle", bundle)->required();
    script.add_option("--home", home)->required();
    script.add_option("--settings", settings);
    bool guarded = false;
    script.add_flag("--guarded", guarded);
    CLI11_PARSE(program, count, words);

    ::setenv("HOME", home.c_str(), 1);
    wren::ProgramOutput answers;
    const QApplication application(count, words);
    StartPainters();
    DesktopStage stage(bundle, settings, guarded);
    wren::ScriptSession session(stage);
    return wren::AnswerLines(session, answers);
}
