#!/usr/bin/env python3
"""Reads a big tags file in its own way, for the tests to compare with.

Usage: expected_matches.py TAGS OUTPUT

Picks 200 patterns that are spread over the file, and writes each with all the tags that it should find, in the file's
order:

    ?<tab>pattern
    =<tab>name<tab>kind<tab>line<tab>file<tab>qualifier

Does nothing when OUTPUT is newer than TAGS and than this program.
"""

import os
import re
import sys

SCOPES = ("class:", "namespace:", "struct:", "union:")
PLAIN, QUALIFIED, SELECTORS, OPERATORS, TEMPLATES = 80, 50, 30, 20, 20


def tags(path, of_missing_files=False):
    """All (name, kind, line, file, qualifier); files that do not exist are left out, unless they are wanted too."""
    exists = {}
    with open(path, encoding="latin-1", newline="\n") as lines:
        for text in lines:
            if text.startswith("!"):
                continue
            if len(text) > 1023:
                sys.exit("a line of this tags file is too long to be read in one piece: " + text[:80])
            fields = re.fullmatch(
                r'([^\t\n]+)\t([^\t\n]+)\t(\d+);"\t([A-Za-z])'
                r'(?:\t((?:class|namespace|struct|union):[^\t\n]+))?\n', text)
            if fields is None:
                sys.exit("not a tag as lookups read it, with a line number and at most a scope: " + text)
            name, file, line, kind, scope = fields.groups()
            if file not in exists:
                exists[file] = of_missing_files or os.path.lexists(re.sub(r"\\(.)", r"\1", file))
            if exists[file]:
                yield name, kind, line, file, qualifier_of(scope or "")


def qualifier_of(scope):
    qualifier = ""
    for token in SCOPES:
        if scope.startswith(token):
            scope = qualifier = scope[len(token):]
    return qualifier


def base(name):
    """The name without template arguments and what is behind them."""
    return re.sub(r"<.*>(:[^>]*)?$", "", name, count=1, flags=re.S)


def split(pattern):
    qualifier, colons, name = pattern.rpartition("::")
    return (qualifier, name) if colons and name else ("", pattern)


def is_selector(name):
    return ":" in name and "::" not in name


def same_scope(wanted, scope):
    if not wanted or base(wanted) == base(scope):
        return True
    inner, outer = scope[-len(wanted):], scope[:-len(wanted)]
    return len(outer) > 2 and outer.endswith("::") and base(inner) == base(wanted)


def spread(names, count):
    if not names:
        sys.exit("the headers of this machine lack a kind of name that is to be looked up (tools/setup --tests)")
    count = min(count, len(names))
    return [names[i * len(names) // count] for i in range(count)]


def pick_patterns(path):
    plain, qualified, selectors, operators, templates = [], [], [], [], []
    last = None
    for name, kind, _, _, qualifier in tags(path):
        if name == last:
            continue
        last = name
        if name.startswith("operator "):
            if "::" not in name:
                operators.append(name)
        elif is_selector(name):
            # Every other selector in the form in the text before its last part is written.
            whole = len(selectors) % 2 == 0
            selectors.append(name if whole else name.split(":")[0] + ":")
        elif ":" not in name:
            plain.append(name)
            if "::" in qualifier and "\t" not in qualifier and not qualifier.endswith(":"):
                # Editors' lookups drop a leading "std::", and would find more with it.
                scopes = qualifier.removeprefix("std::").split("::")[-2:]
                qualified.append("::".join(scopes + [name]))
            if kind in "cs" and "<" not in name:
                templates.append(name + "<int>")
    return (spread(plain, PLAIN) + spread(qualified, QUALIFIED) + spread(selectors, SELECTORS)
            + spread(operators, OPERATORS) + spread(templates, TEMPLATES))


def find(path, patterns):
    """All matches of all patterns in one reading."""
    found = {pattern: [] for pattern in patterns}
    by_base, selectors = {}, []
    for pattern in found:
        scope, name = split(pattern)
        if is_selector(name):
            selectors.append((name, pattern))
        else:
            by_base.setdefault(base(name), []).append((scope, pattern))
    for tag in tags(path):
        name, qualifier = tag[0], tag[4]
        for scope, pattern in by_base.get(base(name), ()):
            if same_scope(scope, qualifier):
                found[pattern].append(tag)
        if ":" in name:
            for start, pattern in selectors:
                if name.startswith(start):
                    found[pattern].append(tag)
    return found


def main(path, output):
    newest = max(os.path.getmtime(path), os.path.getmtime(__file__))
    if os.path.exists(output) and os.path.getmtime(output) > newest:
        return
    found = find(path, pick_patterns(path))
    unfinished = f"{output}.{os.getpid()}"
    with open(unfinished, "w", encoding="latin-1") as out:
        for pattern, matches in found.items():
            print("?", pattern, sep="\t", file=out)
            for match in matches:
                print("=", *match, sep="\t", file=out)
    os.replace(unfinished, output)


if __name__ == "__main__":
    main(*sys.argv[1:])
