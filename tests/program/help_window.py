"""The help window as seen from outside, in whatever language."""

from accessibility import STATE_FOCUSED, Gone
from waiting import wait_for_equal, wait_until

CONTENTS_TAB, SEARCH_TAB = range(2)


class HelpWindow:
    """The help window of a running program: made once it has the keyboard."""

    def __init__(self, program, title):
        self.program = program
        self.window = program.wait_for_active(title)
        self.node = wait_until(lambda: self._find(title), "the help window can be read")

    def _find(self, title):
        try:
            return next((node for node in self.program.application().children()
                         if node.name() == title and node.is_showing()), None)
        except Gone:
            return None

    def is_shown(self):
        return self.window in self.program.window_ids()

    # The pages on the left.

    def wait_for_tab(self, tab):
        """Waits until the page is the one that can be seen."""
        role = "tree" if tab == CONTENTS_TAB else "list"
        wait_until(lambda: self.node.find(role).is_showing(), f"the page with the {role} is shown")

    def topics(self):
        return [node.name() for node in self.node.find("tree").children()
                if node.role() == "tree item"]

    def keyword_field(self):
        return self.node.find("text")

    def keywords(self):
        """The lines of the index."""
        return [node.name() for node in self.node.find("list").children()]

    def wait_for_focus(self, node, what):
        wait_until(lambda: STATE_FOCUSED in node.states(), f"{what} has the keyboard")

    def type(self, text):
        self.program.session.tool("xdotool", "type", "--delay", "1", text)

    # The topic on the right.

    def page(self):
        return next(node for node in self.node.walk()
                    if node.role() == "label" and "EditableText" in node.interfaces())

    def topic(self):
        return self.page().name()

    def text(self):
        return self.page().text()

    def wait_for_topic(self, title):
        wait_for_equal(title, self.topic, "the topic that is shown")
