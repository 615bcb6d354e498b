"""Builds the measured programs with the release preset, and runs them."""
import json
import os
import resource
import shutil
import subprocess
import sys
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
DIRECTORY = os.path.join(ROOT, "build/release")


def need(*names):
    """Ends the run when one of these programs is missing, and says how to install it."""
    if subprocess.run([os.path.join(ROOT, "bench/needs"), *names], check=False).returncode != 0:
        sys.exit(1)


def has_peer(program):
    """Returns whether a peer is installed; prints a message when it is not."""
    there = shutil.which(program) is not None
    if not there:
        print(f"  {program} is not installed, and left out; tools/setup --bench installs it")
    return there


def build(*targets):
    need("cmake")
    for command in (["cmake", "--preset", "release", "-DWREN_TESTS=ON"],
                    ["cmake", "--build", DIRECTORY, "--target", *targets]):
        made = subprocess.run(command, cwd=ROOT, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                              check=False)
        if made.returncode != 0:
            sys.exit(made.stdout)


def path(program):
    return os.path.join(DIRECTORY, program)


def environment(home=None):
    """Returns the environment in the C locale; with a home, also with its cache."""
    own = {} if home is None else {"HOME": home, "XDG_CACHE_HOME": os.path.join(home, "cache")}
    return {**os.environ, "LC_ALL": "C", **own}


def run(program, *words, given=None, home=None):
    """Returns the output of the program, each line parsed as JSON."""
    done = subprocess.run([path(program), *map(str, words)], input=given, stdout=subprocess.PIPE,
                          text=True, check=True, env=environment(home))
    return [json.loads(line) for line in done.stdout.splitlines()]


class Cost:
    """The time that passes in a "with" block, and the processor's time of the programs that end in it, in seconds."""

    def __enter__(self):
        self.clock = time.perf_counter()
        self.processor = self.of_children()
        return self

    def __exit__(self, *error):
        self.clock = time.perf_counter() - self.clock
        self.processor = self.of_children() - self.processor

    @staticmethod
    def of_children():
        used = resource.getrusage(resource.RUSAGE_CHILDREN)
        return used.ru_utime + used.ru_stime


def seconds(command, directory=None, home=None):
    """Returns the time of the whole command; its output and status are ignored."""
    start = time.perf_counter()
    subprocess.run(command, cwd=directory, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL, env=environment(home), check=False)
    return time.perf_counter() - start
