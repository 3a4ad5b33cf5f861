"""Downloads with the sample drivers' own tools: what is shown and counted afterwards, and how the main
window lives on meanwhile."""

import os
import signal
import time
import unittest

from accessibility import STATE_SELECTED
from driver_tools import ToolCase
from main_window import DETAILS, FILE, LARGE_ICONS, LIST

METER = "Meter - Download"
GAUGE = "Tide Gauge - Download"
QUICK = "--seconds 1"
ENDLESS = "--seconds 3600"
MOST_OF_A_PROCESSOR = 0.2


class DownloadingCase(ToolCase):
    def setUp(self):
        super().setUp()
        self.meter = self.install("Meter")
        self.gauge = self.install("Tide Gauge")

    def open_details(self, **options):
        window = self.open_window(**options)
        window.choose_view(DETAILS)
        return window

    def select(self, window, name):
        window.click(window.item(name))
        self.wait_for_equal((True, True), lambda: self.state_of(window, name),
                            f"{name} is selected and has a download")

    def state_of(self, window, name):
        return (STATE_SELECTED in window.item(name).states(),
                window.entry(FILE, "Download").is_enabled())

    def start_download(self, window, folder, title):
        """Downloads from a driver; gives the tool's process and its window, which is in front."""
        self.select(window, folder.name)
        window.choose_entry(FILE, "Download")
        process = self.wait_for_tool(folder)
        tool_window = self.wait_for_window(title)
        self.wait_until_in_front(window.program, tool_window)
        return process, tool_window

    def counts(self, window, name):
        return next(row[1:4] for row in window.rows() if row[0] == name)

    def wait_for_counts(self, window, name, wanted):
        self.wait_for_equal(wanted, lambda: self.counts(window, name), f"the counts of {name}")


class ADownload(DownloadingCase):
    def test_shows_the_newest_file_and_counts_the_new_ones(self):
        self.set_options(self.meter, "Download.EXE", QUICK)
        (self.meter / "Data" / "earlier.csv").write_text("made by a test\n")
        window = self.open_details()
        self.assertEqual(self.counts(window, "Meter"), ("1", "", ""))
        self.select(window, "Meter")
        window.press_in_menu("alt+f", "w")
        self.wait_for_window(METER)
        self.wait_for_counts(window, "Meter", ("2", "1", ""))
        (csv,) = self.meter.glob("Data/Meter *.csv")
        shown = csv.with_suffix(".asc")  # the one that the tool writes last
        self.assertTrue(shown.exists())
        self.file_manager.wait_for_calls([("ShowItems", shown)])
        self.assertEqual(self.state_of(window, "Meter"), (True, True))
        self.close_properly(window)

    def test_of_a_driver_without_a_data_folder_shows_the_file_in_the_folder_that_it_made(self):
        self.set_options(self.gauge, "Download.EXE", QUICK)
        # Of two files in a new folder, nothing could tell which one was written later.
        description = self.gauge / "driver.inf"
        description.write_text(description.read_text().replace("Files=TXT,CSV", "Files=CSV"))
        (self.gauge / "Data").rmdir()
        window = self.open_details()
        self.select(window, "Tide Gauge")
        window.choose_entry(FILE, "Download")
        self.wait_for_counts(window, "Tide Gauge", ("1", "", ""))
        (csv,) = self.gauge.glob("Data/*.csv")
        self.file_manager.wait_for_calls([("ShowItems", csv)])
        self.close_properly(window)

    def test_that_is_cancelled_shows_nothing(self):
        self.set_options(self.meter, "Download.EXE", ENDLESS)
        window = self.open_details()
        (self.meter / "Data" / "earlier.csv").write_text("made by a test\n")
        _, tool_window = self.start_download(window, self.meter, METER)
        self.session.tool("wmctrl", "-i", "-c", str(tool_window))
        self.wait_for_counts(window, "Meter", ("1", "", ""))
        # The next one is alone in being shown.
        self.set_options(self.gauge, "Download.EXE", QUICK)
        self.select(window, "Tide Gauge")
        window.choose_entry(FILE, "Download")
        self.wait_for_counts(window, "Tide Gauge", ("1", "", "1"))
        (shown,) = self.gauge.glob("Data/*.csv")
        self.file_manager.wait_for_calls([("ShowItems", shown)])
        self.close_properly(window)

    def test_whose_tool_is_killed_shows_and_counts_what_was_written(self):
        self.set_options(self.meter, "Download.EXE", ENDLESS)
        window = self.open_details()
        process, _ = self.start_download(window, self.meter, METER)
        part = self.meter / "Data" / "part.csv"
        part.write_text("made by a test\n")
        os.kill(process, signal.SIGKILL)
        self.wait_for_counts(window, "Meter", ("1", "", ""))
        self.file_manager.wait_for_calls([("ShowItems", part)])
        self.assertEqual(self.state_of(window, "Meter"), (True, True))
        self.close_properly(window)

    def test_that_cannot_start_shows_nothing_and_counts(self):
        (self.meter / "Download.EXE").write_text("no program")
        window = self.open_details()
        self.select(window, "Meter")
        (self.meter / "Data" / "new.csv").write_text("made by a test\n")
        window.choose_entry(FILE, "Download")
        self.wait_for_counts(window, "Meter", ("1", "", ""))
        self.assertEqual(self.file_manager.calls(), [])
        self.close_properly(window)


class WhileATransferRuns(DownloadingCase):
    def test_the_main_window_answers(self):
        self.set_options(self.meter, "Download.EXE", ENDLESS)
        window = self.open_details()
        process, tool_window = self.start_download(window, self.meter, METER)
        for view in (LARGE_ICONS, LIST, DETAILS):
            window.choose_view(view)
        (self.gauge / "Data" / "new.csv").write_text("made by a test\n")
        window.refresh()
        self.wait_for_counts(window, "Tide Gauge", ("1", "", ""))
        self.select(window, "Tide Gauge")
        self.assertFalse(window.entry(FILE, "Upload").is_enabled())
        about = window.open_about()
        window.program.close_window(about)
        window.program.wait_until_gone("dialog", "About Tarvo")
        self.come_to_the_front_again(window, tool_window)
        self.assertEqual(self.tools_below(self.meter), [process])
        self.close_behind_the_tool(window)

    def test_the_tool_keeps_coming_to_the_front(self):
        self.set_options(self.meter, "Download.EXE", ENDLESS)
        window = self.open_details()
        _, tool_window = self.start_download(window, self.meter, METER)
        for _ in range(3):
            self.come_to_the_front_again(window, tool_window)
        self.close_behind_the_tool(window)

    def test_waiting_takes_next_to_no_processor_time(self):
        self.set_options(self.meter, "Download.EXE", "--seconds 6")
        window = self.open_details()
        self.start_download(window, self.meter, METER)
        used, begun = self.processor_time(window.program), time.monotonic()
        # Only the table of processes is read meanwhile: questions would keep the program busy.
        self.wait_until_tools_end(self.meter)
        used = self.processor_time(window.program) - used
        passed = time.monotonic() - begun
        self.assertLess(used, MOST_OF_A_PROCESSOR * passed, f"in {passed:.1f} seconds")
        self.wait_for_counts(window, "Meter", ("1", "1", ""))
        self.close_properly(window)

    def processor_time(self, program):
        """Seconds of processor time that the program has used, those of the system included."""
        with open(f"/proc/{program.process.pid}/stat") as file:
            words = file.read().rpartition(")")[2].split()
        return (int(words[11]) + int(words[12])) / os.sysconf("SC_CLK_TCK")

    def test_closing_the_main_window_ends_the_program_and_not_the_tools(self):
        self.set_options(self.meter, "Download.EXE", ENDLESS)
        self.set_options(self.gauge, "Download.EXE", ENDLESS)
        window = self.open_details()
        tools = [self.start_download(window, self.meter, METER)[0],
                 self.start_download(window, self.gauge, GAUGE)[0]]
        self.close_behind_the_tool(window)
        self.assertEqual(sorted(self.tools_below(self.folders.drivers)), sorted(tools))
        self.assertEqual(self.file_manager.calls(), [])
        self.assertEqual(self.folders.settings()["Tarvo_Settings_ViewMode"], str(DETAILS))


class TwoDownloads(DownloadingCase):
    def test_the_first_waits_on_when_the_second_has_ended(self):
        self.set_options(self.meter, "Download.EXE", ENDLESS)
        self.set_options(self.gauge, "Download.EXE", QUICK)
        window = self.open_details()
        meter, meter_window = self.start_download(window, self.meter, METER)
        self.select(window, "Tide Gauge")
        window.choose_entry(FILE, "Download")
        self.wait_for_counts(window, "Tide Gauge", ("1", "", "1"))
        shown = [("ShowItems", next(self.gauge.glob("Data/*.csv")))]
        self.file_manager.wait_for_calls(shown)

        self.select(window, "Meter")
        self.come_to_the_front_again(window, meter_window)
        (self.meter / "Data" / "part.csv").write_text("made by a test\n")
        os.kill(meter, signal.SIGKILL)
        self.wait_for_counts(window, "Meter", ("1", "", ""))
        # The one watch has moved to the second driver and ended with it.
        self.assertEqual(self.file_manager.calls(), shown)
        self.close_properly(window)

    def test_the_first_returns_after_the_second_when_it_has_ended_earlier(self):
        self.set_options(self.meter, "Download.EXE", ENDLESS)
        self.set_options(self.gauge, "Download.EXE", ENDLESS)
        window = self.open_details()
        meter, _ = self.start_download(window, self.meter, METER)
        gauge, gauge_window = self.start_download(window, self.gauge, GAUGE)
        (self.meter / "Data" / "part.csv").write_text("made by a test\n")
        os.kill(meter, signal.SIGKILL)
        self.wait_until_tools_end(self.meter)
        self.select(window, "Meter")
        for _ in range(2):  # turns of the wait
            self.come_to_the_front_again(window, gauge_window)
        self.assertEqual(self.counts(window, "Meter"), ("0", "", ""))

        part = self.gauge / "Data" / "part.csv"
        part.write_text("made by a test\n")
        os.kill(gauge, signal.SIGKILL)
        # Both refresh the item that is selected now.
        self.wait_for_counts(window, "Meter", ("1", "", ""))
        self.file_manager.wait_for_calls([("ShowItems", part)])
        self.assertEqual(self.counts(window, "Tide Gauge"), ("0", "", ""))
        self.close_properly(window)


if __name__ == "__main__":
    unittest.main()
