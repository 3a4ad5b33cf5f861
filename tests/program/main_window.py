"""The main window as seen from outside, in whatever language."""

from accessibility import STATE_FOCUSED, Gone
from waiting import wait_for_equal, wait_until

LARGE_ICONS, SMALL_ICONS, LIST, DETAILS = range(4)
COLUMNS = 7

# Menus by their place in the menu bar, entries by their place in the menu, separators not counted.
FILE, VIEW, HELP = range(3)
CLOSE_ENTRY = -1
FIRST_VIEW_ENTRY = 2
REFRESH_ENTRY = 7
ABOUT_ENTRY = 2

FIRST_VIEW_BUTTON = 2  # place on the toolbar, separators not counted


class MainWindow:
    """The main window of a running program: made once it can be seen."""

    def __init__(self, program):
        self.program = program
        self.node = wait_until(self._find, "the main window can be seen")
        self.window = None  # its X window, known when it has been active

    def _find(self):
        self.program.must_run()
        try:
            for frame in self.program.application().children():
                if frame.is_showing() and frame.find("menu bar"):
                    return frame
        except Gone:
            pass
        return None

    def wait_until_active(self):
        self.window = self.program.wait_for_active(self.node.name())
        return self.window

    # Menus.

    def menus(self):
        return self.node.find("menu bar").children()

    def entries(self, menu):
        """The entries of a menu, hidden ones and separators left out."""
        popup = self.menus()[menu].children()[0]
        return [node for node in popup.children() if node.role() != "separator"]

    def entry(self, menu, name):
        return next(node for node in self.entries(menu) if node.name() == name)

    def choose(self, menu, entry):
        """Runs a menu entry without opening the menu."""
        self._run(self.entries(menu)[entry])

    def choose_entry(self, menu, name):
        """The same for the entry of that name."""
        self._run(self.entry(menu, name))

    def _run(self, node):
        node.do_action(node.action_names()[0])

    def open_menu(self, key):
        self.wait_until_active()
        self.program.press(key)
        wait_until(self._open_menu, "a menu is open")

    def press_and_wait_for_menu_to_close(self, *keys):
        self.program.press(*keys)
        wait_until(lambda: not self.program.is_running() or not self._open_menu(),
                   "the menu is closed")

    def press_in_menu(self, menu_key, *keys):
        """Opens a menu by the keyboard, presses keys in it and waits until it is closed again."""
        self.open_menu(menu_key)
        self.press_and_wait_for_menu_to_close(*keys)

    def press_until_focused(self, key, node):
        """Presses a key again and again until this entry of the open menu is the chosen one."""

        def focused():
            if STATE_FOCUSED in node.states():
                return True
            self.program.press(key)
            return False

        wait_until(focused, "the entry is chosen", interval=0.05)

    def _open_menu(self):
        try:
            return [menu for menu in self.menus() if menu.children()[0].is_showing()]
        except Gone:
            return None

    # Views.

    def choose_view(self, mode):
        self.choose(VIEW, FIRST_VIEW_ENTRY + mode)
        self.wait_for_view(mode)

    def checked_view(self):
        """The view mode that is checked in the menu, and the only one."""
        views = self.entries(VIEW)[FIRST_VIEW_ENTRY : FIRST_VIEW_ENTRY + 4]
        checked = [mode for mode, entry in enumerate(views) if entry.is_checked()]
        return checked[0] if len(checked) == 1 else checked

    def wait_for_view(self, mode):
        wait_for_equal(mode, self.checked_view, "the view checked in the menu")
        wait_until(lambda: self.list().role() == ("tree" if mode == DETAILS else "list"),
                   "the list has the view")

    def refresh(self):
        self.choose(VIEW, REFRESH_ENTRY)

    # The bars.

    def toolbar(self):
        return self.node.find("tool bar")

    def tool_buttons(self):
        """The buttons from left to right; the one that shows what has no room has no name."""
        return [node for node in self.toolbar().children() if node.name()]

    def tool_button(self, name, place=0):
        """The button of that name, counted from 0 among those that share it."""
        return [node for node in self.tool_buttons() if node.name() == name][place]

    def pressed_view_button(self):
        buttons = self.tool_buttons()[FIRST_VIEW_BUTTON : FIRST_VIEW_BUTTON + 4]
        pressed = [mode for mode, button in enumerate(buttons) if button.is_checked()]
        return pressed[0] if len(pressed) == 1 else pressed

    def status_bar(self):
        return self.node.find("status bar")

    # The list.

    def list(self):
        return wait_until(
            lambda: next((node for node in self.node.walk()
                          if node.role() in ("list", "tree") and node.is_showing()), None),
            "the list can be seen")

    def headings(self):
        return [node.name() for node in self.list().children() if node.role() == "column header"]

    def rows(self):
        """The rows of the details view, each a tuple of seven texts."""
        cells = [node.name() for node in self.list().children() if node.role() == "tree item"]
        return [tuple(cells[i : i + COLUMNS]) for i in range(0, len(cells), COLUMNS)]

    def wait_for_rows(self, wanted):
        wait_for_equal(wanted, self.rows, "the rows of the list")

    def items(self):
        """Name and description of each item of the icon and list views."""
        return [(node.name(), node.description()) for node in self.list().children()
                if node.role() == "list item"]

    def item(self, name):
        """The item of that name, in any view."""
        return next(node for node in self.list().children() if node.name() == name)

    def wait_for_list_place(self, top, height):
        wait_for_equal((top, height), lambda: self.list().extents()[1::2],
                       "top and height of the list")

    # Mouse.

    def move_to(self, node):
        left, top, width, height = node.extents()
        self.program.session.tool("xdotool", "mousemove", str(left + width // 2),
                                  str(top + height // 2))

    def click(self, node, times=1):
        self.move_to(node)
        self.program.session.tool("xdotool", "click", "--repeat", str(times), "--delay", "20", "1")

    # Place and size in pixels. Inner is without the frame, outer with it.

    def frame(self):
        return self.program.frame(self.window)

    def outer_bounds(self):
        left, top, width, height = self.program.inner_geometry(self.window)
        before, after, above, below = self.frame()
        return left - before, top - above, width + before + after, height + above + below

    def wait_for_outer_bounds(self, bounds):
        wait_for_equal(bounds, self.outer_bounds, "left, top, width and height of the window")

    def wait_for_outer_width(self, width):
        wait_for_equal(width, lambda: self.outer_bounds()[2], "the width of the window")

    def resize(self, width, height):
        """Sizes the window as dragging its border does, to this inner size."""
        self.program.session.tool("xdotool", "windowsize", str(self.window), str(width),
                                  str(height))

    def wait_for_inner_size(self, width, height):
        wait_for_equal((width, height), lambda: self.program.inner_geometry(self.window)[2:],
                       "the inner size of the window")

    def maximise(self):
        before = self.outer_bounds()
        self.program.session.tool("wmctrl", "-i", "-r", str(self.window), "-b",
                                  "add,maximized_vert,maximized_horz")
        wait_until(lambda: self.outer_bounds()[2] > before[2], "the window is maximised")

    def minimise(self):
        self.program.session.tool("xdotool", "windowminimize", str(self.window))
        wait_until(lambda: "Iconic" in self.program.session.tool(
            "xprop", "-id", str(self.window), "WM_STATE"), "the window is minimised")

    # Other windows.

    def open_about(self):
        """Opens the About window, which must become the active one; gives its X window."""
        self.choose(HELP, ABOUT_ENTRY)
        main = self.window

        def active():
            self.program.must_run()
            other = self.program.active_window()
            return other if other != main and other in self.program.window_ids() else None

        return wait_until(active, "the About window is active")
