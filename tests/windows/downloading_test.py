"""Downloads with the sample drivers' own tools for Windows, from the program for Windows and from that
for Linux."""

import unittest

from waiting import wait_until
from windows_case import METER, WindowsCase
from wine import DEADLINE

TITLE = "Meter - Download"
OPTIONS = "TARVO_SAMPLE_TOOL_OPTIONS"


class ADownload(WindowsCase):
    def setUp(self):
        super().setUp()
        self.meter = self.install(METER)

    def start_download(self, options):
        run = self.open_window(**{OPTIONS: options})
        (self.meter / "Data" / "earlier.txt").write_text("made by a test\n")
        run.select("Meter")
        run.choose("alt+f", "w")
        self.wait_for_window(TITLE)
        return run

    def counts(self, run):
        return run.rows()[-1][1:4]

    # Wine does not hand the keyboard of the display on from one program to another: who is in front is
    # asked of Wine itself.
    def wait_until_in_front(self, title):
        self.wait_for_equal(title, self.wine.title_in_front, "the window in front")

    def put_in_front(self, title):
        """As the user does it; the tool may be back soon."""

        def done():
            for window in (TITLE, title):
                self.session.tool("wmctrl", "-F", "-a", window)
            return self.wine.title_in_front() == title

        wait_until(done, f'"{title}" is in front', DEADLINE)

    def test_comes_to_the_front_again_and_counts_and_shows_its_files_at_the_end(self):
        run = self.start_download("--seconds 20")
        self.wait_until_in_front(TITLE)
        self.keep_picture("downloading")
        self.put_in_front("Tarvo")
        self.wait_until_in_front(TITLE)
        self.assertEqual(self.counts(run), ("0", "", ""))
        self.wait_for_equal(("1", "1", "1"), lambda: self.counts(run), "the counts")
        names = sorted(path.suffix for path in (self.meter / "Data").iterdir())
        self.assertEqual(names, [".asc", ".csv", ".txt"])
        (shown,) = self.meter.glob("Data/*.asc")  # the one that the tool writes last
        call = f"explorer /SELECT,{self.wine.windows_path(shown)}"
        self.wait_for_equal([call], self.wine.explorer_calls, "what the file manager shows")
        self.keep_picture("downloaded")
        self.close_properly(run)

    def test_that_is_cancelled_writes_and_shows_nothing(self):
        run = self.start_download("--seconds 3600")
        self.close(TITLE)
        self.wait_for_equal(("0", "", "1"), lambda: self.counts(run), "the counts")
        self.close_properly(run)
        self.assertEqual(self.wine.explorer_calls(), [])

    def test_that_fails_stays_with_the_reason_until_it_is_closed(self):
        run = self.start_download("--seconds 0 --fail")
        lost = "The connection to the device was lost."
        self.wait_for_equal([lost], lambda: [
            control["text"] for window in self.wine.windows("Download.EXE")
            for control in window["controls"] if control["class"] == "Static"], "the reason")
        self.wait_until_in_front(TITLE)
        self.session.tool("xdotool", "key", "Return")
        self.wait_for_equal(["Tarvo"], self.titles, "the windows")
        self.assertEqual([path.name for path in (self.meter / "Data").iterdir()], ["earlier.txt"])
        self.close_properly(run)


if __name__ == "__main__":
    unittest.main()
