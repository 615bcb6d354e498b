// Runs a program as a user's shell would, and keeps its output.
#pragma once

#include "tests/support/TempDirectory.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

struct ProgramRun {
    int status = -1; // the exit status; -1 when a signal ended it
    std::string output;
    std::string errors;
    int signal = 0; // the signal that ended it
};

// A program that runs while the test continues.
class RunningProgram {
public:
    // 'changes' apply to the environment; an empty value removes the variable. The program runs in 'directory'. Its
    // output goes to the descriptor 'output', if any.
    RunningProgram(const std::vector<std::string>& words, const std::string& directory,
                   const std::map<std::string, std::string>& changes = {}, int output = -1)
    {
        process = ::fork();
        if (process != 0)
            return;
        const auto redirect = [](const std::string& path, int flags, int to) {
            ::dup2(::open(path.c_str(), flags, 0600), to);
        };
        redirect("/dev/null", O_RDONLY, STDIN_FILENO);
        if (output >= 0)
            ::dup2(output, STDOUT_FILENO);
        else
            redirect(Output(), O_WRONLY | O_CREAT, STDOUT_FILENO);
        redirect(Errors(), O_WRONLY | O_CREAT, STDERR_FILENO);
        for (const auto& [name, value] : changes)
            value.empty() ? ::unsetenv(name.c_str()) : ::setenv(name.c_str(), value.c_str(), 1);
        std::vector<char*> arguments;
        for (const std::string& word : words)
            arguments.push_back(const_cast<char*>(word.c_str()));
        arguments.push_back(nullptr);
        if (::chdir(directory.c_str()) == 0)
            ::execv(arguments[0], arguments.data());
        ::_exit(127);
    }
    ~RunningProgram()
    {
        if (process <= 0)
            return;
        ::kill(process, SIGKILL);
        Wait();
    }
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    pid_t Process() const { return process; }

    ProgramRun Wait() // call it once
    {
        int status = 0;
        while (::waitpid(process, &status, 0) < 0 && errno == EINTR)
            continue;
        process = 0;
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, Content(Output()), Content(Errors()),
                WIFSIGNALED(status) ? WTERMSIG(status) : 0};
    }

private:
    static std::string Content(const std::string& path)
    {
        std::ostringstream text;
        text << std::ifstream(path, std::ios::binary).rdbuf();
        return text.str();
    }
    std::string Output() const { return files / "output"; }
    std::string Errors() const { return files / "errors"; }

    const TempDirectory files;
    pid_t process = 0;
};

inline ProgramRun RunProgram(const std::vector<std::string>& words, const std::string& directory,
                             const std::map<std::string, std::string>& changes = {})
{
    return RunningProgram(words, directory, changes).Wait();
}
