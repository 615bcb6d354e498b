"""Kate on an X server, set up by editors/kate/settings.json and driven by real keys."""

import os
import subprocess

from project import wait_for

SOURCE = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))

# Kate has no keys for these by default; a user chooses them in its settings.
KEYS = """<!DOCTYPE gui>
<gui name="lspclient" version="1">
<ActionProperties scheme="Default">
<Action name="lspclient_find_definition" shortcut="F12"/>
<Action name="lspclient_symbol_info" shortcut="Alt+F12"/>
</ActionProperties>
</gui>
"""


class Kate:
    def __init__(self, project, screen):
        self.project = project
        self.screen = screen
        project.configure(os.path.join(SOURCE, "editors/kate/settings.json"), ".config/kate/lspclient/settings.json")
        keys = os.path.join(project.home, ".local/share/kxmlgui5/lspclient/ui.rc")
        os.makedirs(os.path.dirname(keys))
        with open(keys, "w", encoding="utf-8") as file:
            file.write(KEYS)
        self.record()
        environment = {name: screen.environment[name] for name in ("DISPLAY", "DBUS_SESSION_BUS_ADDRESS")}
        runtime = os.path.join(project.directory, "run")
        os.mkdir(runtime, 0o700)
        self.kate = subprocess.Popen(["kate", "--new", "--line", "5", "--column", "14", "near.c"], cwd=project.root,
                                     env=project.environment(**environment, XDG_RUNTIME_DIR=runtime),
                                     stdin=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def record(self):
        """Keeps what the server says: a tooltip's text cannot be read from the screen."""
        wren = os.readlink(self.project.program)
        self.said = os.path.join(self.project.directory, "said")
        os.unlink(self.project.program)
        with open(self.project.program, "w", encoding="utf-8") as file:
            # -p: Kate may be gone before it has read the last word.
            file.write(f'#!/usr/bin/env bash\nexec "{wren}" "$@" > >(exec tee -p "{self.said}")\n')
        os.chmod(self.project.program, 0o755)

    def wait_said(self, *words):
        def said():
            with open(self.said, encoding="utf-8", errors="replace") as file:
                return any(all(word in line for word in words) for line in file)
        wait_for(f"an answer with {words}", said)

    def titles(self):
        found = self.screen.output(["xdotool", "search", "--onlyvisible", "--pid", str(self.kate.pid)]).split()
        return [self.screen.output(["xdotool", "getwindowname", each]).strip() for each in found]

    def active(self):
        return self.screen.output(["xdotool", "getactivewindow", "getwindowname"]).strip()

    def shows(self, title):
        return any(each.startswith(title) for each in self.titles())

    def key(self, *keys):
        self.screen.output(["xdotool", "key", *keys])

    def type(self, text):
        self.screen.output(["xdotool", "type", "--delay", "20", text])

    def allow_server(self):
        """Kate asks once for each program. A Return too many would be a new line in the text."""
        question = "LSP server start requested"
        wait_for("the question about the server", lambda: self.active().startswith(question))
        self.key("Return")
        wait_for("the end of it", lambda: not self.shows(question))

    def go_to_symbol(self, letters, title):
        """The list of symbols closes at Return, whether or not it has an answer yet."""
        def went():
            self.key("ctrl+alt+p")
            self.type(letters)
            self.key("Return", "Escape")
            return self.shows(title)
        wait_for(f"{title}, which has the symbol {letters}", went)

    def stop(self):
        if self.kate.poll() is None:
            self.kate.kill()
            self.kate.wait()
