#!/usr/bin/env python3
"""Writes the seed corpus of the fuzz harness into fuzz/corpus/.

Each seed is a short, meaningful host session encoded the way fuzz/FuzzInput.h decodes
it: one per analytics class (create, set vertices, label, select, draw, drag, draw), a
few registry sessions, one per primitive and some polygon-geometry records. The fuzzer
mutates from there. Run from anywhere: python3 fuzz/make_corpus.py
"""

import os
import struct

HERE = os.path.dirname(os.path.abspath(__file__))
OUT = os.path.join(HERE, "corpus")

# Tables of FuzzInput.h, in their order.
COUNTS = [0, 1, 2, 3, 4, 5, 9, 10, 11, 19, 20, 21, 64, 0xFFFFFFFF, 0x80000000]
VIEW_SIZES = [0, -1, -640, 1, 2, 3, 7, 16, 640, 480, 1000, 1920, 1080, 65535, 1 << 24,
              2147483647, -2147483648, 300, 500, 17]
SPECIALS = ["0", "-0", "1", "0.5", "0.02", "0.9", "0.99", "1.0000001", "-1e-7", "nan", "-nan",
            "inf", "-inf", "1e30", "-1e30", "max", "-max", "1.7e38", "-1.7e38", "3e38", "-3e38",
            "3e9", "-3e9", "denorm", "-denorm", "min", "1e-30", "16777216", "0.0001", "0.001",
            "0.1", "0.18"]
ENUMS = [0, 1, 2, 3, 4, 7, 0x7FFFFFFF, 0xFFFFFFFF, 0x80000000]

KINDS = ["VcaRule", "ITCLine", "Lane", "PdcRule", "SizeFilter", "ShieldRegion",
         "ReferenceRegion", "EnterRegion", "ITCPlateRegion", "AtmCali", "BehaviorCali",
         "BehaviorCheck", "ItsCali", "PupilDistance", "BinoCali", "LfCali"]


class Seed:
    def __init__(self, mode):
        self.b = bytearray([mode])

    def byte(self, v):
        self.b.append(v & 0xFF)
        return self

    def u32(self, v):
        self.b += struct.pack(">I", v & 0xFFFFFFFF)
        return self

    def coord(self, v):
        """A coordinate in 0 .. 1.02 (steps of 1/250), or a named special value."""
        if isinstance(v, str):
            return self.byte(5).byte(SPECIALS.index(v))
        return self.byte(0).byte(round(v * 250))

    def point(self, x, y):
        return self.coord(x).coord(y)

    def near(self, dx, dy):
        """A drag end (dx, dy) away from the start, in steps of 1/400."""
        return self.byte(1).byte(round(dx * 400)).byte(round(dy * 400))

    def count(self, n):
        return self.byte(COUNTS.index(n) * 8)

    def view(self, w, h):
        return self.byte(VIEW_SIZES.index(w) * 4).byte(VIEW_SIZES.index(h) * 4)

    def enum(self, v):
        return self.byte(ENUMS.index(v) * 8)

    def points(self, pts, minimum=0):
        """A vertex array: the first point, then each further one given in full."""
        n = max(min(len(pts), 24), minimum)
        assert n == len(pts)
        self.point(*pts[0])
        for p in pts[1:]:
            self.byte(0).point(*p)
        return self


# ---- Analytics objects (mode 0) --------------------------------------------------

def create(s, kind):
    return s.byte(0).byte(KINDS.index(kind))


def obj(s, index, op):
    """An operation on object `index`: objectOp's choice `op` (0 .. 13)."""
    return s.byte(4).byte(index).byte(op)


def set_points(s, index, pts):
    obj(s, index, 0).count(len(pts)).points(pts, 2).byte(1)
    return s


def draw(s, index, w=640, h=480):
    return obj(s, index, 8).view(w, h).byte(1).byte(1)


def drag(s, index, start, delta, whole):
    obj(s, index, 3 if whole else 4).point(*start).near(*delta)
    return s


def label(s, index, text):
    obj(s, index, 10).byte(1).byte(1).byte(len(text))
    for c in text.encode():
        s.byte(c)
    return s.byte(1)


def status(s, index, value):
    return obj(s, index, 11).byte(0).enum(value)


def select(s, index, vertex):
    return obj(s, index, 11).byte(1).byte(vertex)


def vertices_for(kind):
    square = [(0.2, 0.2), (0.4, 0.2), (0.4, 0.4), (0.2, 0.4)]
    if kind in ("ITCLine", "BehaviorCali", "BehaviorCheck", "PupilDistance"):
        return [(0.2, 0.3), (0.6, 0.5)]
    if kind in ("BinoCali", "LfCali"):
        return [(0.5, 0.5), (0.5, 0.5)]  # count 2 is refused; the session sets one below
    return square


def object_session(kind):
    s = Seed(0)
    create(s, kind)
    pts = vertices_for(kind)
    if kind in ("BinoCali", "LfCali"):
        obj(s, 0, 0).count(1).points([(0.5, 0.5), (0.0, 0.0)], 2).byte(1)
    else:
        set_points(s, 0, pts)
    label(s, 0, kind[:16])
    status(s, 0, 1)
    select(s, 0, 1)
    draw(s, 0)
    drag(s, 0, (0.3, 0.3), (0.05, 0.02), True)
    drag(s, 0, pts[0], (-0.03, 0.04), False)
    draw(s, 0, 1920, 1080)
    status(s, 0, 2)
    draw(s, 0, 0, 0)
    return s


def class_specific_sessions():
    seeds = {}
    s = Seed(0)  # a rule switched to a line, then a broken line, traverse plane on
    create(s, "VcaRule")
    set_points(s, 0, [(0.2, 0.2), (0.5, 0.3)])
    obj(s, 0, 13).byte(2).enum(1)
    status(s, 0, 1)
    draw(s, 0)
    obj(s, 0, 13).byte(2).enum(2)
    obj(s, 0, 11).byte(4).byte(1)
    obj(s, 0, 13).byte(3).enum(0)
    draw(s, 0)
    draw(s, 0)
    seeds["vca_rule_types"] = s

    s = Seed(0)  # people counting in line mode with calibration
    create(s, "PdcRule")
    obj(s, 0, 12).byte(0).byte(1)
    set_points(s, 0, [(0.2, 0.5), (0.8, 0.5)])
    obj(s, 0, 12).byte(1).byte(1)
    obj(s, 0, 12).byte(2).count(2).points([(0.2, 0.5), (0.4, 0.5)], 2).byte(1)
    obj(s, 0, 13).byte(2).byte(1)
    status(s, 0, 1)
    draw(s, 0, 1000, 1000)
    obj(s, 0, 13).byte(3).byte(2)
    obj(s, 0, 12).byte(4).point(0.4, 0.5).near(0.05, 0.0)
    draw(s, 0, 1000, 1000)
    seeds["pdc_line_calibration"] = s

    s = Seed(0)  # a square size filter dragged by a corner
    create(s, "SizeFilter")
    obj(s, 0, 12).byte(7).enum(1)
    obj(s, 0, 11).byte(3).view(1000, 500)
    obj(s, 0, 13).byte(1).point(0.1, 0.1).near(0.2, 0.1)
    select(s, 0, 3)
    drag(s, 0, (0.3, 0.3), (0.1, 0.05), False)
    obj(s, 0, 13).byte(0).enum(1)
    draw(s, 0, 1000, 500)
    seeds["size_filter_square"] = s

    s = Seed(0)  # an ATM calibration line with its heads
    create(s, "AtmCali")
    set_points(s, 0, [(0.1, 0.1), (0.9, 0.1), (0.9, 0.9), (0.1, 0.9)])
    obj(s, 0, 13).byte(0).point(0.5, 0.2).near(0.0, 0.5)
    draw(s, 0, 640, 480)
    obj(s, 0, 13).byte(5).point(0.5, 0.2).byte(1)
    seeds["atm_heads"] = s

    s = Seed(0)  # far and non-finite values everywhere
    create(s, "ShieldRegion")
    obj(s, 0, 0).count(3).points([("3e38", 0.5), (0.5, "-max"), ("nan", 0.1)], 2).byte(1)
    obj(s, 0, 0).count(3).points([("1.7e38", 0.5), (0.5, "-1.7e38"), (0.2, 0.2)], 2).byte(1)
    status(s, 0, 1)
    draw(s, 0, 2147483647, 1)
    obj(s, 0, 3).point("-3e38", 0.5).byte(0).point("3e38", 0.5)
    obj(s, 0, 3).point("nan", 0.5).byte(0).point("inf", 0.5)
    seeds["far_values"] = s
    return seeds


def add(s, index):
    return s.byte(1).byte(2).byte(1).byte(index)


def delete(s, slot):
    return s.byte(1).byte(3).byte(slot + 2)


def lookup(s, slot):
    return s.byte(1).byte(4).byte(slot + 2)


def reference(s, index, take):
    return s.byte(2).byte(index).byte(1 if take else 0)


def registry_sessions():
    seeds = {}
    s = Seed(0)  # add three, delete the middle one, reuse its slot, release all
    for kind in ("ShieldRegion", "Lane", "LfCali"):
        create(s, kind)
    for i in range(3):
        add(s, i)
    delete(s, 1)
    reference(s, 1, False)     # the host drops object 1's own reference: it goes
    add(s, 0)                  # object 0 again, into the freed slot 1
    lookup(s, 2).byte(1).byte(8).view(640, 480).byte(1).byte(1)  # draw through the registry
    s.byte(1).byte(1)          # Release
    seeds["registry_slots"] = s

    s = Seed(0)  # extra references, a null object, bad indexes
    create(s, "PupilDistance")
    reference(s, 0, True)
    s.byte(1).byte(2).byte(0)  # AddVcaObject(nullptr)
    add(s, 0)
    delete(s, -2)
    delete(s, 20)
    lookup(s, -1)
    reference(s, 0, False)
    reference(s, 0, False)
    delete(s, 0)               # the last reference
    seeds["registry_references"] = s

    s = Seed(0)  # text rendering on while labels draw
    create(s, "EnterRegion")
    s.byte(3).byte(1)
    set_points(s, 0, [(0.95, 0.95), (0.99, 0.95), (0.99, 0.99)])
    label(s, 0, "entry")
    draw(s, 0)
    seeds["text_rendering"] = s
    return seeds


# ---- Primitives (mode 1) ---------------------------------------------------------

def primitive_sessions():
    seeds = {}
    square = [(0.2, 0.2), (0.4, 0.2), (0.4, 0.4), (0.2, 0.4)]

    for which, name in enumerate(("polygon", "rectangle", "square", "label")):
        s = Seed(1)
        # SetPoints (own op 0 after graphMeta choice 9)
        s.byte(1).byte(which).byte(9).byte(0).count(4).points(square).byte(1)
        s.byte(1).byte(which).byte(0).enum(1)                          # status 1
        s.byte(1).byte(which).byte(1).byte(2)                          # select vertex 2
        s.byte(1).byte(which).byte(4).view(640, 480)                   # view size
        s.byte(1).byte(which).byte(3).view(640, 480).byte(1).byte(1)  # Draw
        s.byte(1).byte(which).byte(9).byte(4).point(0.4, 0.2).near(0.1, -0.1)
        s.byte(1).byte(which).byte(9).byte(3).point(0.3, 0.3).near(0.2, 0.2)
        if which != 0:
            s.byte(1).byte(which).byte(9).byte(8).point(0.1, 0.1).near(0.3, 0.2)
        s.byte(1).byte(which).byte(3).view(300, 500).byte(1).byte(1)
        seeds["primitive_" + name] = s

    s = Seed(1)  # points and circles
    s.byte(0).byte(0).byte(9).byte(0).count(1).points([(0.5, 0.5)], 1).byte(1)
    s.byte(0).byte(0).byte(0).enum(1)
    s.byte(0).byte(0).byte(3).view(640, 480).byte(1).byte(1)
    s.byte(0).byte(1).byte(9).byte(0).count(1).points([(0.3, 0.3)], 1).byte(1)
    s.byte(0).byte(1).byte(4).view(500, 500)
    s.byte(0).byte(1).byte(9).byte(8).byte(1).byte(50)
    s.byte(0).byte(1).byte(3).view(500, 500).byte(1).byte(1)
    s.byte(0).byte(0).byte(9).byte(3).byte(1).coord("1.7e38")
    s.byte(0).byte(0).byte(3).view(640, 480).byte(1).byte(1)
    seeds["primitive_points"] = s

    for arrow, name in ((0, "line"), (1, "arrow")):
        s = Seed(1)
        s.byte(3).byte(arrow).byte(9).byte(0).count(2).points([(0.2, 0.5), (0.6, 0.5)], 2).byte(1)
        s.byte(3).byte(arrow).byte(0).enum(1)
        s.byte(3).byte(arrow).byte(9).byte(6).byte(0).enum(1)   # line type 1
        s.byte(3).byte(arrow).byte(9).byte(6).byte(1).enum(0)   # both arrow heads
        s.byte(3).byte(arrow).byte(3).view(1000, 1000).byte(1).byte(1)
        s.byte(3).byte(arrow).byte(9).byte(6).byte(3).byte(1)   # traverse plane
        s.byte(3).byte(arrow).byte(3).view(1000, 1000).byte(1).byte(1)
        s.byte(3).byte(arrow).byte(9).byte(3).point(0.3, 0.5).near(0.1, 0.1)
        s.byte(3).byte(arrow).byte(9).byte(11).byte(2)          # DrawDirectionArrow
        seeds["primitive_" + name] = s

    s = Seed(1)  # a broken line of five vertices in every status
    pts = [(0.1, 0.1), (0.3, 0.2), (0.5, 0.1), (0.7, 0.3), (0.9, 0.1)]
    s.byte(5).byte(9).byte(0).count(5).points(pts).byte(1)
    for st in (0, 1, 2):
        s.byte(5).byte(0).enum(st)
        s.byte(5).byte(3).view(640, 480).byte(1).byte(1)
    s.byte(5).byte(9).byte(6).byte(1).enum(0)
    s.byte(5).byte(3).view(640, 480).byte(1).byte(1)
    seeds["primitive_broken_line"] = s

    s = Seed(1)  # polygon records: a square, a bow-tie, counts outside the record
    square = [(0.2, 0.2), (0.4, 0.2), (0.4, 0.4), (0.2, 0.4)]
    bowtie = [(0.0, 0.0), (1.0, 1.0), (1.0, 0.0), (0.0, 1.0)]
    records = ((6, square, 1), (6, bowtie, 1), (6, square, 2), (14, square, 0), (0, square, 0),
               (16, square, 3))
    for count_choice, corners, op in records:
        s.byte(6).byte(1).byte(count_choice).point(0.2, 0.2)
        for i in range(20):
            s.byte(0).point(*corners[i % 4])
        s.byte(op).byte(1).byte(1)
    seeds["geometry_records"] = s
    return seeds


def main():
    os.makedirs(OUT, exist_ok=True)
    for name in os.listdir(OUT):
        os.remove(os.path.join(OUT, name))
    seeds = {}
    for kind in KINDS:
        seeds["object_" + kind] = object_session(kind)
    seeds.update(class_specific_sessions())
    seeds.update(registry_sessions())
    seeds.update(primitive_sessions())
    for name, seed in sorted(seeds.items()):
        with open(os.path.join(OUT, name), "wb") as f:
            f.write(bytes(seed.b))
    print("%d seeds in %s" % (len(seeds), OUT))


if __name__ == "__main__":
    main()
