"""Commands chosen on an item of the list: by its menu, by the toolbar, by Enter and by double click."""

import unittest

from accessibility import STATE_SELECTED
from dialogs import open_dialogs, texts_of, wait_for_message
from driver_tools import ToolCase
from main_window import DETAILS, FILE, LARGE_ICONS, LIST, SMALL_ICONS
from waiting import wait_until

ADD = "(Add Driver)"
ENDLESS = "--seconds 3600"
TOOLS = {"Download.EXE": ("Download", ("Download", 0)),
         "Upload.EXE": ("Upload", ("Upload", 0)),
         "Properties.EXE": ("Properties...", ("Properties", 1))}
PROPERTIES_WHATEVER_THE_MENU_SAYS = ("Properties", 0)


class ChoosingCase(ToolCase):
    def setUp(self):
        super().setUp()
        self.meter = self.install("Meter")
        for tool in ("Download.EXE", "Upload.EXE"):
            self.set_options(self.meter, tool, ENDLESS)

    def select(self, window, name):
        window.click(window.item(name))
        self.wait_until_selected(window, name)

    def wait_until_selected(self, window, name):
        wait_until(lambda: STATE_SELECTED in window.item(name).states(), f"{name} is selected")

    def right_click(self, window, node):
        window.move_to(node)
        self.session.tool("xdotool", "click", "3")


class TheContextMenu(ChoosingCase):
    def wait_for_menu(self, window):
        """Waits for the menu, a window without a title; gives its X window."""

        def found():
            window.program.must_run()
            return next((other for other in window.program.window_ids()
                         if other != window.window), None)

        return wait_until(found, "the menu can be seen")

    def wait_until_closed(self, window):
        wait_until(lambda: window.program.window_ids() == [window.window], "the menu is closed")

    def bands(self, window, menu):
        """Top and height of each entry in the File menu, which is open, by name."""
        top_of_menu = window.program.inner_geometry(menu)[1]
        places = {entry.name(): entry.extents() for entry in window.entries(FILE)
                  if entry.is_showing()}
        return {name: (top - top_of_menu, height) for name, (_, top, _, height) in places.items()}

    def ink(self, program, menu, bands):
        """How many pixels of each entry are drawn in the picture of a menu."""
        width = program.inner_geometry(menu)[2]
        pixels = self.session.tool_bytes("import", "-window", str(menu), "-colorspace", "Gray",
                                         "-depth", "8", "gray:-")
        return {name: sum(pixel < 220 for pixel in pixels[top * width : (top + height) * width])
                for name, (top, height) in bands.items()}

    def test_is_the_file_menu_with_open_in_bold(self):
        window = self.open_window()
        program = window.program
        self.select(window, "Meter")
        window.click(window.menus()[FILE])
        menu = self.wait_for_menu(window)
        size = program.inner_geometry(menu)[2:]
        bands = self.bands(window, menu)
        self.assertEqual(list(bands), ["Open", "Download", "Upload", "Properties...",
                                       "Install Mobile Driver...", "Delete", "Rename", "Close"])
        wait_until(lambda: all(self.ink(program, menu, bands).values()), "the menu is drawn")
        plain = self.ink(program, menu, bands)
        program.press("Escape", "Escape")
        self.wait_until_closed(window)

        self.right_click(window, window.item("Meter"))
        menu = self.wait_for_menu(window)
        left, top, *size_here = program.inner_geometry(menu)
        self.assertEqual((tuple(size_here), (left, top)), (size, self.pointer()))
        others = {name: dots for name, dots in plain.items() if name != "Open"}
        self.wait_for_equal(others, lambda: {name: dots for name, dots
                                             in self.ink(program, menu, bands).items()
                                             if name != "Open"}, "the ink of the other entries")
        self.assertGreater(self.ink(program, menu, bands)["Open"], 1.15 * plain["Open"])

    def pointer(self):
        shown = self.session.tool("xdotool", "getmouselocation", "--shell")
        place = dict(line.split("=") for line in shown.split())
        return int(place["X"]), int(place["Y"])

    def test_opens_the_driver(self):
        window = self.open_window()
        self.right_click(window, window.item("Meter"))
        self.wait_for_menu(window)
        window.program.press("o")
        self.file_manager.wait_for_calls([("ShowFolders", self.meter / "Data")])
        self.wait_until_closed(window)
        self.close_properly(window)

    def test_over_empty_space_is_that_of_the_selected_driver(self):
        self.folders.add_driver("Other")
        window = self.open_window()
        self.select(window, "Meter")
        self.right_click_empty_space(window)
        self.wait_for_menu(window)
        window.program.press("o")
        self.file_manager.wait_for_calls([("ShowFolders", self.meter / "Data")])
        self.close_properly(window)

    def right_click_empty_space(self, window):
        left, top, width, height = window.list().extents()
        self.session.tool("xdotool", "mousemove", str(left + width - 30), str(top + height - 30),
                          "click", "3")

    def test_does_not_come_without_a_selected_driver(self):
        window = self.open_window()
        window.choose_view(DETAILS)
        # Would a menu be open, the key would move within it and not to the next item.
        self.right_click_empty_space(window)
        self.right_click(window, window.item(ADD))
        self.wait_until_selected(window, ADD)
        window.program.press("Down")
        self.wait_until_selected(window, "Meter")
        self.select(window, ADD)
        self.right_click_empty_space(window)
        window.program.press("Down")
        self.wait_until_selected(window, "Meter")
        self.close_properly(window)


class TheToolbar(ChoosingCase):
    def states(self, window):
        """Of each tool, whether its menu entry and its button can be used."""
        return {tool: (window.entry(FILE, entry).is_enabled(),
                       window.tool_button(*button).is_enabled())
                for tool, (entry, button) in TOOLS.items()}

    def wait_for_tools(self, window, tools):
        wanted = {tool: (tool in tools, tool in tools) for tool in TOOLS}
        self.wait_for_equal(wanted, lambda: self.states(window), "the entries and the buttons")

    def test_can_be_used_as_the_menu_can(self):
        drivers = {"None": ()} | {tool.removesuffix(".EXE"): (tool,) for tool in TOOLS}
        for name, tools in drivers.items():
            self.folders.add_driver(name, *tools)
        drivers["Meter"] = tuple(TOOLS)
        window = self.open_window()
        for name in ("Meter", "None", "Download", "Upload", "Properties", "Meter"):
            with self.subTest(driver=name):
                self.select(window, name)
                self.wait_for_tools(window, drivers[name])
        self.select(window, ADD)
        self.wait_for_tools(window, ())

    def test_starts_each_tool(self):
        window = self.open_window()
        self.select(window, "Meter")
        for tool, (_, button) in TOOLS.items():
            with self.subTest(tool=tool):
                window.click(window.tool_button(*button))
                self.wait_for_window(f"Meter - {tool.removesuffix('.EXE')}")
        self.assertEqual(len(self.tools_below(self.meter)), len(TOOLS))

    def test_has_a_properties_button_that_does_not_look_at_the_menu(self):
        hidden = self.meter / "Properties.EXE"
        hidden = hidden.rename(self.meter / "Later.EXE")
        window = self.open_window()
        self.select(window, "Meter")
        self.wait_for_tools(window, ("Download.EXE", "Upload.EXE"))
        hidden.rename(self.meter / "Properties.EXE")
        window.click(window.tool_button(*PROPERTIES_WHATEVER_THE_MENU_SAYS))
        self.wait_for_window("Meter - Properties")
        self.close_behind_the_tool(window)

    def test_does_nothing_by_buttons_that_a_refresh_has_left_usable(self):
        window = self.open_window()
        self.select(window, "Meter")
        self.wait_for_tools(window, TOOLS)
        window.refresh()
        self.wait_for_equal({tool: (False, True) for tool in TOOLS}, lambda: self.states(window),
                            "the entries and the buttons")
        for button in [button for _, button in TOOLS.values()] + [("Delete", 0)]:
            window.click(window.tool_button(*button))
        # When a later click has been answered, so have these.
        self.select(window, "Meter")
        self.assertEqual((self.tools_below(self.meter), open_dialogs(window.program)), ([], []))
        self.close_properly(window)

    def test_deletes_and_changes_the_view(self):
        window = self.open_window()
        for name, view in (("Details View", DETAILS), ("List View", LIST),
                           ("Small Icon View", SMALL_ICONS), ("Large Icon View", LARGE_ICONS)):
            window.click(window.tool_button(name))
            window.wait_for_view(view)
            self.assertEqual(window.pressed_view_button(), view)
        self.select(window, "Meter")
        window.click(window.tool_button("Delete"))
        self.assertEqual(texts_of(wait_for_message(window.program)), ["Are you sure?"])
        window.program.press("Escape")
        wait_until(lambda: not open_dialogs(window.program), "the question is gone")
        self.close_properly(window)


class OpeningAnItem(ChoosingCase):
    def assert_opens(self, open_item):
        bare = self.folders.add_driver("Two Words", "driver.inf")
        window = self.open_window()
        for view in (LARGE_ICONS, DETAILS):
            window.choose_view(view)
            before = self.file_manager.calls()
            open_item(window, "Meter")
            self.file_manager.wait_for_calls([*before, ("ShowFolders", self.meter / "Data")])
            open_item(window, "Two Words")
            self.file_manager.wait_for_calls([*before, ("ShowFolders", self.meter / "Data"),
                                              ("ShowFolders", bare)])
            open_item(window, ADD)
            window.program.wait_for_active("Add Driver")
            window.program.press("Escape")
            window.wait_until_active()
        self.assertEqual(len(self.file_manager.calls()), 4)
        self.close_properly(window)

    def test_by_enter_shows_its_folder_or_the_add_driver_window(self):
        def enter(window, name):
            self.select(window, name)
            window.program.press("Return")

        self.assert_opens(enter)

    def test_by_double_click_shows_its_folder_or_the_add_driver_window(self):
        self.assert_opens(lambda window, name: window.click(window.item(name), times=2))

    def test_by_the_menu_shows_its_folder_or_the_add_driver_window(self):
        def choose(window, name):
            self.select(window, name)
            window.press_in_menu("alt+f", "o")

        self.assert_opens(choose)


class AToolThatIsNoProgram(ChoosingCase):
    def test_ends_the_program_with_the_standard_message(self):
        (self.meter / "Upload.EXE").write_text("no program")
        window = self.open_window()
        self.select(window, "Meter")
        window.choose_entry(FILE, "Upload")
        message = f"Run-time error '5':\n\n{self.meter / 'Upload.EXE'} is not a program"
        box = wait_for_message(window.program)
        self.assertEqual((box.name(), texts_of(box)), ("Tarvo", [message]))
        window.program.press("Return")
        self.assertEqual(window.program.wait_for_end(), 1)


if __name__ == "__main__":
    unittest.main()
