"""The main window as seen from outside, in whatever language."""

from accessibility import Gone
from waiting import wait_until

COLUMNS = 7
FILE, VIEW, HELP = range(3)  # menus by their place in the menu bar
FIRST_VIEW_ENTRY = 2  # place of "Large Icons" in the View menu, separators not counted
OPTIONS_ENTRY = 8
ABOUT_ENTRY = 2  # place in the Help menu


class MainWindow:
    """The main window of a running program. Made once the window can be seen."""

    def __init__(self, program):
        self.program = program
        self.node = wait_until(self._find, "the main window is there")

    def _find(self):
        self.program.must_run()
        try:
            for frame in self.program.application().children():
                if frame.find("menu bar") and frame.is_showing():
                    return frame
        except Gone:
            pass
        return None

    def wait_until_active(self):
        return self.program.wait_for_active(self.node.name())

    # Menus.

    def menus(self):
        return [node for node in self.node.find("menu bar").children()]

    def entries(self, menu):
        """The entries of a menu, by its place in the menu bar; no separators."""
        popup = self.menus()[menu].children()[0]
        return [node for node in popup.children() if node.role() != "separator"]

    def choose(self, menu, entry):
        """Runs a menu entry without opening the menu."""
        node = self.entries(menu)[entry]
        node.do_action(node.action_names()[0])

    def choose_view(self, mode):
        self.choose(VIEW, FIRST_VIEW_ENTRY + mode)
        wait_until(lambda: self.entries(VIEW)[FIRST_VIEW_ENTRY + mode].is_checked(),
                   "the view is checked in the menu")
