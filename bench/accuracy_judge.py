"""clangd as the judge of what the name at a place means."""
import bisect
import json
import os
import random
import re
import subprocess
import time
import urllib.parse

import accuracy_places
import accuracy_sources
import completion_peers

FILES = 60  # of a package, drawn by lot
PLACES, LOCALS = 250, 60  # of a package; locals are counted apart
LANGUAGE_IDS = {"C": "c", "C++": "cpp", "Objective-C": "objective-c"}
COMPILERS_OWN = re.compile("^/usr/lib/(llvm-[^/]*|clang|gcc)/")  # size_t: each compiler has headers of its own
LOCAL_TYPES = ("variable", "parameter", "function", "typeParameter", "class", "type", "enum", "enumMember")


class Judge(completion_peers.Clangd):
    """clangd in the root of a package, with its index of all the package's sources."""

    def __init__(self, root, cache):
        super().__init__(root, "--background-index", "-j=1", "--limit-results=0", "--header-insertion=never",
                         environment={**os.environ, "XDG_CACHE_HOME": cache})
        self.root, self.indexed, self.working = root, False, False
        answer = self.ask("initialize", {
            "processId": None, "rootUri": "file://" + root, "offsetEncoding": ["utf-8"],
            "capabilities": {"offsetEncoding": ["utf-8"], "window": {"workDoneProgress": True},
                             "textDocument": {"declaration": {"linkSupport": False},
                                              "definition": {"linkSupport": False}}}})
        legend = answer["capabilities"]["semanticTokensProvider"]["legend"]
        self.types, self.modifiers = legend["tokenTypes"], legend["tokenModifiers"]
        self.send("initialized", {}, wants_answer=False)

    def notice(self, message):
        """Sees what is not an answer."""
        if message.get("method") == "$/progress" and message["params"]["token"] == "backgroundIndexProgress":
            kind = message["params"]["value"]["kind"]
            self.working = kind != "end"
            self.indexed |= kind == "end"

    def wait_for_index(self, path, language):
        """The index starts with the first open file."""
        self.open(path, language)
        while not self.indexed or self.working:
            self.notice(self.receive())
        self.close(path)

    def uri(self, path):
        return "file://" + urllib.parse.quote(os.path.join(self.root, path))

    def open(self, path, language, text=None):
        if text is None:
            with open(os.path.join(self.root, path), encoding="utf-8", errors="replace") as source:
                text = source.read()
        self.send("textDocument/didOpen", {"textDocument": {"uri": self.uri(path), "languageId": LANGUAGE_IDS[language],
                                                            "version": 1, "text": text}}, wants_answer=False)

    def close(self, path):
        self.send("textDocument/didClose", {"textDocument": {"uri": self.uri(path)}}, wants_answer=False)

    def kinds(self, path):
        """Returns (type, modifiers) by (line, column)."""
        data = (self.ask("textDocument/semanticTokens/full", {"textDocument": {"uri": self.uri(path)}}) or
                {}).get("data", [])
        line = column = 0
        found = {}
        for at in range(0, len(data), 5):
            down, right, _, kind, bits = data[at:at + 5]
            column = right if down else column + right
            line += down
            found[line, column] = (self.types[kind],
                                   {name for bit, name in enumerate(self.modifiers) if bits >> bit & 1})
        return found

    def meanings(self, path, occurrence):
        """Returns the set of (path, line, column) of the definition and the declaration, from 0; None when the place
        itself is one of them."""
        found = set()
        for method in ("definition", "declaration"):
            answer = self.ask("textDocument/" + method, {
                "textDocument": {"uri": self.uri(path)},
                "position": {"line": occurrence.line, "character": occurrence.column}})
            for location in answer or []:
                start, end = location["range"]["start"], location["range"]["end"]
                target = os.path.realpath(urllib.parse.unquote(location["uri"].removeprefix("file://")))
                if target.startswith(self.root + "/"):
                    target = os.path.relpath(target, self.root)
                if target == path and start["line"] == occurrence.line and \
                        start["character"] <= occurrence.column < max(end["character"], start["character"] + 1):
                    return None
                found.add((target, start["line"], start["character"]))
        return found


def sort_of(kind, text, occurrence, language):
    """Returns the row of the tables that a place counts in; None for a namespace, which has no one declaration."""
    of, modifiers = kind
    if of == "namespace":
        return None
    if "functionScope" in modifiers and of in LOCAL_TYPES:
        return "local"
    if of == "macro":
        return "macro"
    operator = accuracy_places.before(text, occurrence.offset)
    if of == "method" and language == "Objective-C" and not operator:
        return "selector"
    if operator in (".", "->"):
        return "member"
    if operator == "::":
        return "qualified"
    if of in ("function", "method") and accuracy_places.is_called(text, occurrence.offset, occurrence.name):
        return "call"
    if of in ("class", "type", "enum", "interface", "typeParameter", "concept"):
        return "type"
    return "other"


def judge_place(server, path, text, kinds, occurrence, language):
    """Returns the place with what is right there, or why it is left out."""
    targets = server.meanings(path, occurrence)
    if targets is None:
        return "declaration"
    if not targets:
        return "unknown"
    if all(COMPILERS_OWN.search(target) for target, _, _ in targets):
        return "compiler"
    # clangd guesses by the name alone what it has not understood: the arguments of some macros, branches that are not
    # compiled. Such names have no kind.
    kind = kinds.get((occurrence.line, occurrence.column))
    if kind is None:
        return "guessed"
    sort = sort_of(kind, text, occurrence, language)
    if sort is None:
        return "namespace"
    return {"path": path, "line": occurrence.line + 1, "column": occurrence.column + 1, "name": occurrence.name,
            "sort": sort, "behind": accuracy_places.before(text, occurrence.offset),
            "right": sorted({(target, line + 1) for target, line, _ in targets}),
            "system": all(os.path.isabs(target) for target, _, _ in targets)}


def draw_files(root, package, draw):
    """Returns the files of the sample, more likely the larger ones, with their texts and occurrences."""
    weighted = []
    for path in accuracy_sources.sources(root, package):
        with open(os.path.join(root, path), encoding="latin-1", newline="") as source:
            text = source.read()
        if not text.isascii():
            continue  # columns of characters and of bytes are the same in the others
        found = accuracy_places.occurrences(text)
        if found:
            weighted.append((draw.random() ** (1 / len(found)), path, text, found))
    return [entry[1:] for entry in sorted(weighted, reverse=True)[:FILES]]


def judge(cache, root, package, seed):
    """Returns what clangd says about places drawn by lot, from the cache when it was asked before."""
    kept = os.path.join(cache, "judged", f"{package.name}-{seed}.json")
    if os.path.exists(kept):
        with open(kept, encoding="utf-8") as judged:
            return json.load(judged)
    draw = random.Random(f"{package.name} {seed}")
    files = draw_files(root, package, draw)
    ends, total = [], 0
    for _, _, found in files:
        total += len(found)
        ends.append(total)
    order = draw.sample(range(total), min(total, 5 * (PLACES + LOCALS)))
    drawn = {}
    for rank, number in enumerate(order):
        file = bisect.bisect_right(ends, number)
        drawn.setdefault(file, []).append((rank, files[file][2][number - ends[file]]))
    start = time.monotonic()
    server = Judge(root, os.path.join(cache, "clangd"))
    server.wait_for_index(next(path for path, _, _ in files if not path.endswith((".h", ".hh", ".hpp"))),
                          package.language)
    places, left_out = [], {"unknown": 0, "declaration": 0, "namespace": 0, "compiler": 0, "guessed": 0}
    for number, inner in drawn.items():
        path, text, _ = files[number]
        server.open(path, package.language)
        kinds = server.kinds(path)
        for rank, occurrence in inner:
            outcome = judge_place(server, path, text, kinds, occurrence, package.language)
            if isinstance(outcome, str):
                left_out[outcome] += 1
            else:
                places.append({"rank": rank, **outcome})
        server.close(path)
    server.end()
    places.sort(key=lambda place: place["rank"])
    result = {"package": package.name, "language": package.language, "left_out": left_out,
              "seconds": round(time.monotonic() - start),
              "places": [place for place in places if place["sort"] != "local"][:PLACES] +
              [place for place in places if place["sort"] == "local"][:LOCALS]}
    os.makedirs(os.path.dirname(kept), exist_ok=True)
    with open(kept + ".new", "w", encoding="utf-8") as out:
        json.dump(result, out, indent=1)
    os.rename(kept + ".new", kept)
    return result


def version():
    said = subprocess.run(["clangd", "--version"], stdout=subprocess.PIPE, text=True, check=False).stdout
    return said.splitlines()[0] if said else ""
