"""Waiting for a condition, never for a time."""

import time

DEADLINE = 20.0  # seconds; far more than any step takes, even on a busy machine


def wait_until(condition, what, deadline=DEADLINE, interval=0.02):
    """Returns the first true value of condition(); fails after the deadline."""
    end = time.monotonic() + deadline
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise AssertionError(f"waited {deadline:g} seconds in vain until {what}")
        time.sleep(interval)


def wait_for_equal(wanted, actual, what, deadline=DEADLINE):
    """Waits until actual() gives the wanted value; fails telling both."""
    end = time.monotonic() + deadline
    while True:
        value = actual()
        if value == wanted:
            return
        if time.monotonic() > end:
            raise AssertionError(f"{what}: wanted {wanted!r}, still {value!r}")
        time.sleep(0.02)
