#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-2.0-or-later
"""Makes the documents beside this script: one content, by two makers (Python and libplist), in both forms."""
import datetime
import pathlib
import plistlib
import subprocess

here = pathlib.Path(__file__).parent
content = {
    "array": [1, "two", [], {}, [[True]], {"deep": ["x"]}],
    "blob": bytes(range(100)),
    "date": datetime.datetime(2024, 2, 29, 23, 59, 58),
    "empty": "",
    "false": False,
    "integer": -(2**40),
    "key & <key>": "a < b & c > d",
    "nested": {"empty": {}, "list": []},
    "real": 2.25,
    "true": True,
    "words": "h\u00e4\u00df\u00ee\u65e5\u672c\U0001f600",
}
for form, kind in (("xml", plistlib.FMT_XML), ("binary", plistlib.FMT_BINARY)):
    (here / f"python-{form}.plist").write_bytes(plistlib.dumps(content, fmt=kind))
    subprocess.run(["plistutil", "-f", {"xml": "xml", "binary": "bin"}[form], "-i", here / "python-xml.plist",
                    "-o", here / f"libplist-{form}.plist"], check=True)
