#!/usr/bin/env python3
"""The difficulty figures of the shipped tracks: the table in docs/tracks.md
and the plot docs/difficulty.svg, both from what the track checker measured.

    build/game/quorbit-track lint --game-dir build/game --solutions content/solutions \\
        --windows --figures figures.tsv
    python3 tools/trackgen/difficulty.py figures.tsv [REPO]

The difficulty of a track adds up what asks for care at the keys:

    key changes + 2 x hazards + 2 x (13 - narrowest window)

Every key change is a move to make; a hazard the route meets (a deadly tile,
a wall face, a platform front, a gap) is a move that costs the run when it is
missed, so it counts twice; and every frame the tightest move has less than
the widest window the checker measures (13 frames, six either way) is a frame
less to be late or early in, also counted twice. Measure with --windows: a
track without a measured window counts as having the widest.
"""
import csv
import glob
import os
import sys

BEGIN = "<!-- figures: written by tools/trackgen/difficulty.py -->"
END = "<!-- end of figures -->"


WIDEST = 13


def difficulty(row):
    window = int(row["narrowest_window"])
    window = WIDEST if window < 0 else min(window, WIDEST)
    return int(row["key_changes"]) + 2 * int(row["hazards"]) + 2 * (WIDEST - window)


def track_info(repo):
    """Name and idea of each shipped track, from the sources."""
    info = []
    for path in sorted(glob.glob(os.path.join(repo, "content", "tracks", "*.trk"))):
        for raw in open(path):
            words = raw.split()
            if words[:1] == ["track"]:
                info.append({"name": " ".join(words[2:]), "idea": ""})
            elif raw.startswith("  # ") and info and not info[-1]["idea"]:
                info[-1]["idea"] = raw[4:].strip()
    return info


def table(rows, info):
    out = ["| zone | track | name | the idea | key changes | narrowest window (frames) | hazards | "
           "length (units) | solution | difficulty |",
           "|---|---|---|---|---|---|---|---|---|---|"]
    for r in rows:
        n = int(r["track"])
        i = info[n - 1] if n - 1 < len(info) else {"name": "", "idea": ""}
        out.append("| %d | %d | %s | %s | %s | %s | %s | %s | %s s | %.1f |" % (
            (n - 1) // 10 + 1, n, i["name"], i["idea"], r["key_changes"],
            r["narrowest_window"] if int(r["narrowest_window"]) >= 0 else "-", r["hazards"],
            r["length"], r["seconds"], difficulty(r)))
    return "\n".join(out)


def svg(rows):
    w, h, left, bottom, top = 640, 260, 40, 30, 16
    scores = [difficulty(r) for r in rows]
    high = max(scores + [1])
    high = (int(high / 10) + 1) * 10
    x = lambda n: left + (n - 0.5) * (w - left - 10) / 60.0
    y = lambda v: h - bottom - v * (h - bottom - top) / high
    colours = ["#3a7bd5", "#2bb673", "#00a8c6", "#c08a2b", "#b83b5e", "#7b4fc9"]
    parts = ['<svg xmlns="http://www.w3.org/2000/svg" width="%d" height="%d" font-family="sans-serif" '
             'font-size="11">' % (w, h),
             '<rect width="%d" height="%d" fill="white"/>' % (w, h),
             '<text x="%d" y="12">difficulty of tracks 1 to 60 (key changes + 2 x hazards + 2 x frames the narrowest window lacks of 13)</text>' % left]
    for v in range(0, high + 1, 10):
        parts.append('<line x1="%d" y1="%.1f" x2="%d" y2="%.1f" stroke="#ddd"/>' % (left, y(v), w - 10, y(v)))
        parts.append('<text x="%d" y="%.1f" text-anchor="end">%d</text>' % (left - 4, y(v) + 4, v))
    for zone in range(6):
        zx = x(zone * 10 + 5.5)
        parts.append('<text x="%.1f" y="%d" text-anchor="middle">zone %d</text>' % (zx, h - 10, zone + 1))
        pts = [(x(int(r["track"])), y(s)) for r, s in zip(rows, scores) if (int(r["track"]) - 1) // 10 == zone]
        if pts:
            parts.append('<polyline fill="none" stroke="%s" stroke-width="2" points="%s"/>' % (
                colours[zone], " ".join("%.1f,%.1f" % p for p in pts)))
            parts.extend('<circle cx="%.1f" cy="%.1f" r="2.5" fill="%s"/>' % (px, py, colours[zone])
                         for px, py in pts)
    parts.append("</svg>")
    return "\n".join(parts) + "\n"


def main():
    figures = sys.argv[1]
    repo = sys.argv[2] if len(sys.argv) > 2 else os.path.join(os.path.dirname(__file__), "..", "..")
    rows = [r for r in csv.DictReader(open(figures), delimiter="\t") if int(r["track"]) <= 60]
    rows.sort(key=lambda r: int(r["track"]))
    doc = os.path.join(repo, "docs", "tracks.md")
    text = open(doc).read()
    block = BEGIN + "\n\n" + table(rows, track_info(repo)) + "\n\n" + END
    if BEGIN in text:
        text = text[:text.index(BEGIN)] + block + text[text.index(END) + len(END):]
    else:
        text = text.rstrip("\n") + "\n\n" + block + "\n"
    open(doc, "w").write(text)
    open(os.path.join(repo, "docs", "difficulty.svg"), "w").write(svg(rows))


if __name__ == "__main__":
    main()
