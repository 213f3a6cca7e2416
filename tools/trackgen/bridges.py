"""Pieces for the sky bridges: roads that part into narrow lanes and meet
again, roads that cross each other, roads that drift sideways a unit at a
time, narrow spans between wide landings and islands set off to the side.

They build on trackkit's Track `t`: `t.cx` and `t.a` always describe the
road the car is on, and other roads beside it at the same height are given
as x ranges. Where two roads come closer than two kerbs' width they share one
divider; where they touch they are one road.
"""

from trackkit import FAR, JUMP

KERB = 1.0


# Roads closer than this are one road: a slit between two would be a ledge
# for the car to catch. Kerbs this close share one divider.
SLIT = 0.5


def merge(spans):
    """The x ranges as the roads they make: ranges that overlap or nearly
    touch become one, sorted left to right."""
    out = []
    for x0, x1 in sorted(spans):
        if out and x0 <= out[-1][1] + SLIT:
            out[-1][1] = max(out[-1][1], x1)
        else:
            out.append([x0, x1])
    return [tuple(s) for s in out]


def kerb_ranges(roads):
    """The kerbs round merged roads: one outside each end, and between two
    roads either a kerb each with a hole between or, when there is no room
    for that, one divider filling the space."""
    out = [(roads[0][0] - KERB, roads[0][0])]
    for (a0, a1), (b0, b1) in zip(roads, roads[1:]):
        if b0 - a1 >= 2 * KERB + SLIT:
            out += [(a1, a1 + KERB), (b0 - KERB, b0)]
        else:
            out.append((a1, b0))
    out.append((roads[-1][1], roads[-1][1] + KERB))
    return out


def cover(t, z0, z1, spans, kerbs=True):
    """Road over every x range from z0 to z1 at the height of the car's road."""
    roads = merge(spans)
    for x0, x1 in roads:
        t.block(x0, x1, z0, z1, t.h)
    if kerbs:
        for k0, k1 in kerb_ranges(roads):
            t.block(k0, k1, z0, z1, t.h + 1, thick=2, top_tex="accent", side="side")


def road_span(t):
    """The leftmost and rightmost road edges laid so far (kerbs aside)."""
    xs = []
    for line in t.lines:
        w = line.split()
        if w[0] == "block" and not line.rstrip().endswith("accent"):
            xs += [float(w[1]), float(w[1]) + float(w[4])]
    return min(xs), max(xs)


def lane(cx, a):
    return (cx - a - 0.4, cx + a + 0.4)


def beside(t, length, others=(), kerbs=True):
    """The car's road on for `length`, with other roads beside it."""
    if length <= 0:
        return
    cover(t, t.z, t.z + length, [lane(t.cx, t.a)] + list(others), kerbs)
    t.z += length


def cross_run(t):
    """Road the car needs to go from one kerb to the other, and a little."""
    return 5 * (2 * t.a) + 6


def reshape(t, a, keep=None):
    """From here on the road is 2a + 0.8 wide. It keeps the edge on side
    `keep` (default: the kerb the car holds, so that the car meets no kerb
    front), 0 keeps the middle."""
    keep = t.side if keep is None else keep
    t.cx += keep * (t.a - a)
    t.a = a


def hold(t, side, run=True):
    """Hold to that kerb; with `run`, lay the road it takes to get there."""
    if t.side == side:
        return
    t.hug(side)
    if run:
        t.road(cross_run(t))


def drift(t, dx, run=7, star=True, stub=0):
    """The road moves sideways a unit every `run` units, the car held to the
    kerb on the side it moves to: that kerb opens ahead of the car and the
    other closes in behind it, more slowly than the car moves across. A
    `stub` long road goes on straight from where the drift starts, and ends
    in nothing."""
    s = 1 if dx > 0 else -1
    hold(t, s)
    # Aim past where the kerb will end up, not where it is now.
    t.act(t.z, "x", t.cx + dx + s * (t.a + FAR))
    steps = abs(int(dx))
    straight, end = lane(t.cx, t.a), t.z + stub
    for i in range(steps):
        t.cx += s
        along = min(run, max(0, end - t.z))
        beside(t, along, [straight])
        beside(t, run - along)
        if star and i == steps // 2:
            t.star_here(-run / 2.0)
    # A stub longer than the drift runs on beside the road after it.
    if t.z < end:
        beside(t, end - t.z, [straight])
    t.pieces.add("drift")


def eye(t, length, lane_a=1, stars=2):
    """The wide road parts into two narrow lanes along its kerbs round a
    hole, and meets again: the car keeps to the lane on its side."""
    s = t.side
    assert s, "track %d: an eye needs a kerb to hold to" % t.number
    cx, a = t.cx, t.a
    d = a - lane_a
    assert d - lane_a - 0.4 >= KERB, "track %d: an eye too narrow for a hole" % t.number
    t.cx, t.a = cx + s * d, lane_a
    for k in range(stars):
        t.star(t.lane_x(), t.h, t.z + length * (k + 1) / (stars + 1.0))
    beside(t, length, [lane(cx - s * d, lane_a)])
    t.cx, t.a = cx, a
    t.pieces.add("eye")


def crossing(t, d, run=7, apex=16, star=True, gap=0):
    """The car's narrow road and a second one, mirrored about the middle,
    cross from side to side: the car's road goes from the kerb it is at
    over to the other side, a unit every `run` units. With a `gap`, both
    roads break off at the turn, to be jumped."""
    s0 = 1 if t.cx > 0 else -1
    middle = t.cx - s0 * d
    mirror = lambda: [lane(2 * middle - t.cx, t.a)]
    # Straight at the turn, time to cross to the kerb the road moves to,
    # aiming past where that kerb ends up.
    t.side = -s0
    t.act(t.z + 0.5, "x", middle - s0 * (d + t.a + FAR))
    beside(t, apex, mirror())
    if gap:
        hop(t, gap, land=16, side=-s0, star=False, others=mirror())
        t.act(t.z, "x", middle - s0 * (d + t.a + FAR))
    for i in range(2 * d):
        t.cx -= s0
        beside(t, run, mirror())
        if star and i == d:
            t.star_here(-run / 2.0)
    t.pieces.add("crossing")


def hop(t, g, dx=0, a=None, land=24, dh=0, side=None, star=True, kerbs=True, others=()):
    """A jump over g units onto an island set dx to the side (and `a` wide):
    the car flies straight on, so the island must lie under it; on it the car
    holds to kerb `side` (0: keeps straight on)."""
    edge = t.z
    car = t.line if t.side == 0 and hasattr(t, "line") else t.lane_x()
    t.act(edge - 8, "x", car)
    takeoff = min(edge + (g + 0.8 - JUMP + (3 if dh > 0 else 0)) / 2.0, edge - 1.5)
    t.act(takeoff, "jump")
    if star:
        t.star(car, t.h + 2, round(takeoff + 8.5))
    t.z = edge + g
    t.h += dh
    t.cx += dx
    t.a = t.a if a is None else a
    # Between kerbs the car may come down in a kerb's lane; with no kerbs
    # it wants room either side.
    margin = 0.4 if kerbs else 0.9
    assert t.x0() + margin <= car <= t.x1() - margin, "track %d: an island beside the car's line at z %s" % (t.number, t.z)
    side = t.side if side is None else side
    beside(t, land, others, kerbs=kerbs)
    if side:
        t.side = side
        t.act(max(edge + g + 3, takeoff + JUMP + 3), "x", t.cx + side * (t.a + 6))
    else:
        # Straight on where it came down.
        t.side = 0
        t.line = car
    t.pieces.add("hop")
