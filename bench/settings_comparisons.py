"""Reading and writing one setting, every store opened and closed for each."""

import os

import measuring

_GDBM = "gdbm opened, fetched from and closed"
_KEY_FILE = "`GKeyFile` loaded, asked and freed"
_SQLITE = "SQLite opened, `synchronous = OFF`, one value replaced, closed"


def comparisons(place):
    environment = dict(os.environ, TMPDIR=str(place.data))

    def store(name, count):
        return measuring.in_process(place.programs / "settings_bench", f"{name}/{count}", environment)

    for count in (100, 1000):
        work = f"`GetSetting` of one key among {count:,}"
        for peer, name, target in ((_GDBM, "GdbmFetch", 0.75), (_KEY_FILE, "KeyFileLoad", 0.25)):
            yield measuring.Comparison(work, peer, target, store("GetSetting", count),
                                       store(name, count))
            yield measuring.Comparison(
                f"the settings file with {count:,} settings opened, read once and closed", peer, None,
                store("ReadFile", count), store(name, count))
    yield measuring.Comparison("`SaveSetting` of an existing key among 100, not synced to disk",
                               _SQLITE, 0.25, store("SaveSetting", 100), store("SqliteStore", 100))
