"""A running editor on its own X server, driven by keyboard and mouse as by a person.

Everything waits for something to be seen, and for nothing else; a wait that is not answered in time fails the test.
"""

import os
import shutil
import subprocess
import sys
import tempfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../support"))
from waiting import PATIENCE, Failure, wait_for  # noqa: E402


class Screen:
    """An X server, with a window manager or without."""

    def __init__(self, manager, size="1280x800x24"):
        read, write = os.pipe()
        # Without -noreset it restarts when its last client disconnects, and refuses clients meanwhile.
        self.server = subprocess.Popen(["Xvfb", "-noreset", "-displayfd", str(write), "-screen", "0", size,
                                        "-nolisten", "tcp"],
                                       pass_fds=[write], stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as answer:
            number = answer.readline().strip()
        if not number:
            raise Failure("Xvfb did not start")
        # The test has a screen to itself, and no part in the user's session: an editor that ends while Qt still looks
        # for the session's bus leaves Qt's own memory behind.
        self.environment = dict(os.environ, DISPLAY=":" + number, DBUS_SESSION_BUS_ADDRESS="disabled:")
        for variable in ("WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "XDG_CONFIG_HOME", "XDG_STATE_HOME"):
            self.environment.pop(variable, None)
        self.manager = None
        if manager:
            self.manager = subprocess.Popen([manager], env=self.environment, stderr=subprocess.DEVNULL)
            wait_for("the window manager", lambda: "_NET_SUPPORTING_WM_CHECK(WINDOW)" in self.output(
                ["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"]))

    def output(self, words):
        return subprocess.run(words, env=self.environment, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True,
                              check=False).stdout

    def close(self):
        for process in (self.manager, self.server):
            if process is not None:
                process.terminate()
                process.wait()


class Desk:
    """A directory with files and a home, and the editor opened on one of them."""

    def __init__(self, screen, program):
        self.screen = screen
        self.program = program
        self.directory = tempfile.mkdtemp(prefix="wren-desktop-")
        self.home = os.path.join(self.directory, "home")
        os.makedirs(self.home)
        self.editor = None

    def path(self, name):
        return os.path.join(self.directory, name)

    def write(self, name, text):
        os.makedirs(os.path.dirname(self.path(name)), exist_ok=True)
        with open(self.path(name), "w", encoding="utf-8") as file:
            file.write(text)

    def read(self, name):
        try:
            with open(self.path(name), encoding="utf-8") as file:
                return file.read()
        except FileNotFoundError:
            return ""

    def start(self, *places):
        environment = dict(self.screen.environment, HOME=self.home)
        self.editor = subprocess.Popen([self.program, "--no-index", *places], cwd=self.directory, env=environment)
        name = os.path.basename(places[0].split(":")[0])
        self.wait_title(name)
        wait_for("the editor to be the active window", lambda: self.active() == self.window(name))

    def stop(self):
        if self.editor is not None and self.editor.poll() is None:
            self.editor.kill()
            self.editor.wait()
        shutil.rmtree(self.directory, ignore_errors=True)

    def windows(self):
        """Returns the titles of the editor's windows, by window."""
        found = self.screen.output(["xdotool", "search", "--onlyvisible", "--pid", str(self.editor.pid)]).split()
        return {each: self.screen.output(["xdotool", "getwindowname", each]).strip() for each in found}

    def window(self, title):
        """Returns the window whose title begins with this; None when there is none."""
        return next((each for each, name in self.windows().items() if name.startswith(title)), None)

    def active(self):
        return self.screen.output(["xdotool", "getwindowfocus"]).strip()

    def wait_title(self, title):
        return wait_for(f"a window \"{title}\"", lambda: self.window(title))

    def wait_gone(self, title):
        wait_for(f"the window \"{title}\" to go", lambda: not self.window(title))

    def wait_text(self, name, text):
        wait_for(f"\"{text}\" in {name}", lambda: text in self.read(name))

    def key(self, *keys):
        self.screen.output(["xdotool", "key", *keys])

    def type(self, text):
        self.screen.output(["xdotool", "type", "--delay", "20", text])

    def press(self, x, y, button=1, clicks=1, held=None):
        """Clicks at a place on the screen."""
        words = ["xdotool", "mousemove", str(x), str(y)]
        words += ["keydown", held] if held else []
        words += ["click", "--repeat", str(clicks), "--delay", "50", str(button)]
        words += ["keyup", held] if held else []
        self.screen.output(words)

    def frame(self, window):
        """Returns left, top, width and height on the screen."""
        told = self.screen.output(["xwininfo", "-id", window])
        fields = dict(line.strip().rsplit(":", 1) for line in told.splitlines() if ":" in line)
        names = ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")
        return tuple(int(fields[each]) for each in names)

    def wait_end(self):
        """Returns the editor's exit status."""
        try:
            return self.editor.wait(PATIENCE)
        except subprocess.TimeoutExpired as expired:
            raise Failure("the editor did not end") from expired
