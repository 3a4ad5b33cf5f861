"""What the tests of the whole program have in common."""

import unittest

import session
from main_window import MainWindow
from program import Folders, Program
from waiting import wait_for_equal


class ProgramTestCase(unittest.TestCase):
    """Every test has its own folders; the programs that it starts end with it."""

    maxDiff = None

    def setUp(self):
        self.session = session.shared()
        self.folders = Folders(self.session)
        self.addCleanup(self.folders.remove)

    def start(self, *arguments, **options):
        program = Program(self.session, self.folders, *arguments, **options)
        self.addCleanup(program.stop)
        return program

    def open_window(self, *arguments, **options):
        """Starts the program and waits until its main window has the keyboard."""
        window = MainWindow(self.start(*arguments, **options))
        window.wait_until_active()
        return window

    def wait_for_equal(self, wanted, actual, what):
        wait_for_equal(wanted, actual, what)

    def close_properly(self, window):
        """Closes the main window; the program must end without an error."""
        program = window.program
        program.close_window(window.wait_until_active())
        self.assertEqual(program.wait_for_end(), 0, program.printed())
