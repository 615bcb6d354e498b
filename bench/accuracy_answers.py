"""What the measured programs answer at the judged places: lists of (path, line), the best answer first."""
import json
import os
import subprocess
import sys

import completion_peers
import release


def relative(root, path):
    path = os.path.realpath(os.path.join(root, path))
    return os.path.relpath(path, root) if path.startswith(root + "/") else path


def each_once(answers):
    return list(dict.fromkeys(answers))


def place_of(root, place):
    return f"{os.path.join(root, place['path'])}:{place['line']}:{place['column']}"


def definitions(root, places, home):
    """wren definition, which makes the index of the package first. All places are asked in one process."""
    given = "".join(place_of(root, place) + "\n" for place in places)
    done = subprocess.run([release.path("wren"), "definition", "--json", "--limit", "1000", "-"], input=given, cwd=root,
                          stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, check=False,
                          env=release.environment(home))
    answers = [json.loads(line).get("answers", []) for line in done.stdout.splitlines()]
    if len(answers) != len(places):
        sys.exit(f"wren definition answered {len(answers)} of {len(places)} questions: {done.stderr}")
    return [each_once((relative(root, answer["path"]), answer["line"]) for answer in found) for found in answers]


def lookups(root, places, home):
    """wren lookup, in tags that wren tags has made with the host's first settings."""
    environment = release.environment(home)
    wren = release.path("wren")
    made = subprocess.run([wren, "tags", root], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                          check=False, env=environment)
    if made.returncode != 0:
        sys.exit(made.stdout)
    found = []
    for place in places:
        lines = subprocess.run([wren, "lookup", place_of(root, place)], cwd=root, stdout=subprocess.PIPE,
                               stderr=subprocess.DEVNULL, text=True, check=False, env=environment).stdout.splitlines()
        # "path:line: item"
        found.append(each_once((relative(root, parts[0]), int(parts[1]))
                               for parts in (line.split(":", 2) for line in lines)))
    return found


def plain_tags(root, cache):
    """Makes the tags of a plain "ctags -R" with line numbers; returns their path."""
    tags = os.path.join(cache, os.path.basename(root) + ".tags")
    subprocess.run(["ctags", "--quiet", "--options=NONE", "-R", "--excmd=number", "--languages=C,C++,ObjectiveC",
                    "-f", tags, root], check=True, env=release.environment())
    return tags


def names_alone(root, places, tags):
    """All tags with the name at the place, in the order of the file."""
    by_name = {}
    with open(tags, encoding="latin-1") as lines:
        for line in lines:
            if line[0] != "!":
                name, path, rest = line.split("\t", 2)
                by_name.setdefault(name, []).append((relative(root, path), int(rest.split(";", 1)[0])))
    return [each_once(by_name.get(place["name"], [])) for place in places]


def vim(root, places, tags):
    """Vim's taglist(), in the order in which :tjump lists tags for the file of the place."""
    asked = [[place["name"], os.path.join(root, place["path"])] for place in places]
    script = ["set nocompatible tagcase=match nomore tags=" + tags.replace("\\", "\\\\").replace(" ", "\\ "),
              f"let asked = {json.dumps(asked)}", "let answers = []", "for [name, path] in asked",
              "  call add(answers, map(taglist('^' . name . '$', path), '[v:val.filename, v:val.cmd]'))", "endfor",
              "call writefile([json_encode(answers)], $TIMES)", "qa!"]
    return [each_once((relative(root, path), int(line)) for path, line in answers)
            for answers in completion_peers.run_vim(script)]
