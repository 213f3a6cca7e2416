"""The sixty tracks, ten a zone, and the example user tracks: each written out
piece by piece around one idea that its name tells. Zone 1 teaches one thing
a track; later zones combine what it taught, harder towards the end of each
zone and from zone to zone."""

from trackkit import Track
import bridges
import frost
import springs as pads
import garden
import heights
from training import zone1


# --- zone 2: Sky Bridges, gaps, stones, shuttles and parting ways ------------

def z2(n, name, idea, parts, a=2, spread=1.0):
    # Each sky bridge opens with its own first piece: the parts start at the
    # start line. `spread` scales the road laid between the parts.
    t = Track(n, name, idea)
    t.a = a
    for p in parts:
        p(t)
        t.road(round(Track.spacing * spread))
    t.finish()
    # The camera follows along z only: roads further out leave the picture.
    x0, x1 = bridges.road_span(t)
    assert -8.5 < x0 and x1 < 8.5, "track %d: road out to x %s .. %s" % (n, x0, x1)
    return t


def stones(k, g=5):
    return lambda t: (t.stepping_stones(k, g), t.road(10))


def shuttle(length=10, dist=3, speed=3, direction="right", drop=0.5):
    return lambda t: (t.platform_cross(length, dist, speed, direction, drop), t.road(10))


def parting(side=1, length=40):
    def f(t):
        t.road(34)
        t.split(length, stars_side=side)
        t.road(16)
    return f


def jog(dx):
    return lambda t: t.shift(dx)


def leap(g, dh=0):
    return lambda t: t.gap(g, land=26, dh=dh)


def lanes_in_the_sky():
    def plaza(t):
        t.road(24)
        t.hug(1, at=6)
        bridges.reshape(t, 6, keep=0)
        t.road(30)

    def switch(side, a):
        def f(t):
            bridges.reshape(t, a)
            bridges.hold(t, side)
        return f

    return z2(12, "Lanes in the Sky", "the road parts into two narrow lanes round holes and meets again",
              [plaza, lambda t: bridges.eye(t, 44), switch(-1, 6), lambda t: bridges.eye(t, 80, stars=3),
               leap(5), switch(1, 5), lambda t: bridges.eye(t, 40, stars=1), leap(6), switch(-1, 5),
               lambda t: bridges.eye(t, 30, stars=1), lambda t: bridges.reshape(t, 2)], spread=0)


def long_way_round():
    return z2(11, "Long Way Round", "the straight way ends in the air: out to the side and back, over gaps",
              [lambda t: t.road(30), lambda t: bridges.drift(t, 4, stub=50), lambda t: t.road(30), leap(6),
               lambda t: bridges.drift(t, -8, stub=40), lambda t: t.road(30), leap(7),
               lambda t: bridges.drift(t, 4, stub=30)])


def drift_wood():
    def river(t):
        t.road(30)
        t.hug(1, at=6)
        t.road(10)
        # (gap, the kerb held on the log, its length, a log drifting beside:
        #  its middle, its half width and where it lies from the log's start)
        for g, side, land, (mid, a, z0, z1) in ((5, 1, 30, (-5, 1, -2, 22)), (6, -1, 44, (-3, 1, 12, 46)),
                                                 (5, -1, 26, (-5, 1, 4, 20)), (6, 1, 36, (6, 0.5, -5, 24))):
            z = t.z + g
            bridges.hop(t, g, dx=2 * t.side, land=land, side=side)
            bridges.cover(t, z + z0, z + z1, [bridges.lane(mid, a)])
        t.road(20)

    return z2(17, "Drift Wood", "logs of all lengths, each set off from the last, others drifting by", [river])


def crossings():
    def start(t):
        t.road(20)
        t.hug(1, at=4)
        bridges.reshape(t, 1)
        bridges.drift(t, 4, star=False)
        t.road(10)

    return z2(13, "Crossings", "two narrow roads cross from side to side, again and again, broken at the turns",
              [start, lambda t: bridges.crossing(t, 5), lambda t: bridges.crossing(t, 5, gap=5),
               lambda t: bridges.crossing(t, 5, gap=6), lambda t: t.road(10)])


def the_ferry():
    def pier(t):
        bridges.reshape(t, 1)
        t.road(30)

    def shore(t):
        # Wider out to the left: the piers and landings keep clear of the
        # picture's right edge.
        bridges.reshape(t, 4, keep=1)
        t.road(20)

    return z2(15, "The Ferry", "out along a pier, over on the ferry, onto the far shore; and back",
              [lambda t: (t.road(30), t.hug(1, at=6)), pier, shuttle(12, 3, 3), shore, pier,
               shuttle(14, 4, 3, "left"), shore])


def rope_bridge():
    def anchor(side):
        def f(t):
            bridges.reshape(t, 5, keep=0)
            if side:
                # Out to a star by the anchor's kerb and back to the middle
                # for the next span.
                z = t.z
                t.hug(side, at=z + 1)
                t.star_here(28)
                t.act(z + 30, "x", 0)
                t.side = 0
                t.road(62)
            else:
                t.star_here(12)
                t.road(24)
            bridges.reshape(t, 1, keep=0)
        return f

    return z2(14, "Rope Bridge", "long narrow spans between wide anchors, planks missing",
              [lambda t: t.road(24), anchor(0), lambda t: t.road(90), anchor(1), lambda t: t.road(40), leap(5),
               lambda t: t.road(10), anchor(-1), lambda t: t.road(50), leap(6)], a=1, spread=0.3)


def high_wire():
    def tower(a):
        # A tower the wire is strung to, a step up and wider on both sides:
        # the car jumps onto its top in its lane and rolls straight across,
        # back onto the wire where it left it.
        def f(t):
            side, lane = t.side, t.lane_x()
            t.let_go(t.z - 12)
            t.side = 0
            bridges.reshape(t, a, keep=0)
            t.step_up(1, tread=20, rehug=False)
            t.star(lane, t.h, t.z - 10)
            bridges.reshape(t, 1, keep=0)
            t.side = side
        return f

    def wire(length):
        def f(t):
            t.hug(t.side, at=t.z + 6)
            t.road(length)
            t.star_here(-length / 2)
        return f

    return z2(16, "High Wire", "one long thin wire strung up from tower to tower",
              [lambda t: (t.road(20), t.hug(1, at=4)), wire(30), tower(3), wire(50), tower(5), wire(40), tower(4),
               wire(60), tower(6), wire(30)], a=1)


def stepping_stones():
    def stones(t):
        t.road(30)
        # Every stone in one piece, so that no road is laid between them.
        # (gap, middle of the stone from the car's line, half its width - 0.4, length)
        for g, off, a, land in ((5, -1.5, 2, 22), (5, 0.5, 1, 21), (6, 2, 3, 30), (5, -0.5, 1, 18),
                                (6, -1, 2.5, 26), (5, 1.5, 2, 20), (6, -0.5, 1, 24)):
            # The car keeps straight on along x 0 from the start.
            bridges.hop(t, g, dx=off - t.cx, a=a, land=land, side=0, kerbs=False)
        bridges.hop(t, 6, dx=-t.cx, a=2, land=30, side=0)

    return z2(18, "Stepping Stones", "stones of every size, scattered left and right", [stones])


def cloud_hopper():
    def cloud(g, dx, a, land, side, dh, puff):
        def f(t):
            bridges.hop(t, g, dx=dx, a=a, land=16 + 5 * a, side=side, dh=dh)
            # Once the car is over at its kerb the cloud billows out on the
            # other side.
            bridges.reshape(t, a + puff)
            t.road(land - 26 - 5 * a)
            bridges.reshape(t, a)
            t.road(10)
        return f

    return z2(19, "Cloud Hopper", "wide clouds billowing out, one above the next, crossed side to side",
              [lambda t: (t.road(20), t.hug(-1, at=4)), cloud(6, 0, 4, 64, 1, 0, 1), cloud(5, 2, 3, 52, -1, 1, 1),
               cloud(6, -2, 4, 66, 1, 0, 1), cloud(5, 2, 3, 52, -1, 1, 1), cloud(6, -2, 4, 60, 1, -1, 1)])


def bridge_of_sighs():
    return z2(20, "Bridge of Sighs", "everything the sky bridges have",
              [lambda t: (t.road(20), t.hug(1, at=4), bridges.reshape(t, 5, keep=0), t.road(20)),
               lambda t: bridges.eye(t, 50), lambda t: bridges.reshape(t, 1), lambda t: bridges.drift(t, -4),
               leap(6), shuttle(12, 4, 3, "left"), lambda t: bridges.drift(t, -4),
               lambda t: bridges.crossing(t, 4, gap=5),
               lambda t: t.road(16), leap(6, 1), leap(7)])


def zone2():
    # In the order of their difficulty as measured.
    return [long_way_round(), lanes_in_the_sky(), crossings(), rope_bridge(), the_ferry(), high_wire(), drift_wood(),
            stepping_stones(), cloud_hopper(), bridge_of_sighs()]


# --- zone 3: Frost Run, ice and turbo -----------------------------------------

def icefield(length, sides):
    return lambda t: (t.ice(length, sides=sides), t.road(16))


def flights(*gaps):
    return lambda t: t.turbo_flights(gaps)


def boost(g):
    return lambda t: (t.turbo_jump(g), t.road(10))


def black_ice():
    t = Track(21, "Black Ice", "a ribbon of ice that drifts from side to side: lean on the kerb it moves to")
    t.a = 2
    t.road(30)
    for k, (side, steps) in enumerate(((-1, 4), (1, 8), (-1, 8), (1, 4))):
        # Where the drift turns back, the kerb the car leaves steps in across
        # its old lane: a late hand gets a second more of straight ice first.
        frost.drift(t, side, steps, lead=frost.reach(t, side) + (15 if k else 0))
    t.finish()
    return t


def slide_rule():
    t = Track(23, "Slide Rule", "the road slides a lane at a time on ice, then snaps back across")
    t.a = 3
    t.road(30)
    t.shift(-3, length=10, star=False)
    for k in range(3):
        frost.drift(t, 1, 6, tread=8, star_every=2)
        if k < 2:
            t.shift(-6, length=10, star=False)
    t.finish()
    return t


def frozen_lake():
    t = Track(24, "Frozen Lake", "the road opens onto a lake of ice with holes in it: round each on the far side")
    t.a = 3
    t.road(30)
    for w in (4, 5, 6):
        frost.span(t, -w, w, 6, "ice")
    # Open water on alternate sides; the route leans on the other kerb.
    holes = [((-1, 6), (-6, 1))[k % 2] + (30 + 76 * k, 46 + 76 * k) for k in range(6)]
    z0 = t.z
    for k, (hx0, hx1, dz0, dz1) in enumerate(holes):
        side = -1 if hx0 + hx1 > 0 else 1
        t.side = side
        t.act(z0 + (dz0 - 60 if k else 0) + 0.5, "x", side * 13)
        t.star(side * 7, t.h, z0 + (dz0 + dz1) / 2)
    frost.field(t, -7, 7, holes[-1][3] + 14, holes=holes)
    # Out by the right-hand shore, where the route already is.
    for lo in (-5, -3, -1, 1):
        frost.span(t, lo, 7, 6, "ice")
    t.road(20)
    t.finish()
    return t


def glacier_mouth():
    t = Track(25, "Glacier Mouth", "a wide glacier narrows to its mouth; jump off the end, three times")
    t.a = 2
    t.road(24)
    for side, lo, hi, g in ((1, -7, 6, 8), (-1, -6, 7, 9), (1, -7, 5, 10)):
        frost.splay(t, lo, hi, tread=4)
        frost.span(t, lo, hi, 20, "ice")
        frost.funnel(t, side, 2, tread=5)
        frost.span(t, *frost.lanes(t), 14)
        t.gap(g, land=24)
    t.finish()
    return t


def skid_row():
    t = Track(26, "Skid Row", "rows of deadly tiles across a wide sheet of ice, each open at one kerb")
    t.a = 3
    t.road(30)
    frost.splay(t, -5, 5)
    z0, rows = t.z, []
    for k in range(9):
        side = 1 if k % 2 == 0 else -1
        dz = 30 + 60 * k
        t.side = side
        t.act(z0 + (dz - 56 if k else -12) + 0.5, "x", side * 11)
        # The row leaves the kerb lane free: 1.6 units beside the kerb.
        rows.append((-5.4, 3.8, dz, dz + 4) if side > 0 else (-3.8, 5.4, dz, dz + 4))
        t.star(side * 5, t.h, z0 + dz + 2)
    frost.field(t, -5, 5, rows[-1][3] + 16, deadly=rows)
    t.finish()
    return t


def cold_start():
    t = Track(29, "Cold Start", "a turbo flight to a standstill, then islands to either side: slide out for each star")
    frost.span(t, -6, 1, 30)
    islands = [(-6, 1), (-1, 6)]
    for k in range(4):
        out = -1 if k % 2 == 0 else 1
        frost.slide_out(t, out, -out)
        if k == 0:
            frost.cold_hop(t, *islands[1])
        elif k < 3:
            frost.hop(t, *islands[(k + 1) % 2])
    t.road(10)
    t.finish()
    return t


def polar_express():
    t = Track(22, "Polar Express", "two lines side by side over open water: change lines at the points before yours ends")
    t.a = 3
    t.road(24)
    t.hug(-1, at=4)
    frost.splay(t, -6, 6)
    frost.rails(t, [("both", 40), ("points", 70), ("right", 50), ("both", 30), ("points", 70), ("left", 50),
                    ("points", 70), ("right", 40), ("both", 30), ("points", 70), ("left", 40)])
    frost.span(t, -6, 6, 20, "ice")
    frost.funnel(t, -1, 4)
    t.finish()
    return t


def ice_cannon():
    t = Track(27, "Ice Cannon", "shot from a turbo pad over gap after gap, from one round island to the next")
    t.a = 1
    t.road(40)

    def islands(t, i):
        frost.bead(t, (5, 3, 6, 4, 5, 3, 6, 4)[i], (30, 38, 44, 40, 44, 36, 44, 48)[i])

    frost.flights_between(t, islands, (12, 13, 14, 14, 15, 15, 16))
    frost.span(t, -1, 1, 12)
    t.finish()
    return t


def afterburner():
    t = Track(28, "Afterburner", "full speed over gaps that widen, islands that shrink, set to either side")
    t.a = 3
    t.road(40)

    def islands(t, i):
        a = (3, 3, 3, 2, 2, 2, 2, 1)[i]
        lo = -a if a == 1 else (1 - 2 * a if i % 2 == 0 else -1)
        frost.span(t, lo, lo + 2 * a, (40, 34, 33, 32, 31, 30, 30, 30)[i])

    frost.flights_between(t, islands, (12, 13, 14, 15, 16, 16, 17))
    t.finish()
    return t


def whiteout():
    t = Track(30, "Whiteout", "the whole frost run: drift, lake, mouth and flights")
    t.a = 2
    t.road(24)
    frost.drift(t, -1, 4)
    frost.drift(t, 1, 4)
    t.hug(-1)
    frost.splay(t, -6, 6)
    z0 = t.z
    holes = [(-0.5, 6.4, 30, 42), (-6.4, 0.5, 100, 112), (-0.5, 6.4, 170, 182)]
    t.hug(1, at=z0 + 45)
    t.hug(-1, at=z0 + 115)
    t.star(-6, t.h, z0 + 36)
    t.star(6, t.h, z0 + 106)
    t.star(-6, t.h, z0 + 176)
    frost.field(t, -6, 6, 200, holes=holes, deadly=[(-4.8, 6.4, 16, 20), (-4.8, 6.4, 190, 194)])
    frost.funnel(t, -1, 2)
    frost.span(t, *frost.lanes(t), 16)
    t.gap(6, land=30)
    frost.splay(t, -6, 0)
    frost.drift(t, 1, 4)
    frost.slide_out(t, -1, 1)
    lane = t.lane_x()

    def islands(t, i):
        frost.span(t, lane - (5, 3, 6, 2, 4)[i], lane + (1, 2, 1, 2, 1)[i], 40)

    frost.flights_between(t, islands, (12, 13, 14, 15))
    t.finish()
    return t


def zone3():
    return [
        black_ice(),
        polar_express(),
        slide_rule(),
        frozen_lake(),
        glacier_mouth(),
        skid_row(),
        ice_cannon(),
        afterburner(),
        cold_start(),
        whiteout(),
    ]


# --- zone 4: Crumbling Heights, stairs, terraces and falling ground ----------
# Each track's road moves sideways as it climbs or falls, in a shape of its
# own; the openings differ too (width, kerb held, a ramp or none).

def stairs(k, dh=1):
    return lambda t: [t.step_up(dh, rehug=i == k - 1) for i in range(k)]


def crumble(k, step=1):
    return lambda t: (t.falling_run(k, step), t.road(10))


def rampup(dh, length=8):
    return lambda t: t.ramp_up(dh, length=length, land=24)


def rampdown(dh, length=8):
    return lambda t: t.ramp_down(dh, length=length, land=24)


def down(dh):
    return lambda t: t.drop(dh, land=24)


def to(cx, a, side, star=False):
    return lambda t: (heights.move(t, cx, a, side, star), t.road(10))


def up_stairs(k, dx, dh=1):
    return lambda t: (heights.climb(t, k, dx, dh, star_every=k), t.road(6))


def terraces(k, dx, dh=1):
    return lambda t: (heights.descend(t, k, dx, dh, star_every=k), t.road(6))


def scree(k, dx, step=1):
    return lambda t: (heights.scree(t, k, dx, step), t.road(6))


def patches(sides, slack=8):
    return lambda t: (heights.gravel(t, sides, slack=slack), t.road(10))


def caved(take, g, lane_a=1, crumbling=False):
    """A ledge along one kerb with a hole in it to jump; the other ledge
    runs on beside it, whole or crumbling."""
    other = heights.crumbling_lane if crumbling else None
    return lambda t: (heights.eye(t, lane_a, take, lambda t: (t.road(24), t.gap(g, land=30)), other), t.road(4))


def boulder():
    """A block fallen across the road: up onto it and off again."""
    return lambda t: (t.step_up(1, tread=16), t.drop(1, land=20))


def landing():
    """Level road between two flights of a staircase."""
    return lambda t: t.road(36)


def backs(steps, dx):
    return lambda t: heights.switchback(t, steps, dx)


def sinking(widths):
    return lambda t: heights.sink(t, widths)


def gulf(g):
    """Where the ground has gone altogether: a jump."""
    return lambda t: t.gap(g, land=30)


def over(side):
    """Straight road long enough to steer from kerb to kerb."""
    return lambda t: (t.hug(side), t.road(heights.cross_length(2 * t.a)))


def z4(n, name, idea, parts, a=2, side=1, run=40, cx=0):
    t = Track(n, name, idea)
    t.a, t.cx = a, cx
    t.side = side
    # The first star where the car is against the kerb, well before the
    # first piece's run-up.
    first = 14 + 5 * abs(t.lane_x())
    t.road(max(run, first + 16))
    t.hug(side, at=8)
    t.star(t.lane_x(), t.h, first)
    for p in parts:
        p(t)
        t.road(Track.spacing)
    t.finish()
    return t


def zone4():
    return [
        z4(31, "Cave In", "the road has fallen in down the middle and along one side: jump the holes",
           [to(0, 6, 1), caved(1, 5), over(-1), caved(-1, 6, crumbling=True), over(1), caved(1, 7)], a=2, side=1),
        z4(32, "Rock Fall", "fallen rocks give way across a wide road; keep to the firm side",
           [patches([1, -1, 1, -1, 1], slack=0), boulder(), patches([1, -1, 1, -1, 1], slack=0), boulder()], a=4,
           side=-1),
        z4(33, "Landslide", "long ramps down a wide road that slides across",
           [stairs(2), rampup(4, 24), rampdown(2, 32), to(3, 4, 1), rampdown(2, 32), to(0, 4, -1), scree(2, -3)],
           a=4, side=-1, cx=-3),
        z4(34, "Going Down", "one wide terrace down after another, from side to side",
           [rampup(7, 24), backs(7, 4)], a=3, side=-1),
        z4(35, "Loose Gravel", "crumbling runs slide down and across the road, side to side",
           [rampup(4, 16), scree(3, 5), over(-1), stairs(1), rampup(2), scree(3, -5), over(1), stairs(1), rampup(2),
            scree(3, 5)],
           a=3, side=1, cx=-2),
        z4(36, "Sinking Feeling", "the road crumbles away under the car, narrower after every fall",
           [rampup(4, 16), sinking([5, 4]), over(-1), gulf(5), rampup(4, 16), sinking([3, 2]), over(1), gulf(6),
            rampup(2, 16), sinking([1])], a=6, side=1),
        z4(37, "Avalanche", "wide crumbling slopes that narrow to a lane",
           [stairs(2), rampup(2, 16), to(0, 6, 1), scree(4, 0), to(5, 1, 1), stairs(2), rampup(2, 16), to(0, 6, -1),
            scree(4, 0)], a=1, side=1),
        z4(38, "Tumbledown", "up the stairs one way, down the crumble the other, twice",
           [up_stairs(3, -1), over(1), scree(3, 3), over(-1), up_stairs(3, -1), over(1), scree(3, 3)],
           a=2, side=-1, cx=1),
        z4(39, "Stair Master", "a staircase of walls that turns on a wide landing after every flight",
           [up_stairs(2, 2), to(2, 5, 1), to(6, 1, 1), up_stairs(2, -2), to(-1, 5, -1), rampdown(2, 16),
            to(-5, 1, -1), rampdown(2, 16)],
           a=2, side=1, cx=-1),
        z4(40, "Collapse", "everything in the heights gives way",
           [up_stairs(3, 1), scree(3, 1), to(0, 6, -1), caved(-1, 6, crumbling=True), to(-4, 2, -1),
            up_stairs(2, 2), patches([1, -1]), boulder()], a=2, side=1, cx=-1),
    ]


# --- zone 5: Deadly Garden, deadly tiles ----------------------------------------

def rows(sides, slack=8):
    return lambda t: (t.deadly_zigzag(sides, slack=slack), t.road(10))


def thorns(sides):
    # The garden's rows come quicker than elsewhere: little road is left
    # once the car is across.
    return rows(sides, slack=-1)


def island():
    return lambda t: (t.deadly_island(), t.road(16))


def z5(n, name, idea, parts, a=3):
    t = Track(n, name, idea)
    t.a = a
    t.road(30)
    for p in parts:
        p(t)
        t.road(Track.spacing)
    t.finish()
    return t


def labyrinth(n):
    t = Track(n, "The Labyrinth", "a maze of holes: find the door in every wall")
    t.a = 6
    t.road(30)
    garden.maze(t, [-6, -1, 6, 2, -6, 0, 6, -2, -6])
    t.road(Track.spacing)
    t.finish()
    return t


def narrow_escape(n):
    t = Track(n, "Narrow Escape", "wide plazas, each left by a beam one lane wide")
    t.a = 2
    t.road(30)
    garden.hourglass(t, [(-3, 30, -1), (4, 24, 1), (0, 36, 1), (-4, 24, -1), (3, 30, -1)])
    t.road(20)
    t.finish()
    return t


def minefield(n):
    t = Track(n, "Minefield", "a wide field sown with mines, and one clear way across it")
    t.a = 6
    t.road(20)
    garden.minefield(t, [-1, 1, -1, 1, -1, 1], clear=0.705)
    t.road(10)
    t.finish()
    return t


def thorn_hedge(n):
    t = Track(n, "Thorn Hedge", "a hedge of thorns down the middle, crossed where it breaks")
    t.a = 2
    t.road(30)
    t.hug(1, at=10)
    garden.hedge(t, [1, -1, 1, -1, 1, -1, 1, -1, 1], length=34)
    t.road(10)
    t.finish()
    return t


def poison_path(n):
    # A field all poison but for the path that winds across it from kerb
    # to kerb.
    t = Track(n, "Poison Path", "a path winds through a field of poison from kerb to kerb")
    t.a = 5
    t.road(24)
    garden.poison(t, [1, -1, 1, -1, 1, -1])
    t.road(20)
    t.finish()
    return t


def sting(n):
    t = Track(n, "Sting", "rows of thorns on a road that narrows to a point: quicker and quicker")
    t.a = 6
    t.road(30)
    garden.taper(t, [1, -1, 1, -1, 1, -1, 1, -1, 1, -1, 1, -1, 1])
    t.road(20)
    t.finish()
    return t


def last_breath(n):
    t = Track(n, "Last Breath", "an ice rink with thorn islands: slide from kerb to kerb between them")
    t.a = 4
    t.road(30)
    garden.rink(t, [1, -1, 1, -1, 1, -1, 1])
    t.road(20)
    t.finish()
    return t


def nightshade(n):
    t = Track(n, "Nightshade", "islands of thorns a jump apart, each off to the side of the last")
    t.a = 2
    t.road(30)
    t.hug(1, at=8)
    garden.stagger(t, [(3, 46), (3, 62), (-3, 44), (-3, 68), (3, 50)])
    t.road(10)
    t.finish()
    return t


def deadly_nightshade(n):
    t = Track(n, "Deadly Nightshade", "terraces of thorns, a lane left free on each")
    t.a = 5
    t.road(30)
    garden.terraces(t, [(-5, 1, 72), (0, 1, 66), (5, 1, 72), (0, -1, 66), (-5, -1, 72), (0, -1, 66), (5, 1, 72)])
    t.road(10)
    t.finish()
    return t


def garden_of_doom(n):
    t = Track(n, "Garden of Doom", "the whole garden: maze, hedge, islands, rink and a narrowing way out")
    t.a = 5
    t.road(30)
    garden.maze(t, [-5, 0, 5], depth=5)
    garden.resize(t, 2)
    t.road(10)
    garden.hedge(t, [1, -1, 1], length=20)
    t.road(10)
    garden.stagger(t, [(-3, 46), (3, 46)])
    garden.resize(t, 4)
    t.road(10)
    garden.rink(t, [-1, 1], island=20)
    t.road(16)
    t.hug(1)
    t.road(20)
    garden.taper(t, [1, -1, 1, -1, 1])
    t.road(10)
    t.finish()
    return t


def zone5():
    order = [
        poison_path,
        thorn_hedge,
        narrow_escape,
        labyrinth,
        last_breath,
        sting,
        minefield,
        nightshade,
        deadly_nightshade,
        garden_of_doom,
    ]
    return [make(41 + i) for i, make in enumerate(order)]


# --- zone 6: Springboard, bounce pads and everything ------------------------

def pad(rise, gap=8):
    return lambda t: (t.bounce(rise, gap=gap), t.road(6))


def chain(hops):
    return lambda t: (pads.pad_chain(t, hops), t.road(6))


def pjog(cx, rise=1, a=None, kind="plain"):
    return lambda t: pads.pad_jog(t, cx, a=a, rise=rise, kind=kind)


def field(sides):
    return lambda t: pads.pad_field(t, sides)


def moon(rise=0):
    return lambda t: (pads.moon_shot(t, rise), t.road(6))


def beam(side):
    return lambda t: pads.beam_bounce(t, side)


def zig(*moves):
    # A drift each way, a pad at every turn.
    def f(t):
        for k, dx in enumerate(moves):
            if k:
                pads.pad_gap(t)
            pads.drift(t, dx)
    return f


def eye(side, length=40):
    return lambda t: (pads.eye(t, side=side, length=length), t.road(10))


def slope_down(dh, length=24):
    # A long ramp, a gentle slope the car stays on.
    return lambda t: t.ramp_down(dh, length=length, land=20)


def narrowed(a):
    return lambda t: (pads.narrow(t, a), t.road(10))


def kerb_start(side):
    def f(t):
        t.road(40)
        t.hug(side, at=8)
        t.star_here(-4)
    return f


def short_start(t):
    # Straight at the first piece: the car starts in the middle of the road.
    t.road(22)


def wide_start(a, side):
    def f(t):
        t.a = a
        t.road(50)
        t.hug(side, at=4)
        t.star_here(-4)
    return f


def z6(n, name, idea, parts, a=2, opening=kerb_start(-1)):
    t = Track(n, name, idea)
    t.a = a
    opening(t)
    for p in parts:
        p(t)
        t.road(Track.spacing)
    t.finish()
    return t


def zone6():
    return [
        z6(51, "Ricochet", "a one-lane road zigzags kerb to kerb, thrown back by a pad at every turn",
           [zig(-5, 10, -10, 10, -10, 5)], a=1, opening=kerb_start(1)),
        z6(52, "Sky High", "pads up the sky step by step sideways, a long slope down",
           [jog(-4), pjog(0, rise=2), pad(2), pjog(4, rise=2), slope_down(6, 30), pjog(0, rise=2), pad(2),
            pjog(-4, rise=2), slope_down(6, 30)],
           opening=kerb_start(-1)),
        z6(53, "Spring Fever", "pads onto ice sheets, left and right",
           [pjog(3, kind="ice"), down(1), pjog(-3, kind="ice"), down(1), pjog(3, kind="ice"), down(1),
            pjog(-3, kind="ice"), down(1)],
           opening=short_start),
        z6(54, "Rebound", "thrown up onto a one-lane beam, dropped back, again by the other kerb",
           [beam(-1), beam(1), beam(-1), beam(1), beam(-1), beam(1)], opening=wide_start(3, -1)),
        z6(55, "Moon Shot", "turbo into a pad: the longest flights there are",
           [leap(6), moon(), jog(-4), moon(-1), jog(8), moon(), jog(-4), moon(-1)],
           opening=kerb_start(1)),
        z6(56, "Trampoline", "a wide field of pads, thrown over its trenches from side to side",
           [field([-1, 1, -1, -1, 1, -1, 1]), narrowed(2)], opening=short_start),
        z6(57, "Grand Tour", "a tour of every zone: an eye in the sky, ice, a wall, crumble, thorns, a pad",
           [eye(-1), leap(6), icefield(40, [1, -1]), jog(4), stairs(1), crumble(2), rows([1, -1, 1]), pad(2),
            down(2), shuttle(10, 3, 3)],
           opening=short_start),
        z6(58, "Everything Goes", "every piece there is",
           [rampup(2), crumble(2), pad(2), down(2), thorns([1, -1]), eye(1), chain(3), icefield(40, [1, -1]),
            boost(12), stairs(1), down(1)], opening=kerb_start(1)),
        z6(59, "Pogo", "islands that are all pad: bounce, bounce, bounce",
           [chain(5), jog(-4), chain(5), jog(6), chain(5), jog(-4), chain(4)], opening=short_start),
        z6(60, "Finale", "the hardest of everything",
           [pad(2), leap(8), down(2), shuttle(12, 4, 3, "left"), eye(-1), rows([1, -1, 1, -1]), stairs(2), down(2),
            leap(8), chain(3), moon()], opening=short_start),
    ]


def levelled(make, length):
    """Builds a track until it fits: straight road spread between its pieces
    to bring it to about `length` units, started at the height that puts its
    lowest road at 1."""
    Track.start, Track.spacing = 40, 0
    t = make()
    parts = max(1, sum(1 for z, w in t.plan if w.startswith("x")))
    Track.spacing = max(0, round((length - t.z) / parts))
    Track.start = 40
    low = make().low
    Track.start = 40 - (low - 1)
    t = make()
    Track.start, Track.spacing = 1, 0
    return t


def all_tracks():
    zones = (zone1, zone2, zone3, zone4, zone5, zone6)
    # Zone 1 about 20 s a track, zone 6 about 45 s, longer towards the end of each zone.
    return [levelled(lambda f=f, i=i: f()[i], 280 + 60 * z + 12 * i) for z, f in enumerate(zones) for i in range(10)]


def sunday_drive():
    a = Track(61, "Sunday Drive", "a gentle side step and a shuttle")
    a.road(40)
    a.hug(1, at=8)
    a.star_here(-4)
    a.ramp_up(2, land=24)
    a.shift(-4)
    a.platform_cross(10, dist=3, speed=2)
    a.finish()
    return a


def pad_party():
    b = Track(62, "Pad Party", "three bounce pads")
    b.road(40)
    b.hug(-1, at=8)
    b.star_here(-4)
    b.bounce(1, gap=6)
    b.bounce(2, gap=8)
    b.drop(2)
    b.finish()
    return b


def ice_palace():
    c = Track(63, "Ice Palace", "ice and a turbo jump")
    c.a = 3
    c.road(30)
    c.ice(60, sides=[1, -1])
    c.road(10)
    c.turbo_jump(12)
    c.finish()
    return c


def user_tracks():
    out = []
    for stem, make in (("sunday_drive", sunday_drive), ("pad_party", pad_party), ("ice_palace", ice_palace)):
        t = levelled(make, 0)
        t.number = 1
        out.append((stem, t))
    return out
