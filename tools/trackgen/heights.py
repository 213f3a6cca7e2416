"""Pieces of the Crumbling Heights: roads that move sideways as they climb
and fall, so that a track's shape reads from above.

Every piece takes the Track `t` and works as the pieces in trackkit.py do:
it lays blocks from `t.z` on and writes the route a driver takes. Sideways
moves end against a kerb, as everywhere: the route holds the steering key
towards the kerb the road moves to, and lets go before every jump and every
edge (steering in the air carries the car over a kerb).
"""

from trackkit import FAR


def cross_length(dx):
    """Road a car needs to steer dx units sideways, with a little to spare."""
    return round(5 * abs(dx) + 10)


def move(t, cx, a, side, star=False):
    """A plaza from the road as it is to a road centred on `cx`, `2a + 0.8`
    wide; the route ends against the new road's kerb on `side`, which the
    plaza's kerb on that side runs straight into."""
    old0, old1 = t.x0(), t.x1()
    here = t.lane_x() if t.side else t.cx
    t.cx, t.a = cx, a
    new0, new1 = t.x0(), t.x1()
    assert (new1 >= old1) if side > 0 else (new0 <= old0), \
        "track %d: the plaza's kerb on the route's side must lead on" % t.number
    lo, hi = min(old0, new0), max(old1, new1)
    plaza = cross_length(t.lane_x(side) - here)
    t.block(lo, hi, t.z, t.z + plaza, t.h)
    t.kerbs(t.z, t.z + plaza, x0=lo, x1=hi)
    t.side = 0
    t.hug(side)
    if star:
        t.star(t.lane_x(side), t.h, round(t.z + plaza - 3))
    t.z += plaza
    t.pieces.add("plaza")


def climb(t, steps, dx, dh=1, star_every=0):
    """A staircase that drifts sideways: every tread a wall higher and dx
    further over. The route jumps each face from the kerb it holds, lands,
    and steers to the new tread's kerb before the next run-up."""
    s = 1 if dx > 0 else -1
    if t.side != s:
        t.hug(s, at=t.z - cross_length(2 * t.a) - 12)
    tread = cross_length(dx) + 22
    for i in range(steps):
        face = t.z
        t.let_go(face - 12)
        t.act(face - 8.4, "jump")
        if star_every and i % star_every == star_every - 1:
            t.star(t.lane_x(), t.h, face - 14)
        t.h += dh
        t.cx += dx
        t.block(t.x0(), t.x1(), face, face + tread, t.h, thick=dh + 1)
        t.kerbs(face, face + tread)
        t.z = face + tread
        # Down again 8 units past the face; then over to the new kerb.
        t.hug(s, at=face + 10)
    t.pieces.add("drifting stairs")


def descend(t, steps, dx, dh=1, star_every=0):
    """Terraces down and sideways: drive off each edge without steering,
    then over to the lower terrace's kerb."""
    s = 1 if dx > 0 else -1
    if t.side != s:
        t.hug(s, at=t.z - cross_length(2 * t.a) - 8)
    tread = cross_length(dx) + 16
    for i in range(steps):
        edge = t.z
        t.let_go(edge - 6)
        t.h -= dh
        t.cx += dx
        t.block(t.x0(), t.x1(), edge, edge + tread, t.h, thick=1)
        t.kerbs(edge, edge + tread)
        if star_every and i % star_every == star_every - 1:
            t.star(t.lane_x(), t.h, round(edge + tread - 3))
        t.z = edge + tread
        t.hug(s, at=edge + 8)
    t.pieces.add("terraces down")


def scree(t, count, dx, step=1, length=3, land=20, star=True):
    """Falling blocks that slide dx sideways in all as they step down: the
    car runs straight over them, not steering, and finds the road again
    below, the kerb it held now dx further over."""
    side = t.side
    assert side * dx >= 0 and abs(dx) < 2 * t.a, "track %d: the scree leaves the car behind" % t.number
    t.let_go(t.z - 6)
    cx0 = t.cx
    for i in range(count):
        t.h -= step if i else 0
        t.cx = cx0 + dx * i / float(count)
        t.block(t.x0(), t.x1(), t.z, t.z + length, t.h, "falling")
        t.z += length
    t.h -= step
    t.cx = cx0 + dx
    start = t.z
    t.road(land + cross_length(dx) - 10)
    if side:
        t.hug(side, at=start + 4)
        if star:
            t.star(t.lane_x(side), t.h, round(t.z - 3))
    t.pieces.add("scree")


def eye(t, lane_a, take, build, other=None, stars=0):
    """The road parts into two narrow lanes along its kerbs, a hole between
    them, and meets again. The route is against the kerb of the lane it
    takes before the lanes part. `build(t)` lays the lane taken with the
    usual pieces, as if it were the whole road (it must end at the height
    it began); `other(t, x0, x1, z0, z1)` lays the lane not taken, plain
    road by default."""
    w = 2 * lane_a + 0.8
    z0, h0, cx, a = t.z, t.h, t.cx, t.a
    lanes = [(t.x0(), t.x0() + w), (t.x1() - w, t.x1())]
    assert lanes[0][1] + 1 < lanes[1][0] - 1, "track %d: the eye has no hole" % t.number
    taken = lanes[0 if take < 0 else 1]
    t.cx, t.a = (taken[0] + taken[1]) / 2.0, lane_a
    build(t)
    assert abs(t.h - h0) < 1e-6, "track %d: the lanes of an eye meet at one height" % t.number
    z1 = t.z
    for k in range(stars):
        t.star(t.lane_x(take), t.h, round(z0 + 6 + (z1 - z0 - 12) * k / max(1.0, stars - 1.0)))
    t.cx, t.a = cx, a
    l0, l1 = lanes[1 if take < 0 else 0]
    if other is not None:
        other(t, l0, l1, z0, z1)
    else:
        t.block(l0, l1, z0, z1, t.h)
    t.kerbs(z0, z1, x0=l0, x1=l1)
    t.pieces.add("eye")


def crumbling_lane(t, l0, l1, z0, z1):
    """A lane of falling blocks stepping down, for the way not taken."""
    h, z = t.h, z0
    while z < z1:
        t.block(l0, l1, z, min(z + 3, z1), h, "falling")
        z += 3


def gravel(t, sides, row=6, slack=8, star=True):
    """Patches of loose ground that give way under the car, across the road
    but for the lane along one kerb; the free lane changes side from patch
    to patch."""
    for s in sides:
        if s != t.side:
            t.hug(s)
        t.road(5 * (2 * t.a) + slack)
        if s > 0:
            p0, p1 = t.x0(), t.x1() - 1.6
        else:
            p0, p1 = t.x0() + 1.6, t.x1()
        rest = (t.x0(), p0) if s < 0 else (p1, t.x1())
        t.block(p0, p1, t.z, t.z + row, t.h, "falling")
        t.block(rest[0], rest[1], t.z, t.z + row, t.h)
        t.kerbs(t.z, t.z + row)
        if star:
            t.star(t.lane_x(s), t.h, t.z + row / 2)
        t.z += row
    t.pieces.add("gravel")


def switchback(t, steps, dx, dh=1):
    """Wide terraces down, each set dx to one side of the last and the next
    back again: the route crosses every terrace to the kerb on the side the
    next one lies, and drives off the edge without steering."""
    s = 1 if dx > 0 else -1
    for i in range(steps):
        side = s if i % 2 == 0 else -s
        if t.side != side:
            t.hug(side)
            t.road(cross_length(2 * t.a))
        descend(t, 1, side * abs(dx), dh, star_every=1)
        t.road(6)
    t.pieces.add("switchback")


def sink(t, widths, count=2, star=True):
    """The road crumbles away a step at a time and is narrower below each
    crumbling run, its edge on the held kerb's side staying where it is."""
    side = t.side
    assert side, "track %d: sinking needs a kerb to hold to" % t.number
    for a in widths:
        assert a < t.a, "track %d: the road must narrow as it sinks" % t.number
        t.falling_run(count)
        t.cx += side * (t.a - a)
        t.a = a
        t.road(cross_length(2) + 8)
        if star:
            t.star(t.lane_x(side), t.h, round(t.z - 4))
    t.pieces.add("sinking")
