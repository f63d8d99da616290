"""Reads DXF files with ezdxf, an independent reader, and prints per file "FILE path", the
header's "EXTMIN x y" and "EXTMAX x y", then per kind its count and its first entity:
"LINE n x1 y1 x2 y2", "CIRCLE n cx cy r", "ARC n cx cy r start end", "OTHER n"."""
import sys

import ezdxf


def values(entity):
    d = entity.dxf
    if entity.dxftype() == "LINE":
        return [d.start.x, d.start.y, d.end.x, d.end.y]
    if entity.dxftype() == "CIRCLE":
        return [d.center.x, d.center.y, d.radius]
    return [d.center.x, d.center.y, d.radius, d.start_angle, d.end_angle]


for path in sys.argv[1:]:
    doc = ezdxf.readfile(path)
    print("FILE", path)
    for name in ("$EXTMIN", "$EXTMAX"):
        print(name[1:], *(repr(v) for v in doc.header[name][:2]))
    found = {"LINE": [], "CIRCLE": [], "ARC": [], "OTHER": []}
    for entity in doc.modelspace():
        found.get(entity.dxftype(), found["OTHER"]).append(entity)
    for kind, entities in found.items():
        first = values(entities[0]) if entities and kind != "OTHER" else []
        print(kind, len(entities), *(repr(v) for v in first))
