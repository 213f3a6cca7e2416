#!/usr/bin/env python3
"""Prints the Markdown table of the shipped and example user tracks for
docs/tracks.md: zone, number, name, length, stars, the time of the proven
solution and the kinds of pieces used.

    python3 tools/trackgen/track_table.py [REPO]
"""
import glob
import os
import re
import sys

KINDS = ["finish", "bounce", "ice", "falling", "turbo", "deadly"]


def read_tracks(path):
    tracks = []
    for raw in open(path):
        line = raw.split("#", 1)[0].split()
        if not line:
            continue
        if line[0] == "track":
            tracks.append({"name": " ".join(line[2:]), "zmin": None, "zmax": None, "stars": 0, "kinds": set()})
            continue
        t = tracks[-1]
        if line[0] in ("block", "platform", "ramp"):
            z, sz = float(line[3]), float(line[6])
            t["zmin"] = z if t["zmin"] is None else min(t["zmin"], z)
            t["zmax"] = z + sz if t["zmax"] is None else max(t["zmax"], z + sz)
            if line[0] != "block":
                t["kinds"].add(line[0])
            t["kinds"].update(k for k in KINDS if k in line[7:])
        elif line[0] == "star":
            t["stars"] += 1
    return tracks


def solution_time(path):
    if not os.path.exists(path):
        return "—"
    m = re.search(r"finished (\d+):(\d+)", open(path).read())
    return "%s.%s s" % (m.group(1), m.group(2)) if m else "—"


def row(zone, number, t, keys):
    kinds = [k for k in ["ramp", "platform"] + KINDS if k in t["kinds"] and k != "finish"]
    return "| %s | %s | %s | %d | %d | %s | %s |" % (
        zone, number, t["name"], round(t["zmax"] - t["zmin"]), t["stars"], solution_time(keys),
        ", ".join(kinds) or "plain")


def main():
    repo = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(__file__), "..", "..")
    sol = os.path.join(repo, "content", "solutions")
    print("| zone | track | name | length (units) | stars | solution | pieces besides plain blocks |")
    print("|---|---|---|---|---|---|---|")
    number = 0
    for path in sorted(glob.glob(os.path.join(repo, "content", "tracks", "*.trk"))):
        for t in read_tracks(path):
            number += 1
            print(row((number - 1) // 10 + 1, number, t, os.path.join(sol, "%02d.keys" % number)))
    for path in sorted(glob.glob(os.path.join(repo, "content", "usertracks", "*.trk"))):
        stem = os.path.splitext(os.path.basename(path))[0]
        for t in read_tracks(path):
            print(row("user", stem, t, os.path.join(sol, "user_%s.keys" % stem)))


if __name__ == "__main__":
    main()
