#!/usr/bin/env python3
"""docs/known-surprises.md names the surprises that users meet first.

The page is written from tools/defining_values.txt; this holds that file to
listing these unit types as differing from their definitions, each with a
defining value and a source, the key lb as read otherwise, and two display
names as kept. A change to the data that drops one of them fails here.

  check_surprises.py docs/known-surprises.md
"""

import sys

# Unit types whose factor differs from today's definition.
FACTORS = {
    0x5029: "dalton", 0x502A: "kilodalton", 0x4042: "cubic nautical mile",
    0x4056: "hogshead (imperial)", 0x2030: "span", 0x501E: "carat",
    0x13005: "British thermal unit (ISO)", 0x1300E: "electronvolt", 0xE004: "faraday",
    0x29003: "kilobyte", 0x29004: "megabyte", 0x29005: "gigabyte", 0x29006: "terabyte",
    0x2900E: "petabyte", 0x29010: "exabyte", 0x29012: "zettabyte", 0x29014: "yottabyte",
    # Rates and densities built on the pound (meter) of 0.5 kg.
    0x11006: "pound per gallon", 0x11008: "pound per cubic foot",
    0x11009: "pound per cubic inch", 0x15007: "pound per second",
    0x15008: "pound per minute", 0x15009: "pound per hour",
    0x2E004: "pound mass per foot second", 0x2E005: "pound mass per foot hour",
}
KEYS = ["`lb`", "`kB`", "`kt`", "`tbsp`"]
NAMES = {0x21017: "newtor per square meter", 0x400E: "加仑（黄制）"}


def main(path):
    with open(path, encoding="utf-8") as page:
        rows = [line for line in page.read().split("\n") if line.startswith("| ")]
    faults = []
    for id_, name in FACTORS.items():
        row = next((r for r in rows if r.startswith("| %s (`0x%X`) |" % (name, id_))), None)
        cells = [c.strip() for c in row.strip("|").split(" | ")] if row else []
        if len(cells) != 6 or not cells[2] or not cells[5]:
            faults.append("%s (0x%X): no row with a defining value and a source" % (name, id_))
    for key in KEYS:
        if not any(r.startswith("| %s | " % key) for r in rows):
            faults.append("%s: not among the keys read otherwise" % key)
    for id_, name in NAMES.items():
        if not any(r.startswith("| `0x%X` |" % id_) and "`%s`" % name in r for r in rows):
            faults.append("%s (0x%X): not among the names kept" % (name, id_))
    for fault in faults:
        print(fault)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
