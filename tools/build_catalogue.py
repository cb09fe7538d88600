#!/usr/bin/env python3
"""Builds the transformation catalogue compiled into the transforms library.

Input:
  tools/catalogue_names.tsv       name<TAB>code, one row per catalogue entry,
                                  in catalogue order (names kept letter for
                                  letter, irregularities included)
  tools/catalogue_fixed_rows.tsv  rows whose values are fixed in full; they
                                  win over anything read from PROJ
  PROJ's database (proj.db)       area of use and accuracy per operation code

Output:
  catalogue_rows.inc              one C++ initialiser per row (the build
                                  writes it into its generated/transforms/)

Codes of 4 and 5 digits are looked up under the EPSG authority, codes of
6 digits under ESRI. A code PROJ does not know is looked up by its ESRI-style
name among the ESRI aliases of EPSG operations; failing that the row takes the
area of use of its source geographic system (the name part before "_To_") and
the unknown-accuracy figure 999.

Usage: tools/build_catalogue.py [--db /usr/share/proj/proj.db] --out FILE
"""
import argparse
import csv
import math
import os
import sqlite3
import sys

HERE = os.path.dirname(os.path.abspath(__file__))

# Short area names that EPSG cuts off mid-word, by operation code, written
# out as the area's full description has them (speculative seismic data).
AREA_NAMES_IN_FULL = {"1321": "Angola - offshore blocks 7 8 24 + WGC speculative"}
UNKNOWN_ACCURACY = "999"
OPERATION_TABLES = ("grid_transformation", "helmert_transformation",
                    "other_transformation", "concatenated_operation")


def number_text(value):
    """Shortest decimal text of a number: 2.0 -> "2", 0.15 -> "0.15"."""
    value = round(float(value), 10)
    if value == 0:
        return "0"
    if value == int(value):
        return str(int(value))
    return repr(value)


def centre(west, east, south, north):
    """Middle of the box; a box across the 180th meridian (west > east) is
    measured along the short way and brought back into -180..180."""
    lat = (south + north) / 2
    if west > east:
        lon = (west + east + 360) / 2
        if lon > 180:
            lon -= 360
    else:
        lon = (west + east) / 2
    return round(lon, 10), round(lat, 10)


def read_tsv(path, header):
    with open(path, encoding="utf-8", newline="") as f:
        rows = list(csv.reader(f, delimiter="\t", quoting=csv.QUOTE_NONE))
    return rows[1:] if header else rows


class Proj:
    def __init__(self, path):
        self.db = sqlite3.connect(f"file:{path}?mode=ro", uri=True)

    def operation(self, auth, code):
        """(table, accuracy, extent) of an operation, or None."""
        row = self.db.execute(
            "SELECT table_name, accuracy FROM coordinate_operation_view "
            "WHERE auth_name = ? AND code = ?", (auth, code)).fetchone()
        if row is None:
            return None
        return row[0], row[1], self.extent(row[0], auth, code)

    def extent(self, table, auth, code):
        row = self.db.execute(
            "SELECT e.west_lon, e.east_lon, e.south_lat, e.north_lat, e.name "
            "FROM usage u JOIN extent e ON e.auth_name = u.extent_auth_name "
            "AND e.code = u.extent_code WHERE u.object_table_name = ? "
            "AND u.object_auth_name = ? AND u.object_code = ? ORDER BY u.rowid",
            (table, auth, code)).fetchone()
        return row

    def operation_by_esri_name(self, name):
        rows = self.db.execute(
            "SELECT table_name, auth_name, code FROM alias_name "
            "WHERE alt_name = ? AND table_name IN (?, ?, ?, ?)",
            (name, *OPERATION_TABLES)).fetchall()
        for table, auth, code in rows:
            found = self.operation(auth, str(code))
            if found:
                return found
        return None

    def source_system_extent(self, name):
        lower = name.lower()
        cut = lower.find("_to_")
        if cut <= 0:
            return None
        source = name[:cut]
        candidates = ["GCS_" + source]
        # Short forms that operation names use for some systems.
        for short, full in (("ED_", "European_"), ("NAD_", "North_American_")):
            if source.startswith(short):
                candidates.append("GCS_" + full + source[len(short):])
        for gcs in candidates:
            rows = self.db.execute(
                "SELECT auth_name, code FROM geodetic_crs WHERE name = ? COLLATE NOCASE "
                "UNION ALL SELECT auth_name, code FROM alias_name "
                "WHERE table_name = 'geodetic_crs' AND alt_name = ? COLLATE NOCASE",
                (gcs, gcs)).fetchall()
            for auth, code in rows:
                ext = self.extent("geodetic_crs", auth, str(code))
                if ext:
                    return ext
        return None


def c_string(text):
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"') + '"'


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--db", default="/usr/share/proj/proj.db")
    parser.add_argument("--names", default=os.path.join(HERE, "catalogue_names.tsv"))
    parser.add_argument("--fixed", default=os.path.join(HERE, "catalogue_fixed_rows.tsv"))
    parser.add_argument("--out", required=True)
    args = parser.parse_args()

    proj = Proj(args.db)
    names = read_tsv(args.names, header=False)
    fixed = {row[1]: row for row in read_tsv(args.fixed, header=True)}

    counts = {"code": 0, "alias": 0, "source system": 0, "fixed": 0, "none": 0}
    known_by_code = 0
    lines = []
    for name, code in names:
        auth = "ESRI" if len(code) == 6 else "EPSG"
        known_by_code += proj.operation(auth, code) is not None
        if code in fixed:
            f = fixed[code]
            assert f[0] == name, (f, name)
            values = [float(v) for v in f[2:8]]
            accuracy, area = f[8], f[9]
            counts["fixed"] += 1
        else:
            found = proj.operation(auth, code)
            how = "code"
            if found is None or found[2] is None:
                found = proj.operation_by_esri_name(name)
                how = "alias"
            if found is not None and found[2] is not None:
                accuracy_value, ext = found[1], found[2]
                accuracy = UNKNOWN_ACCURACY if accuracy_value is None else number_text(accuracy_value)
            else:
                ext = proj.source_system_extent(name)
                accuracy = UNKNOWN_ACCURACY
                how = "source system" if ext else "none"
            counts[how] += 1
            if ext is None:
                ext = (-180.0, 180.0, -90.0, 90.0, "World")
            west, east, south, north, area = ext
            area = AREA_NAMES_IN_FULL.get(code, area)
            if (west, east, south, north) == (-180, 180, -90, 90):
                area = "World"
            lon, lat = centre(west, east, south, north)
            values = [west, east, south, north, lon, lat]
        texts = [number_text(v) for v in values]
        lines.append("{%s, %s, %s, %s, %s, %s, %s, %s, %s, %s}," % (
            c_string(name), c_string(code), *texts, c_string(accuracy), c_string(area)))

    with open(args.out, "w", encoding="utf-8") as out:
        out.write("// Generated by tools/build_catalogue.py from PROJ's database; do not edit.\n")
        out.write("// name, code, west, east, south, north, centre lon, centre lat, accuracy, area\n")
        out.write("\n".join(lines) + "\n")

    resolved = counts["code"] + counts["alias"]
    print(f"{len(names)} rows written to {args.out}", file=sys.stderr)
    print(f"  PROJ knows {known_by_code} of the codes", file=sys.stderr)
    print(f"  fixed rows: {counts['fixed']}", file=sys.stderr)
    print(f"  resolved by code: {counts['code']}, by ESRI alias: {counts['alias']} "
          f"(PROJ resolved {resolved} of {len(names) - counts['fixed']} other rows)", file=sys.stderr)
    print(f"  area of the source system, accuracy unknown: {counts['source system']}", file=sys.stderr)
    print(f"  nothing found, world box: {counts['none']}", file=sys.stderr)


if __name__ == "__main__":
    main()
