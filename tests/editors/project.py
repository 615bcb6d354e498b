"""A small project, an editor that is opened on it with nothing but our settings for it, and the end of both.

Everything waits for something to be seen, and for nothing else; a wait that is not answered in time fails the test.
"""

import ctypes
import json
import os
import shutil
import signal
import subprocess
import sys
import tempfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../support"))
from waiting import PATIENCE, Failure, wait_for  # noqa: E402

# The member "plumage" is named in no other text, so that only an answer of the server can complete it.
FILES = {
    "far.h": "/* How far it is. */\nint Distance(int from, int to);\n\n"
             "struct Bird {\n    int wingspan;\n    int plumage;\n};\n",
    "far.c": '#include "far.h"\n\nint Distance(int from, int to)\n{\n    return to - from;\n}\n\n'
             "int Farthest(void)\n{\n    return Distance(0, 9);\n}\n",
    "near.c": '#include "far.h"\n\nint Twice(struct Bird *bird)\n{\n    return Distance(bird->wingspan, 2);\n}\n',
}

PR_SET_CHILD_SUBREAPER = 36


class Project:
    """A directory with a git work tree "project", a home, and "bin" with the program as "wren"."""

    def __init__(self, wren):
        # What an editor leaves behind becomes a child of ours, and so cannot hide.
        ctypes.CDLL(None).prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)
        self.directory = os.path.realpath(tempfile.mkdtemp(prefix="wren-editors-"))
        self.home = os.path.join(self.directory, "home")
        self.root = os.path.join(self.directory, "project")
        os.makedirs(self.home)
        os.makedirs(os.path.join(self.directory, "bin"))
        self.program = os.path.join(self.directory, "bin/wren")
        os.symlink(os.path.abspath(wren), self.program)
        for name, text in FILES.items():
            self.write(name, text)
        for words in (["init", "-q"], ["add", "."]):
            subprocess.run(["git", *words], cwd=self.root, check=True)

    def environment(self, **more):
        """As of a fresh user: nothing of ours but the language and the place of the program."""
        path = os.path.join(self.directory, "bin") + ":" + os.environ["PATH"]
        kept = {name: value for name, value in os.environ.items() if not name.startswith("XDG_")}
        return {**kept, "HOME": self.home, "PATH": path, "LC_ALL": "C.UTF-8", **more}

    def path(self, name):
        return os.path.join(self.root, name)

    def write(self, name, text):
        os.makedirs(os.path.dirname(self.path(name)), exist_ok=True)
        with open(self.path(name), "w", encoding="utf-8") as file:
            file.write(text)

    def read(self, name):
        with open(self.path(name), encoding="utf-8") as file:
            return file.read()

    def configure(self, source, name):
        """Installs one of our settings files as 'name' in the home directory."""
        target = os.path.join(self.home, name)
        os.makedirs(os.path.dirname(target), exist_ok=True)
        shutil.copyfile(source, target)

    def run(self, words, keeps_input=False, **environment):
        """Runs an editor that is its own user to its end; the answers that it printed.

        They are lines "ANSWER name json". A failure shows all that it printed. With keeps_input, its input does not
        end before it does.
        """
        reader, writer = os.pipe()
        editor = subprocess.Popen(words, cwd=self.root, env=self.environment(**environment), stdin=reader,
                                  stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        os.close(reader)
        if not keeps_input:
            os.close(writer)
        try:
            output = editor.communicate(timeout=2 * PATIENCE)[0]
        except subprocess.TimeoutExpired as expired:
            editor.kill()
            raise Failure(f"the editor did not end; it printed: {expired.stdout}") from expired
        finally:
            if keeps_input:
                os.close(writer)
        if editor.returncode != 0:
            raise Failure(f"the editor ended with {editor.returncode}; it printed:\n{output}")
        lines = [line[line.index("ANSWER "):].split(" ", 2) for line in output.split("\n") if "ANSWER " in line]
        return {name: json.loads(value) for _, name, value in lines}

    def expect_nothing_left(self, *also):
        """Waits for the end of all that the editor started. Each must end with status 0, or one of these.

        A server that ends kills its ctags, and one that is killed leaves it without a reader. What was to become ctags
        when it was killed has the server's name still, and ends as a shell does when it cannot run a program.
        """
        of_ctags = (-signal.SIGKILL, -signal.SIGPIPE)
        if -signal.SIGKILL in also:
            also += (127,)

        def ended():
            try:
                child = os.waitid(os.P_ALL, 0, os.WEXITED | os.WNOHANG | os.WNOWAIT)
            except ChildProcessError:
                return True
            if child is None:
                return False
            with open(f"/proc/{child.si_pid}/comm", encoding="utf-8", errors="replace") as file:
                name = file.read().strip()
            status = os.waitstatus_to_exitcode(os.waitpid(child.si_pid, 0)[1])
            if status and status not in (of_ctags if name.startswith("ctags") else also):
                raise Failure(f"{name}, which the editor started, ended with {status}")
            return False
        wait_for("the end of the server", ended)

    def remove(self):
        shutil.rmtree(self.directory, ignore_errors=True)


def expect_all(answers, expected):
    """Compares what an editor printed; of a text, the expected part must be in it, each word of a list as well."""
    for name, value in expected.items():
        words = value if isinstance(value, list) else [value]
        missing = [word for word in words if word not in str(answers.get(name))]
        if missing:
            raise Failure(f"{name}: {missing} is not in {answers.get(name)!r}")


def main(story, wren, editor):
    """Runs the story with a project; the exit status says whether it held, or 77 that there is no such editor."""
    if shutil.which(editor) is None:
        print(f"skipped: there is no {editor}; tools/setup --tests installs it")
        sys.exit(77)
    project = Project(wren)
    try:
        story(project)
        print("passed")
    except Failure as failure:
        print(f"FAILED: {failure}")
        sys.exit(1)
    finally:
        project.remove()
