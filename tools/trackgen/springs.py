"""Springboard pieces: bounce pads used for more than one step up, and the
road shapes around them (lanes that move, widen, narrow and part), each
laying down blocks on a Track `t` and the route through them.

A pad throws the car up at 0.45 a frame; under gravity 0.025 it comes back
to the pad's height 36 frames later, 21.6 units on at 0.6 a frame (36 at
full speed), 4 units above the pad at the top. A car coming down on a pad
is thrown up again, so pads can follow pads with nothing between.

Lanes sit on whole numbers (centre `cx`, half-width `a`) so that a car
rubbing a kerb has its middle on a whole number, where the stars are.
"""

from trackkit import FAR

HOP = 21.6        # a pad's throw on the flat at 0.6 a frame
HOP_FAST = 36.0   # the same at full speed
TOP = 4           # how high above the pad the car gets


def flight(rise, speed=0.6):
    """Units along z from a pad to where the car is back down `rise` higher."""
    up, g = 0.45, 0.0125
    frames = (up + (up * up - 4 * g * rise) ** 0.5) / (2 * g)
    return frames * speed


def cross_run(cross):
    """Road a car needs to steer `cross` units across, kerb to kerb."""
    return round(5 * cross + 8)


def plaza(t, cx, a, side, kind="plain", extra=0):
    """Road spanning the lane the car is on and the lane (cx, a), long
    enough to cross: the car ends on the kerb at `side`, which the new lane
    shares with the plaza."""
    x0, x1 = cx - a - 0.4, cx + a + 0.4
    lo, hi = min(t.x0(), x0), max(t.x1(), x1)
    assert (hi if side > 0 else lo) == (x1 if side > 0 else x0), \
        "track %d: the new lane does not share the plaza's kerb at z %s" % (t.number, t.z)
    far = t.cx - side * t.a
    cross = abs((cx + side * a) - far)
    length = cross_run(cross) + extra
    t.block(lo, hi, t.z, t.z + length, t.h, kind)
    t.kerbs(t.z, t.z + length, x0=lo, x1=hi)
    t.cx, t.a = cx, a
    t.hug(side)
    t.z += length
    return length


def pad_row(t, at_side=0, length=2):
    """A pad across the lane (or only the half of it at `at_side`), and
    where it throws the car from."""
    z = t.z
    if at_side == 0:
        t.block(t.x0(), t.x1(), z, z + length, t.h, "bounce")
    else:
        # One half a pad, the other plain road, split at the middle.
        lo, hi = (t.x0(), t.cx) if at_side < 0 else (t.cx, t.x1())
        rest = (t.cx, t.x1()) if at_side < 0 else (t.x0(), t.cx)
        t.block(lo, hi, z, z + length, t.h, "bounce")
        t.block(rest[0], rest[1], z, z + length, t.h)
    t.kerbs(z, z + length)
    t.z = z + length
    return z


def pad_chain(t, hops, island=5, star=True):
    """Pad after pad over gaps: each island is a pad the car comes down on
    and is thrown up from again, until the road goes on."""
    side = t.side
    t.let_go(t.z - 6)
    launch = pad_row(t)
    for k in range(hops):
        if star and k % 2 == 0:
            t.star(t.lane_x(), t.h + TOP, round(launch + HOP / 2))
        land = launch + HOP
        if k < hops - 1:
            t.block(t.x0(), t.x1(), land - 2, land + island - 2, t.h, "bounce")
            t.kerbs(land - 2, land + island - 2)
        else:
            t.z = land - 3
            t.road(26)
            if side:
                t.hug(side, at=land + 4)
        launch = land
    t.pieces.add("pad chain")


def pad_star(t, launch):
    """A star where the car is 15 frames after the pad threw it up at 0.45."""
    t.star(t.lane_x(), t.h + round(0.45 * 15 - 0.0125 * 15 * 15), launch + 9)


def pad_jog(t, cx, a=None, rise=1, gap=8, kind="plain", star=True):
    """A pad throws the car onto a plaza that leads to a lane beside the
    old one (ice makes the crossing a slide)."""
    a = t.a if a is None else a
    side = 1 if cx > t.cx else -1
    t.let_go(t.z - 6)
    launch = pad_row(t)
    if star:
        pad_star(t, launch)
    t.z += gap
    t.h += rise
    land = launch + flight(rise)
    # The crossing starts once the car is down on the plaza.
    start = t.z
    plaza(t, cx, a, side, kind, extra=round(land - start) + 4)
    t.plan[-1] = (land + 3, t.plan[-1][1])
    t.z = max(t.z, start)
    t.road(10)
    if star:
        t.star_here(-4)
    t.pieces.add("pad jog")


def pad_field(t, sides, a=5, trench=10, star=True):
    """A wide field with pads in half its width, each before a trench across
    the field: the car crosses to the side of the next pad, is thrown over
    the trench and comes down to cross again."""
    assert t.cx == 0
    side0 = t.side or -sides[0]
    # Into the field from the lane on its kerb side.
    t.cx, t.a = 0, a
    for k, s in enumerate(sides):
        run = cross_run(2 * a) if s != side0 or k == 0 else 10
        t.block(t.x0(), t.x1(), t.z, t.z + run, t.h)
        t.kerbs(t.z, t.z + run)
        if s != side0 or k == 0:
            t.hug(s, at=t.z + (4 if k == 0 else 0.5))
        t.z += run
        # Longer than the car needs, so that it shows across the field.
        launch = pad_row(t, s, length=6)
        if star:
            t.star(t.lane_x(s), t.h + TOP, round(launch + HOP / 2))
        rest = round(HOP + 4)
        t.z += trench
        t.block(t.x0(), t.x1(), t.z, launch + rest, t.h)
        t.kerbs(t.z, launch + rest)
        t.z = launch + rest
        side0 = s
    t.side = side0
    t.pieces.add("pad field")


def moon_shot(t, rise=0, star=True):
    """Turbo, then a pad at full speed: the longest flight there is, over a
    gap wider than any jump; a stop on the far side, and off again."""
    side = t.side
    t.let_go(t.z - 6)
    t.block(t.x0(), t.x1(), t.z, t.z + 2, t.h, "turbo")
    t.kerbs(t.z, t.z + 2)
    t.act(t.z - 2, "speed", 1)
    t.z += 2
    t.block(t.x0(), t.x1(), t.z, t.z + 14, t.h)
    t.kerbs(t.z, t.z + 14)
    t.z += 14
    # The pad lies a step below the run-up: at full speed a seam level with
    # the road can throw the car, a drop onto the pad cannot.
    edge = t.z
    fall = (2 / 0.025) ** 0.5
    t.h -= 1
    t.block(t.x0(), t.x1(), edge, edge + fall + 6, t.h, "bounce")
    t.kerbs(edge, edge + fall + 6)
    launch = edge + fall
    far = flight(rise + 1, 1.0)
    if star:
        t.star(t.lane_x(), t.h + TOP, round(launch + HOP_FAST / 2))
    t.z = launch + far - 8
    t.h += rise + 1
    t.act(launch + far + 3, "board", 999)
    t.act(launch + far + 3.1, "speed", 0.6)
    t.road(launch + far + 3 + 16 + 30 - t.z)
    if side:
        t.hug(side, at=t.z - 20)
    t.side = side
    t.pieces.add("moon shot")


def eye(t, lanes=(-5, 5), lane_a=1, side=-1, length=40, star=True, danger=True):
    """The road opens into two narrow lanes round a wide hole and closes
    again. The route takes the lane at `side`; the other holds a deadly
    tile. The road goes on along that side's kerb."""
    lx, rx = lanes
    width = max(t.a, 2)
    x0, x1 = lx - lane_a - 0.4, rx + lane_a + 0.4
    # In: a plaza over the whole eye.
    lo, hi = min(t.x0(), x0), max(t.x1(), x1)
    far = t.cx - side * t.a
    target = (lx - lane_a) if side < 0 else (rx + lane_a)
    run = cross_run(abs(target - far))
    t.block(lo, hi, t.z, t.z + run, t.h)
    t.kerbs(t.z, t.z + run, x0=lo, x1=hi)
    t.hug(side)
    t.z += run
    z0 = t.z
    for k, cx in enumerate(lanes):
        taken = (k == 0) == (side < 0)
        l0, l1 = cx - lane_a - 0.4, cx + lane_a + 0.4
        if taken or not danger:
            t.block(l0, l1, z0, z0 + length, t.h)
        else:
            m0, m1 = z0 + length / 2 - 2, z0 + length / 2 + 2
            t.block(l0, l1, z0, m0, t.h)
            t.block(l0, l1, m0, m1, t.h, "deadly", side="accent")
            t.block(l0, l1, m1, z0 + length, t.h)
        t.kerbs(z0, z0 + length, x0=l0, x1=l1)
    t.cx, t.a = (lx, lane_a) if side < 0 else (rx, lane_a)
    if star:
        t.star(t.lane_x(side), t.h, z0 + length / 2)
    t.z = z0 + length
    # Out: the lanes meet on a plaza, which goes on as a road along the
    # taken side's kerb.
    meet = 10
    t.block(x0, x1, t.z, t.z + meet, t.h)
    t.kerbs(t.z, t.z + meet, x0=x0, x1=x1)
    t.z += meet
    edge = x0 if side < 0 else x1
    t.a = width
    t.cx = round(edge + 0.4 + width) if side < 0 else round(edge - 0.4 - width)
    t.side = side
    t.pieces.add("eye")


def beam_bounce(t, side, beam=40, rise=2, star=True):
    """From a wide road a pad by one kerb throws the car up onto a beam one
    lane wide along that kerb; off its end the car drops back to the wide
    road."""
    wide_cx, wide_a = t.cx, t.a
    if t.side != side:
        t.hug(side)
        t.road(cross_run(2 * t.a))
    t.let_go(t.z - 6)
    launch = pad_row(t, side)
    if star:
        t.star(t.lane_x(side), t.h + TOP, launch + 9)
    gap = 8
    t.z += gap
    t.h += rise
    t.cx, t.a = t.lane_x(side) - side, 1
    t.road(beam)
    t.star_here(-beam / 2)
    t.side = side
    t.drop(rise, land=0)
    t.cx, t.a = wide_cx, wide_a
    t.road(20)
    t.pieces.add("beam")


def narrow(t, a):
    """The road narrows to half-width `a` along the kerb the car holds."""
    s = t.side
    assert s, "track %d: narrowing with no kerb held at z %s" % (t.number, t.z)
    t.cx, t.a = t.cx + s * (t.a - a), a


def drift(t, dx, step=7):
    """A one-lane road that drifts sideways a unit a block; the car holds
    the kerb on the side it drifts to and follows it across."""
    s = 1 if dx > 0 else -1
    if t.side != s:
        t.hug(s)
        t.road(cross_run(2 * t.a))
    # Steer for where the drift ends, not for the kerb of the moment.
    t.act(t.z, "x", t.cx + dx + s * (t.a + FAR))
    for k in range(abs(dx)):
        t.cx += s
        t.block(t.x0(), t.x1(), t.z, t.z + step, t.h)
        t.kerbs(t.z, t.z + step)
        t.z += step
    t.pieces.add("drift")


def pad_gap(t, gap=8, rise=0, land=14, star=True):
    """A pad at the end of the road throws the car over a gap; the kerb the
    car held is let be, for the next piece to choose."""
    t.let_go(t.z - 6)
    launch = pad_row(t)
    if star:
        pad_star(t, launch)
    t.z += gap
    t.h += rise
    t.road(land)
    t.pieces.add("pad gap")
