"""How often completion offers the wanted name among its first ten."""
import json
import os

import accuracy_judge
import release

FIRST = 10
WAYS = ["by command", "while typing", "behind an operator", "local"]
PEER_PLACES = 40  # of a package and way: clangd takes a tenth of a second for each


def is_first_part(text, offset):
    """Whether a selector's part is its first: nothing but the receiver is between it and the message's bracket."""
    depth = 0
    for at in range(offset - 1, max(-1, offset - 2000), -1):
        letter = text[at]
        if letter in ")]}":
            depth += 1
        elif letter in "([{":
            if depth == 0:
                return letter == "["
            depth -= 1
        elif depth == 0 and letter == ":":
            return False
    return False


def ways_of(place, text, offset):
    """Returns how many letters of the name are typed, by way."""
    name = place["name"]
    half = (len(name) + 1) // 2
    if place["sort"] == "local":
        return {"local": half}
    if place["sort"] == "selector" and not is_first_part(text, offset):
        return {}
    ways = {"by command": half}
    if len(name) > 2:
        ways["while typing"] = 2
    if place["behind"]:
        ways["behind an operator"] = 0
    return ways


def questions(judged, root):
    """Returns the questions of a package: the rest of the name is cut from the text, and the caret is there."""
    texts, asked = {}, []
    for place in judged["places"]:
        path = place["path"]
        if path not in texts:
            with open(os.path.join(root, path), encoding="latin-1", newline="") as source:
                texts[path] = source.read()
        text = texts[path]
        offset = sum(len(line) for line in text.split("\n")[:place["line"] - 1]) + place["line"] - 1 + \
            place["column"] - 1
        for way, typed in ways_of(place, text, offset).items():
            asked.append({"way": way, "path": path, "offset": offset + typed, "cut": len(place["name"]) - typed,
                          "name": place["name"], "line": place["line"], "column": place["column"] + typed})
    return asked, texts


def is_wanted(candidate, name, language):
    """In Objective-C, a candidate may be a whole selector."""
    return candidate == name or language == "Objective-C" and candidate.split(":", 1)[0] == name


def clangd(judged, root, cache, asked, texts):
    """Returns the names that clangd offers, by question; None for those that are not in its share."""
    count, answers = dict.fromkeys(WAYS, 0), []
    server = accuracy_judge.Judge(root, os.path.join(cache, "clangd"))
    first = next(question["path"] for question in asked if not question["path"].endswith((".h", ".hh", ".hpp")))
    server.wait_for_index(first, judged["language"])
    for question in asked:
        count[question["way"]] += 1
        if count[question["way"]] > PEER_PLACES:
            answers.append(None)
            continue
        path, text = question["path"], texts[question["path"]]
        server.open(path, judged["language"], text[:question["offset"]] + text[question["offset"] + question["cut"]:])
        answer = server.ask("textDocument/completion", {
            "textDocument": {"uri": server.uri(path)},
            "position": {"line": question["line"] - 1, "character": question["column"] - 1}})
        server.close(path)
        items = sorted((answer or {}).get("items", []), key=lambda item: item.get("sortText", item["label"]))
        answers.append(list(dict.fromkeys(item.get("filterText", item["label"]).strip() for item in items))[:FIRST])
    server.end()
    return answers


def clangd_kept(judged, root, cache, asked, texts, seed):
    """As clangd(), but asks once only: what it answers does not depend on our side."""
    kept = os.path.join(cache, "judged", f"{judged['package']}-{seed}-completion.json")
    if os.path.exists(kept):
        with open(kept, encoding="utf-8") as answers:
            return json.load(answers)
    answers = clangd(judged, root, cache, asked, texts)
    with open(kept + ".new", "w", encoding="utf-8") as out:
        json.dump(answers, out)
    os.rename(kept + ".new", kept)
    return answers


class Count:
    """[places, right] by way, for all places and for those of each language."""

    def __init__(self):
        self.by_group = {}

    def add(self, language, way, right):
        for group in ("all", language):
            count = self.by_group.setdefault(group, {each: [0, 0] for each in WAYS})[way]
            count[0] += 1
            count[1] += right


def measure(judged, roots, cache, home, wanted):
    """Returns [places, right] by group and way, of the candidates here and of clangd's; the latter is empty when not
    wanted."""
    found, peers = Count(), Count()
    for one in judged:
        root = roots[one["package"]]
        asked, texts = questions(one, root)
        given = "".join(json.dumps({key: question[key] for key in ("path", "offset", "cut")}) + "\n"
                        for question in asked)
        answers = release.run("resolve_answers", root, FIRST, given=given, home=home)
        missed = []
        for question, answer in zip(asked, answers):
            right = any(is_wanted(name, question["name"], one["language"]) for name in answer["names"])
            found.add(one["language"], question["way"], right)
            if not right:
                missed.append(f"{question['path']}:{question['line']}:{question['column']}\t{question['name']}\t"
                              f"{question['way']}\tgot {answer['names']}\n")
        if wanted.failures:
            with open(os.path.join(wanted.failures, f"completion-{one['package']}.txt"), "w", encoding="utf-8") as out:
                out.writelines(missed)
        if wanted.clangd_completion:
            for question, names in zip(asked, clangd_kept(one, root, cache, asked, texts, wanted.seed)):
                if names is not None:
                    peers.add(one["language"], question["way"],
                              any(is_wanted(name, question["name"], one["language"]) for name in names))
    return found.by_group, peers.by_group
