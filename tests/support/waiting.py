"""Waiting in tests that drive other programs: for something to be seen, and for nothing else.

A wait that is not answered in time fails the test.
"""

import time

PATIENCE = 60  # seconds; far more than any step takes, even with sanitizers on a busy machine


class Failure(Exception):
    pass


def wait_for(what, condition):
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        found = condition()
        if found:
            return found
        time.sleep(0.02)
    raise Failure(f"waited in vain for {what}")
