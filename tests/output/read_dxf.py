"""Reads DXF files with ezdxf, an independent DXF reader, and prints what it found.

For each file given: "FILE path", the header's extents, then one line per entity kind with
its count and the values of its first and last entity:
    EXTMIN x y / EXTMAX x y
    LINE n x1 y1 x2 y2 (first) x1 y1 x2 y2 (last)
    CIRCLE n cx cy r (first) cx cy r (last)
    ARC n cx cy r start end (first) cx cy r start end (last)
    OTHER n
A file ezdxf cannot read ends the run with an error.
"""
import sys

import ezdxf


def values(entity):
    d = entity.dxf
    kind = entity.dxftype()
    if kind == "LINE":
        return [d.start.x, d.start.y, d.end.x, d.end.y]
    if kind == "CIRCLE":
        return [d.center.x, d.center.y, d.radius]
    return [d.center.x, d.center.y, d.radius, d.start_angle, d.end_angle]


def main(paths):
    for path in paths:
        doc = ezdxf.readfile(path)
        print("FILE", path)
        for name in ("$EXTMIN", "$EXTMAX"):
            x, y = doc.header[name][:2]
            print(name[1:], repr(x), repr(y))
        found = {"LINE": [], "CIRCLE": [], "ARC": []}
        other = 0
        for entity in doc.modelspace():
            if entity.dxftype() in found:
                found[entity.dxftype()].append(entity)
            else:
                other += 1
        for kind, entities in found.items():
            numbers = values(entities[0]) + values(entities[-1]) if entities else []
            print(kind, len(entities), *(repr(v) for v in numbers))
        print("OTHER", other)


if __name__ == "__main__":
    main(sys.argv[1:])
