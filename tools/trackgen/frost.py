"""Pieces of the Frost Run: roads that drift, widen and part on ice, and
turbo flights between islands set to either side.

A road here is given by its two kerb lanes `lo` and `hi`, whole numbers
across the track: the car's middle is on `lo` when it rubs the left kerb
and on `hi` when it rubs the right one, so stars go on them.

The one rule every piece keeps: a kerb never steps in towards the side the
car rubs. A kerb face a unit high across the car's path blows it up, so a
road only narrows or drifts away from the kerb the route holds to.
"""

from trackkit import FAR, JUMP


def lanes(t):
    return t.cx - t.a, t.cx + t.a


def span(t, lo, hi, length, kind="plain", kerbs=True):
    """Road from lane `lo` to lane `hi`, `length` long, from where the last
    piece ended."""
    t.cx, t.a = (lo + hi) / 2.0, (hi - lo) / 2.0
    t.block(t.x0(), t.x1(), t.z, t.z + length, t.h, kind)
    if kerbs:
        t.kerbs(t.z, t.z + length)
    t.z += length


def reach(t, side):
    """Road enough to steer from one kerb to the other."""
    return 5 * (2 * t.a) + 6


def drift(t, side, steps, tread=10, kind="ice", star_every=3, lead=None):
    """The road slides sideways a lane a tread, towards the kerb the car
    holds to: a staircase drawn across the track."""
    lo, hi = lanes(t)
    # Held towards where the kerb ends up, not where it starts.
    t.side = side
    t.act(t.z + 0.5, "x", (hi if side > 0 else lo) + side * (steps + FAR))
    span(t, lo, hi, reach(t, side) if lead is None else lead, kind)
    for i in range(steps):
        lo, hi = lo + side, hi + side
        span(t, lo, hi, tread, kind)
        if star_every and i % star_every == star_every - 1:
            t.star_here(-tread / 2.0)
    t.pieces.add("drift")


def widen(t, lo, hi, length, kind="plain"):
    """A wider (or the same) road; its kerbs may only move outwards."""
    old_lo, old_hi = lanes(t)
    assert lo <= old_lo and hi >= old_hi, "track %d: widen() narrows at z %s" % (t.number, t.z)
    span(t, lo, hi, length, kind)


def narrow(t, lo, hi, length, kind="plain"):
    """A narrower road: the kerb that steps in must be the one the car is
    away from, and the car must already be inside the new lanes."""
    old_lo, old_hi = lanes(t)
    assert lo >= old_lo and hi <= old_hi
    if t.side < 0:
        assert lo == old_lo, "track %d: the held kerb steps in at z %s" % (t.number, t.z)
    elif t.side > 0:
        assert hi == old_hi, "track %d: the held kerb steps in at z %s" % (t.number, t.z)
    span(t, lo, hi, length, kind)


def field(t, lo, hi, length, holes=(), kind="ice", deadly=()):
    """A wide road with holes cut in it (open water, nothing under them)
    and deadly tiles laid in it; each is (x0, x1, dz0, dz1) with x across
    the track and dz from the field's front."""
    t.cx, t.a = (lo + hi) / 2.0, (hi - lo) / 2.0
    x0, x1, z0 = t.x0(), t.x1(), t.z
    cuts = [(h, None) for h in holes] + [(d, "deadly") for d in deadly]
    edges = sorted({0, length} | {c[0][2] for c in cuts} | {c[0][3] for c in cuts})
    for a, b in zip(edges, edges[1:]):
        inside = sorted((c for c in cuts if c[0][2] <= a and c[0][3] >= b), key=lambda c: c[0][0])
        x = x0
        for (hx0, hx1, _, _), what in inside:
            if hx0 > x:
                t.block(x, hx0, z0 + a, z0 + b, t.h, kind)
            if what:
                t.block(hx0, hx1, z0 + a, z0 + b, t.h, what, side="accent")
            x = hx1
        if x < x1:
            t.block(x, x1, z0 + a, z0 + b, t.h, kind)
    t.kerbs(z0, z0 + length)
    t.z = z0 + length
    if holes:
        t.pieces.add("holes")


def funnel(t, side, width, tread=6, kind="ice", star=True):
    """The road closes in from the kerb away from the car, a lane a tread,
    until it is `width` lanes wide: the held kerb runs on straight."""
    lo, hi = lanes(t)
    if t.side != side:
        t.hug(side)
        span(t, lo, hi, reach(t, side), kind)
    while hi - lo > width:
        if side > 0:
            lo += 1
        else:
            hi -= 1
        narrow(t, lo, hi, tread, kind)
    if star:
        t.star_here(-tread / 2.0)
    t.pieces.add("funnel")


def splay(t, lo, hi, tread=6, kind="ice"):
    """The road opens out a lane a tread on each side until its kerbs are at
    `lo` and `hi`."""
    a, b = lanes(t)
    while a > lo or b < hi:
        a, b = max(lo, a - 1), min(hi, b + 1)
        widen(t, a, b, tread, kind)


def slide_out(t, out, back, kind="ice", fast=False):
    """Across the road to the kerb on side `out` for a star and back to the
    kerb on side `back`, on ice: the kerbs stop the slide. A `fast` car
    (after a turbo pad) needs more road for the same way across."""
    lo, hi = lanes(t)
    cross = (8 if fast else 5) * (hi - lo) + 10
    t.hug(out)
    span(t, lo, hi, cross, kind)
    t.star_here(-4)
    t.hug(back)
    span(t, lo, hi, cross, kind)


def cold_hop(t, lo, hi, g=10, stop=True, pad=True):
    """A turbo pad, a flight over `g` units of nothing onto an island set to
    one side (lanes `lo`..`hi`, which take in the car's lane), and a stop to
    a standstill there before anything else. Without the stop the car runs
    on at full speed: a stop is timed by the clock while a take-off is met
    at a place, so every stop carries a slip into the next flight."""
    side = t.side
    lane = t.lane_x()
    assert lo < lane < hi, "track %d: the island at z %s misses the car's lane" % (t.number, t.z)
    t.let_go(t.z - 6)
    if pad:
        t.block(t.x0(), t.x1(), t.z, t.z + 2, t.h, "turbo")
        t.kerbs(t.z, t.z + 2)
        t.act(t.z - 2, "speed", 1)
        t.z += 2
    span(t, *lanes(t), 14)
    edge = t.z
    takeoff = min(edge + (g + 0.8 - 28) / 2.0, edge - 2)
    t.act(takeoff, "jump")
    t.star(lane, t.h + 2, round(takeoff + 14))
    t.z = edge + g
    if stop:
        # Down once landed until the car stands, a moment standing, then Up.
        t.act(takeoff + 31, "board", 999)
        t.act(takeoff + 31.1, "speed", 0.6)
        span(t, lo, hi, takeoff + 31 + 16 + 10 - t.z)
    else:
        span(t, lo, hi, takeoff + 28 + 6 - t.z)
    t.side = side
    t.pieces.add("cold hop")


def hop(t, lo, hi, g=5, land=20):
    """A jump at road speed over `g` units of nothing onto an island set to
    one side (lanes `lo`..`hi`, which take in the car's lane)."""
    lane = t.lane_x()
    assert lo < lane < hi, "track %d: the island at z %s misses the car's lane" % (t.number, t.z)
    edge = t.z
    t.let_go(edge - 8)
    takeoff = min(edge + (g + 0.8 - JUMP) / 2.0, edge - 1.5)
    t.act(takeoff, "jump")
    t.star(lane, t.h + 2, round(takeoff + 8.5))
    t.z = edge + g
    span(t, lo, hi, max(land, takeoff + JUMP + 4 - t.z))
    t.pieces.add("hop")


def rails(t, segments, gap=6, kind="ice"):
    """Two lines side by side with open water between, from kerb lane `lo`
    and `hi` inwards. `segments` are (what, length): "both" lines, "points"
    (the water closes, the way across), or only the "left" or "right" line,
    the other broken off. The route changes lines only at the points."""
    lo, hi = lanes(t)
    x0, x1 = lo - 0.4, hi + 0.4
    mid0, mid1 = (lo + hi - gap) / 2.0, (lo + hi + gap) / 2.0
    for what, length in segments:
        z0, z1 = t.z, t.z + length
        parts = {"both": [(x0, mid0), (mid1, x1)], "points": [(x0, x1)],
                 "left": [(x0, mid0)], "right": [(mid1, x1)]}[what]
        for a, b in parts:
            t.block(a, b, z0, z1, t.h, kind)
        t.kerbs(z0, z1, left=parts[0][0] == x0, right=parts[-1][1] == x1)
        if what == "points":
            t.hug(-t.side or 1, at=z0 + 0.5)
        elif length >= 20:
            t.star(t.lane_x(), t.h, z0 + length / 2.0)
        t.z = z1
    t.pieces.add("rails")


def bead(t, widest, length=40, kind="plain"):
    """An island that swells to `widest` lanes either side of the car's
    straight line and closes again, a lane a tread: the car runs down its
    middle at full speed, never near a kerb. The middle is one block (at
    full speed a seam under the car can throw it); the swell is laid
    beside it."""
    c, z0 = t.cx, t.z
    widths = list(range(2, widest + 1)) + list(range(widest - 1, 1, -1))
    tread = length / (len(widths) + 2.0)
    t.block(c - 1.4, c + 1.4, z0, z0 + length, t.h, kind)
    t.kerbs(z0, z0 + tread, x0=c - 1.4, x1=c + 1.4)
    t.kerbs(z0 + length - tread, z0 + length, x0=c - 1.4, x1=c + 1.4)
    for k, w in enumerate(widths):
        a, b = z0 + tread * (k + 1), z0 + tread * (k + 2)
        t.block(c - w - 0.4, c - 1.4, a, b, t.h, kind)
        t.block(c + 1.4, c + w + 0.4, a, b, t.h, kind)
        t.kerbs(a, b, x0=c - w - 0.4, x1=c + w + 0.4)
    t.cx, t.a = c, 1
    t.z = z0 + length
    t.pieces.add("bead")


def flights_between(t, islands, gaps, run=16):
    """A turbo pad, then at full speed to the flag over gap after gap, each
    landing on the next island: `islands` lays an island (the car's line
    runs straight through all of them) and is called with the island's
    index. A landing carries the car `run` units before the next take-off
    stretch starts."""
    t.let_go(t.z - 6)
    t.block(t.x0(), t.x1(), t.z, t.z + 2, t.h, "turbo")
    t.kerbs(t.z, t.z + 2)
    t.act(t.z - 2, "speed", 1)
    t.z += 2
    lane = t.lane_x(t.side)
    landing = t.z
    for i, g in enumerate(gaps):
        start = t.z
        islands(t, i)
        assert t.cx - t.a < lane < t.cx + t.a, "track %d: island %d misses the car's line" % (t.number, i)
        # From the landing to the next take-off stretch.
        short = landing + 18 + (27.2 - g) / 2.0 - t.z
        assert short <= 0, "track %d: island %d is %.1f units short" % (t.number, i, short)
        edge = t.z
        takeoff = edge + (g - 27.2) / 2.0
        t.act(takeoff, "jump")
        t.star(lane, t.h + 2, round(takeoff + 14))
        t.z = edge + g
        landing = takeoff + 28
        assert landing > t.z + 3
    islands(t, len(gaps))
    t.at_speed = True
    t.pieces.add("turbo flights")
