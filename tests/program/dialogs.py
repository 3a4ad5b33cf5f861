"""Message boxes and other windows that come up over the main window."""

from accessibility import STATE_ACTIVE, Gone
from waiting import wait_until

_MESSAGE_BOX = "alert message"
_ROLES = (_MESSAGE_BOX, "dialog", "file chooser")


def open_dialogs(program):
    """The dialogs that can be seen now."""
    try:
        return [node for node in program.application().children()
                if node.role() in _ROLES and node.is_showing()]
    except Gone:
        return []


def wait_for_message(program):
    """Waits for a message box that has the keyboard."""

    def found():
        program.must_run()
        boxes = [node for node in open_dialogs(program) if node.role() == _MESSAGE_BOX]
        return boxes and STATE_ACTIVE in boxes[-1].states() and boxes[-1]

    return wait_until(found, "a message box can be seen")


def texts_of(dialog):
    """The texts of its labels."""
    return [node.name() for node in dialog.walk() if node.role() == "label" and node.name()]


def dismiss_all(program):
    """Escapes from every dialog until none is left."""

    def none_left():
        if not program.is_running() or not open_dialogs(program):
            return True
        program.press("Escape")
        return False

    wait_until(none_left, "no dialog is left", interval=0.1)
