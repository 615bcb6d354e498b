"""A language server as a client sees it, with the time of each answer."""
import json
import os
import select
import subprocess
import time
import urllib.parse

LANGUAGE_IDS = {".c": "c", ".h": "c", ".cc": "cpp", ".cpp": "cpp", ".m": "objective-c"}
LONGEST_ANSWER = 120  # seconds

CAPABILITIES = {
    "general": {"positionEncodings": ["utf-8", "utf-16"]},
    "offsetEncoding": ["utf-8"],  # clangd's own name for it
    "window": {"workDoneProgress": True},
    "workspace": {"symbol": {"resolveSupport": {"properties": ["location.range"]}}},
    "textDocument": {
        "definition": {"linkSupport": True},
        "declaration": {"linkSupport": True},
        "documentSymbol": {"hierarchicalDocumentSymbolSupport": True},
        "completion": {"completionItem": {"snippetSupport": True, "labelDetailsSupport": True}},
    },
}


class Gone(Exception):
    """The server has ended, or does not answer."""


class Server:
    def __init__(self, command, root, environment, options=None):
        self.root, self.last, self.buffer, self.progress = root, 0, b"", {}
        self.process = subprocess.Popen(command, cwd=root, env=environment, stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.started = time.perf_counter()
        self.capabilities, self.initialized_in = self.ask("initialize", {
            "processId": os.getpid(), "rootUri": self.uri(""), "capabilities": CAPABILITIES,
            "initializationOptions": options or {}})
        self.notify("initialized", {})

    def uri(self, path):
        return "file://" + urllib.parse.quote(os.path.join(self.root, path).rstrip("/"))

    def send(self, message):
        body = json.dumps({"jsonrpc": "2.0", **message}).encode()
        try:
            self.process.stdin.write(b"Content-Length: %d\r\n\r\n" % len(body) + body)
            self.process.stdin.flush()
        except OSError as problem:
            raise Gone(str(problem)) from problem
        return time.perf_counter()

    def notify(self, method, params):
        return self.send({"method": method, "params": params})

    def ask(self, method, params):
        """Returns the result and the seconds from the request's last byte to the answer's last."""
        self.last += 1
        sent = self.send({"id": self.last, "method": method, "params": params})
        while True:
            message, at = self.receive()
            if "method" not in message and message.get("id") == self.last:
                return message.get("result"), at - sent
            self.notice(message)

    def notice(self, message):
        if "id" in message and "method" in message:
            wanted = message.get("params", {}).get("items")
            self.send({"id": message["id"], "result": [None for _ in wanted] if wanted else None})
        elif message.get("method") == "$/progress":
            self.progress[str(message["params"]["token"])] = message["params"]["value"]["kind"]

    def receive(self):
        """Returns a message and when its last byte came."""
        while b"\r\n\r\n" not in self.buffer:
            self.read()
        head, rest = self.buffer.split(b"\r\n\r\n", 1)
        length = next(int(line.split(b":")[1]) for line in head.split(b"\r\n")
                      if line.lower().startswith(b"content-length"))
        self.buffer = b""
        parts, size = [rest], len(rest)
        while size < length:
            self.read()
            parts.append(self.buffer)
            size += len(self.buffer)
            self.buffer = b""
        at = time.perf_counter()
        whole = b"".join(parts)
        self.buffer = whole[length:]
        return json.loads(whole[:length]), at

    def read(self):
        if not select.select([self.process.stdout], [], [], LONGEST_ANSWER)[0]:
            raise Gone("no answer")
        got = os.read(self.process.stdout.fileno(), 1 << 20)
        if not got:
            raise Gone("the server has ended")
        self.buffer += got

    def wait_for_index(self):
        """Waits until the index is current, even if an earlier run has made it."""
        self.ask("workspace/executeCommand", {"command": "wren.index", "arguments": []})
        while any(kind != "end" for kind in self.progress.values()):
            self.notice(self.receive()[0])

    def open(self, path, text):
        self.notify("textDocument/didOpen", {"textDocument": {
            "uri": self.uri(path), "languageId": LANGUAGE_IDS[os.path.splitext(path)[1]], "version": 1, "text": text}})

    def change(self, path, version, line, start, end, text):
        return self.notify("textDocument/didChange", {
            "textDocument": {"uri": self.uri(path), "version": version},
            "contentChanges": [{"range": {"start": {"line": line, "character": start},
                                          "end": {"line": line, "character": end}}, "text": text}]})

    def close(self, path):
        self.notify("textDocument/didClose", {"textDocument": {"uri": self.uri(path)}})

    def at(self, path, line, character, **more):
        return {"textDocument": {"uri": self.uri(path)}, "position": {"line": line, "character": character}, **more}

    def memory(self):
        """Megabytes that no other process shares, in memory or swapped out; without programs that it runs."""
        with open(f"/proc/{self.process.pid}/smaps_rollup", encoding="ascii") as rollup:
            return sum(int(line.split()[1]) for line in rollup
                       if line.startswith(("Private_Dirty:", "Swap:"))) / 1024

    def end(self):
        try:
            self.ask("shutdown", None)
            self.notify("exit", None)
            return self.process.wait(10)
        except (Gone, subprocess.TimeoutExpired):
            self.process.kill()
            return self.process.wait()
