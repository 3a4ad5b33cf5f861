"""Waiting for a condition, never for a time."""

import time

DEADLINE = 20.0  # seconds; far more than any step takes, even on a busy machine


class NotYet(Exception):
    """What a condition raises that cannot be looked at just now."""


def wait_until(condition, what, deadline=DEADLINE, interval=0.02):
    """Returns the first true value of condition(); fails after the deadline."""
    end = time.monotonic() + deadline
    while True:
        hindrance = None
        try:
            value = condition()
        except NotYet as error:
            value, hindrance = None, error
        if value:
            return value
        if time.monotonic() > end:
            raise AssertionError(f"waited {deadline:g} seconds in vain until {what}") from hindrance
        time.sleep(interval)


def wait_for_equal(wanted, actual, what, deadline=DEADLINE):
    """Waits until actual() gives the wanted value; fails telling both."""
    end = time.monotonic() + deadline
    while True:
        hindrance = None
        try:
            value = actual()
        except NotYet as error:
            value, hindrance = None, error
        if value == wanted and not hindrance:
            return
        if time.monotonic() > end:
            raise AssertionError(f"{what}: wanted {wanted!r}, still {value!r}") from hindrance
        time.sleep(0.02)
