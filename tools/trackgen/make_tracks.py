#!/usr/bin/env python3
"""Writes the sixty tracks of the six zones (content/tracks/zoneN.trk) and the
route of each (content/solutions/NN.plan), and the example user tracks.

    python3 tools/trackgen/make_tracks.py [REPO]

The tracks are laid out by the recipes below from the pieces in trackkit.py;
a recipe that uses chance takes it from a generator seeded with the track
number, so the output is the same every time.
"""
import os
import random
import sys

from trackkit import Track
import zones


def write(path, text):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w") as f:
        f.write(text)


def main():
    repo = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(__file__), "..", "..")
    tracks = zones.all_tracks()
    assert len(tracks) == 60, len(tracks)
    names = ["", "Training Ground", "Sky Bridges", "Frost Run", "Crumbling Heights", "Deadly Garden", "Springboard"]
    for zone in range(1, 7):
        chunk = tracks[(zone - 1) * 10: zone * 10]
        text = ("# Zone %d: %s. Written by tools/trackgen/make_tracks.py; edit the recipe there.\n"
                "# The car starts at x 0, y 3, z 1 facing +z; boxes are minimum corner then size;\n"
                "# block faces are front, left, right, top.\n\n" % (zone, names[zone]))
        text += "\n".join(t.source() for t in chunk)
        write(os.path.join(repo, "content", "tracks", "zone%d.trk" % zone), text)
    for t in tracks:
        write(os.path.join(repo, "content", "solutions", "%02d.plan" % t.number), t.plan_text())
    for stem, t in zones.user_tracks():
        text = "# User track %s. Written by tools/trackgen/make_tracks.py.\n\n" % stem + t.source()
        write(os.path.join(repo, "content", "usertracks", stem + ".trk"), text)
        write(os.path.join(repo, "content", "solutions", "user_%s.plan" % stem), t.plan_text())


if __name__ == "__main__":
    main()
