"""Makes archives with Python's own library. Usage: make_archive.py KIND FILE"""

import sys
import zipfile

kind, path = sys.argv[1:]
with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as archive:
    archive.writestr("driver.inf", "[driver]\r\n")
    if kind == "names":
        for name in ("../a", "/a", "C:\\a"):
            archive.writestr(zipfile.ZipInfo(name), "x")
    elif kind == "many":
        for number in range(70000):
            archive.writestr(zipfile.ZipInfo(f"Data/{number}.txt"), str(number))
    elif kind == "zip64":
        with archive.open("large.txt", "w", force_zip64=True) as member:
            member.write(b"content")
    elif kind == "long-names":
        # More names than any driver has: what is known of members must stay small.
        for number in range(100000):
            archive.writestr(zipfile.ZipInfo(f"{number % 300}/{number:030}"), b"")
    elif kind == "too-many":
        for number in range(131072):
            archive.writestr(zipfile.ZipInfo(str(number)), b"")
    elif kind == "deep":
        for number in range(900):
            archive.writestr(zipfile.ZipInfo(f"{number}/" + "a/" * 2000 + "x"), b"")
    else:
        sys.exit(f"no such kind: {kind}")
