#!/usr/bin/env python3
"""Completes prefixes from a big tags file in its own way, for the tests to compare with.

Usage: expected_completions.py TAGS COMPLETIONS CANDIDATES

Picks 100 prefixes that are spread over the file: beginnings of names of 3 to 8 characters, some behind scopes or behind
the first piece of a selector. Writes each with the first 200 names that complete it while typing, in the order of
bytes:

    ?<tab>prefix
    =<tab>name

and, to CANDIDATES, every fifth with the first 1000 candidates of the command, in the file's order. Does nothing when
both are newer than TAGS and than this program.
"""

import bisect
import os
import re
import sys

import expected_matches
from expected_matches import base, is_selector, same_scope, split, spread, tags

PLAIN, QUALIFIED, SHORT_SELECTORS, LONG_SELECTORS = 36, 30, 10, 18
COMMON = ["str", "boo", "BOO", "typ", "get", "NSS"]
MOST_TYPED, MOST_CANDIDATES = 200, 1000
LENGTHS = range(3, 9)
IDENTIFIER = re.compile(r"[A-Za-z_][A-Za-z0-9_]*")


def qualifiers_by_name(path):
    names = {}
    for name, _, _, _, qualifier in tags(path, of_missing_files=True):
        names.setdefault(name, set()).add(qualifier)
    return names


def beginnings(names, count):
    """Of pairs of a front and a name: fronts with beginnings of names, as many of each length."""
    picked = []
    for i, length in enumerate(LENGTHS):
        each = count // len(LENGTHS)
        # Different names for each length, and more than necessary: many begin alike.
        names_here = spread([pair for pair in names if len(pair[1]) >= length][i:], 4 * each)
        cut = dict.fromkeys(front + name[:length] for front, name in names_here)
        picked += spread([prefix for prefix in cut if prefix not in COMMON], each)
    return picked


def clean_scopes(qualifiers):
    """The inner two scopes, where they are plain names; editors leave a leading "std::" out, and would find more."""
    for qualifier in sorted(qualifiers):
        scopes = qualifier.removeprefix("std::").split("::")[-2:]
        if all(IDENTIFIER.fullmatch(scope) for scope in scopes):
            yield "::".join(scopes) + "::"


def short_selectors(names):
    """All that have a colon among their first eight characters, cut off behind it or up to there."""
    short = [name for name in names if ":" in name[:8]]
    cut = {name[:8] for name in short} | {name[:name.index(":") + 1] for name in short}
    return sorted(prefix for prefix in cut if len(prefix) in LENGTHS)


def pick_prefixes(by_name):
    names = sorted(by_name)
    plain = [("", name) for name in names if IDENTIFIER.fullmatch(name)]
    qualified = [(scopes, name) for _, name in plain for scopes in clean_scopes(by_name[name])]
    selectors = [name for name in names if is_selector(name) and not name.startswith("operator")]
    pieces = [name.split(":") for name in selectors if name.count(":") > 1]
    prefixes = (COMMON + beginnings(plain, PLAIN) + beginnings(qualified, QUALIFIED)
                + spread(short_selectors(selectors), SHORT_SELECTORS)
                + beginnings([(first + ":", second) for first, second, *_ in pieces], LONG_SELECTORS))
    if len(set(prefixes)) != 100:
        sys.exit(f"the headers of this machine give {len(set(prefixes))} prefixes, not 100 (tools/setup --tests)")
    return prefixes


def joined(qualifier, name):
    return qualifier + "::" + name if qualifier else name


def complete(by_name, names, prefix):
    """What typing offers; 'names' are sorted."""
    scope, beginning = ("", prefix) if is_selector(prefix) else split(prefix)
    found = set()
    for i in range(bisect.bisect_left(names, beginning), len(names)):
        name = names[i]
        if not name.startswith(beginning):
            break
        if scope:
            found.update(joined(qualifier, name) for qualifier in by_name[name] if same_scope(scope, qualifier))
        else:
            found.add(name)
    return sorted(found)[:MOST_TYPED]


def candidates(path, prefixes):
    """What the command offers, for all prefixes in one reading."""
    wanted = [(*split(prefix), prefix, {}) for prefix in prefixes]
    for name, _, _, _, qualifier in tags(path):
        for scope, beginning, _, found in wanted:
            if (name.startswith(beginning) and len(base(name)) >= len(beginning) and len(found) < MOST_CANDIDATES
                    and same_scope(scope, qualifier)):
                found.setdefault(joined(qualifier, name))
    return {prefix: found for _, _, prefix, found in wanted}


def write(path, found):
    unfinished = f"{path}.{os.getpid()}"
    with open(unfinished, "w", encoding="latin-1") as out:
        for prefix, names in found.items():
            print("?", prefix, sep="\t", file=out)
            for name in names:
                print("=", name, sep="\t", file=out)
    os.replace(unfinished, path)


def main(path, completions_path, candidates_path):
    newest = max(map(os.path.getmtime, (path, __file__, expected_matches.__file__)))
    if all(os.path.exists(out) and os.path.getmtime(out) > newest for out in (completions_path, candidates_path)):
        return
    by_name = qualifiers_by_name(path)
    prefixes = pick_prefixes(by_name)
    names = sorted(by_name)
    write(completions_path, {prefix: complete(by_name, names, prefix) for prefix in prefixes})
    write(candidates_path, candidates(path, prefixes[::5]))


if __name__ == "__main__":
    main(*sys.argv[1:])
