"""Measures how long peers take to complete a prefix: Vim in the same tags file, clangd in a small source."""
import json
import os
import statistics
import subprocess
import tempfile
import time

import release


def run_vim(script):
    """Returns the JSON that the Vim script has written to $TIMES."""
    with tempfile.TemporaryDirectory() as directory:
        path, times = os.path.join(directory, "script.vim"), os.path.join(directory, "times")
        with open(path, "w", encoding="utf-8") as out:
            out.write("\n".join(script) + "\n")
        subprocess.run(["vim", "-u", "NONE", "-i", "NONE", "-es", "--not-a-term", "-S", path], cwd=directory,
                       env={**os.environ, "TIMES": times}, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL, check=False)
        with open(times, encoding="utf-8") as lines:
            return json.load(lines)


def vim(tags, prefixes, rounds=5):
    """Returns the median milliseconds of getcompletion() by prefix; None when Vim is not installed."""
    if not release.has_peer("vim"):
        return None
    script = ["set nocompatible tagcase=match tags=" + tags.replace("\\", "\\\\").replace(" ", "\\ "), "let times = []",
              f"for prefix in {json.dumps(prefixes)}", "  let taken = []", f"  for round in range({rounds})",
              "    let start = reltime()", "    call getcompletion(prefix, 'tag')",
              "    call add(taken, reltimefloat(reltime(start)))", "  endfor",
               "  call add(times, sort(taken, 'f'))", "endfor",
              "call writefile([json_encode(times)], $TIMES)", "qa!"]
    return {prefix: taken[rounds // 2] * 1000 for prefix, taken in zip(prefixes, run_vim(script))}


SOURCE = """#include <string>
#include <vector>
int main()
{
    std::vector<std::string> strings;
    std::str
}
"""


class Clangd:
    """A conversation with a language server."""

    def __init__(self, directory, *options, environment=None):
        self.process = subprocess.Popen(["clangd", "--log=error", *options], cwd=directory, env=environment,
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.last = 0

    def send(self, method, params, wants_answer=True):
        message = {"jsonrpc": "2.0", "method": method, "params": params}
        if wants_answer:
            self.last += 1
            message["id"] = self.last
        self.write(message)

    def write(self, message):
        body = json.dumps(message).encode()
        self.process.stdin.write(b"Content-Length: %d\r\n\r\n" % len(body) + body)
        self.process.stdin.flush()

    def receive(self):
        length = 0
        for header in iter(self.process.stdout.readline, b"\r\n"):
            if not header:
                raise EOFError("clangd has ended")
            if header.lower().startswith(b"content-length:"):
                length = int(header.split(b":")[1])
        message = json.loads(self.process.stdout.read(length))
        if "id" in message and "method" in message:
            self.write({"jsonrpc": "2.0", "id": message["id"], "result": None})  # the server asks, and waits
        return message

    def notice(self, message):
        """Called with each message that is not the awaited answer."""

    def ask(self, method, params):
        self.send(method, params)
        while True:
            message = self.receive()
            if message.get("id") == self.last and "method" not in message:
                return message.get("result")
            self.notice(message)

    def end(self):
        self.ask("shutdown", None)
        self.send("exit", None, wants_answer=False)
        self.process.wait()


def clangd(rounds=20):
    """Returns the median milliseconds of a completion of "std::str"; None when clangd is not installed."""
    if not release.has_peer("clangd"):
        return None
    with tempfile.TemporaryDirectory() as directory:
        uri = "file://" + os.path.join(directory, "a.cpp")
        server = Clangd(directory, "--background-index=0")
        server.ask("initialize", {"processId": None, "rootUri": "file://" + directory, "capabilities": {}})
        server.send("initialized", {}, wants_answer=False)
        server.send("textDocument/didOpen", {"textDocument": {"uri": uri, "languageId": "cpp", "version": 1,
                                                              "text": SOURCE}},
                    wants_answer=False)
        while server.receive().get("method") != "textDocument/publishDiagnostics":
            continue  # until the source has been read
        place = {"textDocument": {"uri": uri}, "position": {"line": 5, "character": 12}}
        taken = []
        for _ in range(rounds + 1):
            start = time.perf_counter()
            items = server.ask("textDocument/completion", place)
            taken.append((time.perf_counter() - start) * 1000)
        if not items or not items["items"]:
            raise RuntimeError("clangd completes nothing")
        server.end()
        return statistics.median(taken[1:])
