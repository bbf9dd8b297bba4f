#!/usr/bin/env python3
"""Turns the glyph art of tools/font/font.txt into src/graph/FontTable.cpp.

    make_font_table.py           write the table
    make_font_table.py --check   exit 1 (writing nothing) when the table differs from
                                 what the font source gives
    make_font_table.py --show A  print glyphs read back from the generated table

Each glyph row becomes one byte, the leftmost column in the most significant bit, rows
top first. Python 3 standard library only.
"""

import argparse
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
SOURCE = ROOT / "tools" / "font" / "font.txt"
TABLE = ROOT / "src" / "graph" / "FontTable.cpp"
FIRST, LAST = 0x20, 0x7E


class FontError(Exception):
    pass


class Font:
    def __init__(self, width, height, descent, glyphs, placeholder):
        self.width = width
        self.height = height
        self.descent = descent
        self.glyphs = glyphs  # code -> list of row strings
        self.placeholder = placeholder

    def cap_height(self):
        """Rows of ink in 'H', which stands on the baseline."""
        return sum(1 for row in self.glyphs[0x48] if "#" in row)


def parse(text, origin="font source"):
    """Reads the font source; raises FontError naming the line of the first fault."""
    width = height = descent = None
    glyphs = {}
    placeholder = None
    current = None  # (key, rows, line number of its header)

    def finish():
        nonlocal placeholder
        if current is None:
            return
        key, rows, at = current
        if len(rows) != height:
            raise FontError(f"{origin}:{at}: glyph has {len(rows)} rows, the cell {height}")
        if key == "placeholder":
            placeholder = rows
        else:
            glyphs[key] = rows

    for number, raw in enumerate(text.splitlines(), 1):
        line = raw.strip()
        if not line or line.startswith(";"):
            continue
        words = line.split()
        if words[0] == "cell" and len(words) == 3:
            width, height = int(words[1]), int(words[2])
            if not 1 <= width <= 8 or height < 1:
                raise FontError(f"{origin}:{number}: cell must be 1 to 8 columns wide")
        elif words[0] == "descent" and len(words) == 2:
            descent = int(words[1])
        elif words[0] in ("char", "placeholder"):
            if width is None or height is None or descent is None:
                raise FontError(f"{origin}:{number}: 'cell' and 'descent' come first")
            finish()
            if words[0] == "placeholder":
                key = "placeholder"
                if placeholder is not None:
                    raise FontError(f"{origin}:{number}: second placeholder")
            else:
                if len(words) < 2 or not re.fullmatch(r"0x[0-9a-fA-F]{2}", words[1]):
                    raise FontError(f"{origin}:{number}: expected 'char 0xNN'")
                key = int(words[1], 16)
                if not FIRST <= key <= LAST:
                    raise FontError(f"{origin}:{number}: 0x{key:02x} is not printable ASCII")
                if key in glyphs:
                    raise FontError(f"{origin}:{number}: 0x{key:02x} drawn twice")
            current = (key, [], number)
        elif re.fullmatch(r"[#.]+", line):
            if current is None:
                raise FontError(f"{origin}:{number}: glyph row outside a glyph")
            if len(line) != width:
                raise FontError(f"{origin}:{number}: row is {len(line)} columns, the cell {width}")
            current[1].append(line)
            if len(current[1]) > height:
                raise FontError(f"{origin}:{number}: glyph has more than {height} rows")
        else:
            raise FontError(f"{origin}:{number}: cannot read {line!r}")
    finish()

    if width is None:
        raise FontError(f"{origin}: no 'cell' line")
    if not 0 <= descent < height:
        raise FontError(f"{origin}: descent {descent} outside the cell")
    missing = [c for c in range(FIRST, LAST + 1) if c not in glyphs]
    if missing:
        raise FontError(f"{origin}: no glyph for " + ", ".join(f"0x{c:02x}" for c in missing))
    if placeholder is None:
        raise FontError(f"{origin}: no placeholder glyph")
    seen = {}
    for key in list(range(FIRST, LAST + 1)) + ["placeholder"]:
        art = tuple(placeholder if key == "placeholder" else glyphs[key])
        if art in seen:
            raise FontError(f"{origin}: {name(key)} looks exactly like {name(seen[art])}")
        seen[art] = key
    font = Font(width, height, descent, glyphs, placeholder)
    if "#" not in glyphs[0x48][height - descent - 1]:
        raise FontError(f"{origin}: 'H' does not stand on the baseline")
    return font


def name(key):
    return "the placeholder" if key == "placeholder" else f"0x{key:02x}"


def row_byte(row):
    value = 0
    for column, pixel in enumerate(row):
        if pixel == "#":
            value |= 0x80 >> column
    return value


def comment(code):
    # A backslash at the end of a // comment would continue it onto the next line.
    return {0x20: "space", 0x5C: "backslash"}.get(code, chr(code))


def render(font):
    count = LAST - FIRST + 2
    out = [
        "// Generated by tools/font/make_font_table.py from tools/font/font.txt: edit the",
        "// glyph art there and run the script. One byte per row, top row first, the",
        "// leftmost column in the most significant bit.",
        "",
        '#include "graph/FontTable.h"',
        "",
        "namespace Tavrin {",
        "namespace font {",
        "",
        f"static_assert(kCellWidth == {font.width} && kCellHeight == {font.height} && "
        f"kDescent == {font.descent} &&",
        f"              kCapHeight == {font.cap_height()},",
        '              "graph/FontTable.h does not match tools/font/font.txt");',
        f"static_assert(kFirstCode == 0x{FIRST:02x} && kLastCode == 0x{LAST:02x} && "
        f"kGlyphCount == {count},",
        '              "graph/FontTable.h does not match tools/font/font.txt");',
        "",
        "const unsigned char kGlyphRows[kGlyphCount][kCellHeight] = {",
    ]
    entries = [(font.glyphs[c], f"0x{c:02x} {comment(c)}") for c in range(FIRST, LAST + 1)]
    entries.append((font.placeholder, "placeholder"))
    for rows, label in entries:
        data = ", ".join(f"0x{row_byte(r):02x}" for r in rows)
        out.append(f"    {{{data}}},  // {label}")
    out += ["};", "", "}  // namespace font", "}  // namespace Tavrin", ""]
    return "\n".join(out)


def read_table(text, width):
    """The glyph art back from a generated table, for --show."""
    rows = re.findall(r"\{(0x[0-9a-f]{2}(?:, 0x[0-9a-f]{2})*)\},  // (.*)", text)
    art = {}
    for data, label in rows:
        bits = [int(v, 16) for v in data.split(", ")]
        art[label] = ["".join("#" if b & (0x80 >> c) else "." for c in range(width)) for b in bits]
    return art


def main(argv):
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--check", action="store_true", help="compare instead of writing")
    parser.add_argument("--show", metavar="TEXT", help="print TEXT from the generated table")
    parser.add_argument("--source", type=pathlib.Path, default=SOURCE)
    parser.add_argument("--table", type=pathlib.Path, default=TABLE)
    args = parser.parse_args(argv)

    try:
        font = parse(args.source.read_text(encoding="ascii"), str(args.source))
    except (OSError, UnicodeDecodeError, ValueError, FontError) as error:
        print(f"make_font_table: {error}", file=sys.stderr)
        return 2
    wanted = render(font)

    if args.show is not None:
        art = read_table(args.table.read_text(encoding="ascii"), font.width)
        for ch in args.show:
            code = ord(ch)
            key = f"0x{code:02x} {comment(code)}" if FIRST <= code <= LAST else "placeholder"
            print(f"{key}:")
            print("\n".join(art.get(key, ["(missing)"])))
        return 0
    if args.check:
        try:
            current = args.table.read_text(encoding="ascii")
        except OSError as error:
            print(f"make_font_table: {error}", file=sys.stderr)
            return 1
        if current != wanted:
            print(f"make_font_table: {args.table} is stale; run tools/font/make_font_table.py",
                  file=sys.stderr)
            return 1
        return 0
    args.table.write_text(wanted, encoding="ascii")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
