"""Pieces for building Quorbit tracks as text: a Track collects blocks, ramps,
platforms and stars as `.trk` lines and, beside them, the route a driver
takes (the plan read by quorbit-solve).

How the pieces are made to be fair to hands on keys:

* The road runs between kerbs, one unit high. A driver lines up by holding a
  steering key until the car rubs the kerb, so every sideways move ends in
  the same place however long the key was held. Road edges sit 0.4 off a
  whole number, so the car's middle is then on a whole number, where the
  stars are.
* The camera follows the car only along z, from a fixed height: roads stay
  within x -8..8 and below y 8, where the car and what lies ahead are in the
  picture.
* Up is held from the start, so the car runs at 0.6 a frame (15 units a
  second) and jumps 16.8 units on the flat; gaps and steps leave a take-off
  stretch several units long.
* Moving platforms lie a step below the road: the car drops onto them; they
  are never a face at road level.

The road is `2a + 0.8` wide centred on `cx`, its top at `h`; `z` is where
the next piece starts; `side` is the kerb the route holds to (-1 left,
+1 right, 0 none).
"""

ZONE_LOOK = {
    # zone: (road top, kerb and wall faces, accent, platform)
    1: ("road.bmp", "wall.bmp", "edge.bmp", "platform.bmp"),
    2: ("road_alt.bmp", "edge.bmp", "wall.bmp", "platform.bmp"),
    3: ("road_alt.bmp", "wall.bmp", "edge.bmp", "platform.bmp"),
    4: ("road.bmp", "edge.bmp", "wall.bmp", "platform.bmp"),
    5: ("road.bmp", "wall.bmp", "AnimationTest_0.bmp", "platform.bmp"),
    6: ("road_alt.bmp", "edge.bmp", "AnimationTest_0.bmp", "platform.bmp"),
}

KIND_TEX = {"finish": "flag", "bounce": "pad", "ice": "icy", "falling": "drop",
            "turbo": "boost", "deadly": "danger"}

JUMP = 16.8       # units a jump carries the car on the flat at 0.6
FAR = 6           # a lane target this far past a kerb means "hold against it"


def fmt(v):
    v = round(float(v), 3)
    return str(int(v)) if v == int(v) else ("%g" % v)


class Track:
    # The height the first road starts at; make_tracks.py lowers or raises a
    # whole track with it so that its lowest road is at 1.
    start = 1
    # Straight road laid between the pieces of a recipe (see zones.py).
    spacing = 0

    def __init__(self, number, name, idea=""):
        self.number = number
        self.zone = (number - 1) // 10 + 1 if number <= 60 else 1
        self.name = name
        self.idea = idea
        self.lines = []
        self.plan = []
        self.kinds = set()
        self.pieces = set()
        self.stars = 0
        self.platforms = 0
        self.z = -5.0
        self.h = Track.start
        self.low, self.high = 1e9, -1e9
        self.cx = 0
        self.a = 2
        self.side = 0
        self.at_speed = False
        self.open_blocks = {}

    # --- raw objects -------------------------------------------------------
    def block(self, x0, x1, z0, z1, top, kind="plain", thick=1, top_tex="road", side="side"):
        assert x1 > x0 and z1 > z0, "track %d: an empty block at z %s" % (self.number, z0)
        if top_tex != "accent":
            self.low, self.high = min(self.low, top), max(self.high, top)
        tex = KIND_TEX.get(kind, top_tex)
        # A block that carries on one just laid, alike in all but length,
        # lengthens it: one object where a row of them would do the same.
        like = (round(x0, 3), round(x1, 3), round(top, 3), thick, kind, tex, side)
        if kind == "plain" and like in self.open_blocks:
            index, start, end = self.open_blocks[like]
            if abs(end - z0) < 1e-6:
                self.lines[index] = self.block_line(x0, x1, start, z1, top, thick, side, tex, kind)
                self.open_blocks[like] = (index, start, z1)
                return
        self.open_blocks[like] = (len(self.lines), z0, z1)
        if kind != "plain":
            self.kinds.add(kind)
        self.lines.append(self.block_line(x0, x1, z0, z1, top, thick, side, tex, kind))

    @staticmethod
    def block_line(x0, x1, z0, z1, top, thick, side, tex, kind):
        line = "  block %s %s %s  %s %s %s  tex %s %s %s %s" % (
            fmt(x0), fmt(top - thick), fmt(z0), fmt(x1 - x0), fmt(thick), fmt(z1 - z0), side, side, side, tex)
        return line + ("  " + kind if kind != "plain" else "")

    def platform(self, x0, width, z0, length, top, direction, speed, dist):
        self.low, self.high = min(self.low, top), max(self.high, top)
        self.lines.append("  platform %s %s %s  %s 1 %s  tex side side side plat  dir %s speed %d dist %d  loop" % (
            fmt(x0), fmt(top - 1), fmt(z0), fmt(width), fmt(length), direction, speed, dist))
        self.kinds.add("platform")
        index = self.platforms
        self.platforms += 1
        return index

    def ramp(self, x0, y, z0, sx, sy, sz, rot):
        self.lines.append("  ramp %d %d %d  %d %d %d  tex slope side  rot %d" % (x0, y, z0, sx, sy, sz, rot))
        self.kinds.add("ramp")

    def star(self, x, y, z):
        assert abs(x - round(x)) < 1e-6, "track %d: a star off the whole numbers at z %s" % (self.number, z)
        self.lines.append("  star %d %d %d" % (round(x), round(y), round(z)))
        self.stars += 1

    def act(self, z, *words):
        self.plan.append((float(z), " ".join(fmt(w) if isinstance(w, (int, float)) else w for w in words)))

    # --- where the car is ----------------------------------------------------
    def x0(self):
        return self.cx - self.a - 0.4

    def x1(self):
        return self.cx + self.a + 0.4

    def lane_x(self, side=None):
        side = self.side if side is None else side
        return self.cx + side * self.a

    def hug(self, side, at=None):
        """From z on, hold the steering key towards that kerb."""
        self.side = side
        self.act(self.z + 0.5 if at is None else at, "x", self.cx + side * (self.a + FAR))

    def let_go(self, at):
        """Stop steering where the car is (it rubs the kerb, so that is its lane)."""
        self.act(at, "x", self.lane_x())

    # --- road ----------------------------------------------------------------
    def road(self, length, kerbs=True, kind="plain", top_tex="road"):
        if length <= 0 or self.at_speed:
            # After the last turbo flight the car runs to the flag at full
            # speed, on the one block it landed on.
            return
        z0, z1 = self.z, self.z + length
        self.block(self.x0(), self.x1(), z0, z1, self.h, kind, top_tex=top_tex)
        if kerbs:
            self.kerbs(z0, z1)
        self.z = z1

    def kerbs(self, z0, z1, left=True, right=True, x0=None, x1=None):
        x0 = self.x0() if x0 is None else x0
        x1 = self.x1() if x1 is None else x1
        if left:
            self.block(x0 - 1, x0, z0, z1, self.h + 1, thick=2, top_tex="accent", side="side")
        if right:
            self.block(x1, x1 + 1, z0, z1, self.h + 1, thick=2, top_tex="accent", side="side")

    def star_here(self, dz, side=None, up=0):
        self.star(self.lane_x(side), self.h + up, self.z + dz)

    def finish(self, run=12):
        self.road(run)
        self.block(self.x0(), self.x1(), self.z, self.z + 4, self.h, "finish")
        self.kerbs(self.z, self.z + 4)
        self.z += 4

    # --- features ----------------------------------------------------------
    def weave_stars(self, length, sides, up=0):
        """Kerb to kerb along a straight: a star on each side in turn."""
        span = 5 * (2 * self.a) + 6  # units to cross the road, and a little
        self.pieces.add("weave")
        for s in sides:
            if s != self.side:
                self.hug(s)
            self.road(span)
            self.star_here(-3, up=up)
        self.road(max(0, length - span * len(sides)))

    def gap(self, g, land=24, dh=0, star=True):
        """A jump over g units of nothing, landing dh higher (or lower)."""
        edge = self.z
        self.let_go(edge - 8)
        # The middle of the take-off stretch: late enough to reach the far
        # side, early enough to leave before the edge.
        takeoff = edge + (g + 0.8 - JUMP + (3 if dh > 0 else 0)) / 2.0
        takeoff = min(takeoff, edge - 1.5)
        self.act(takeoff, "jump")
        if star:
            self.star(self.lane_x(), self.h + 2, round(takeoff + 8.5))
        self.z = edge + g
        self.h += dh
        side = self.side
        self.road(land)
        if side:
            # Steering only once the car is down again: in the air it would
            # carry the car over the kerb.
            self.hug(side, at=max(edge + g + 3, takeoff + JUMP + 3))
        self.pieces.add("gap")

    def step_up(self, dh=1, tread=22, star=False, rehug=True):
        """A wall a jump high: jump before its face."""
        face = self.z
        if self.side:
            self.let_go(face - 12)
        self.act(face - 8.4, "jump")
        if star:
            self.star(self.lane_x(), self.h + 2, face - 4)
        self.h += dh
        side = self.side
        self.block(self.x0(), self.x1(), face, face + tread, self.h, thick=dh + 1, side="side")
        self.kerbs(face, face + tread)
        self.z = face + tread
        if side and rehug:
            self.hug(side, at=face + 10)
        self.side = side
        self.pieces.add("step up")

    def drop(self, dh=1, land=20):
        """Down a step: just drive off the edge, not steering (the kerbs of
        the lower road are no higher than the road above)."""
        side, edge = self.side, self.z
        if side:
            self.let_go(edge - 6)
        self.h -= dh
        self.road(land)
        if side:
            self.hug(side, at=edge + 8)
        self.pieces.add("drop")

    def ramp_up(self, dh=2, length=8, land=20):
        # Ramps sit on whole units: they reach under the kerbs on either
        # side so that the car's lane along a kerb runs onto them.
        side = self.side
        self.let_go(self.z - 6)
        self.ramp(self.cx - self.a - 1, self.h, self.z, 2 * self.a + 2, dh, length, 0)
        self.z += length
        self.h += dh
        self.block(self.x0(), self.x1(), self.z, self.z + land, self.h, thick=dh + 1)
        self.kerbs(self.z, self.z + land)
        self.z += land
        if side:
            self.hug(side, at=self.z - land + 3)
        self.pieces.add("ramp up")

    def ramp_down(self, dh=2, length=8, land=20):
        side = self.side
        self.let_go(self.z - 6)
        self.ramp(self.cx - self.a - 1, self.h - dh, self.z, 2 * self.a + 2, dh, length, 2)
        self.h -= dh
        self.z += length
        self.road(land)
        if side:
            self.hug(side, at=self.z - land + 3)
        self.pieces.add("ramp down")

    def shift(self, dx, length=20, star=True):
        """The road moves sideways: a wide junction, then the new lane. The
        route holds to the kerb on the side it moves to."""
        s = 1 if dx > 0 else -1
        old0, old1 = self.x0(), self.x1()
        new_cx = self.cx + dx
        lo, hi = min(old0, old0 + dx), max(old1, old1 + dx)
        # From the far kerb of the old lane to the near one of the new.
        cross = abs(dx) + 2 * self.a
        plaza = round(5 * cross + 8)
        self.block(lo, hi, self.z, self.z + plaza, self.h)
        self.kerbs(self.z, self.z + plaza, x0=lo, x1=hi)
        self.cx = new_cx
        self.hug(s)
        self.z += plaza
        self.road(length)
        if star:
            self.star_here(-length / 2)
        self.pieces.add("side shift")

    def split(self, length=40, hole=2, stars_side=1, danger=True):
        """The road parts round a hole and meets again: one way holds the
        stars, the other a deadly tile."""
        assert self.a >= 2
        z0 = self.z
        mid0, mid1 = self.cx - hole / 2.0, self.cx + hole / 2.0
        self.kerbs(z0, z0 + length)
        if self.side != stars_side:
            self.hug(stars_side, at=z0 - 5 * (2 * self.a) - 6)
        for k in range(2):
            self.star(self.lane_x(stars_side), self.h, z0 + length * (k + 1) / 3.0)
        lanes = [(self.x0(), mid0), (mid1, self.x1())]
        for k, (l0, l1) in enumerate(lanes):
            tile = danger and (k == 0) == (stars_side > 0)
            if not tile:
                self.block(l0, l1, z0, z0 + length, self.h)
                continue
            t0, t1 = z0 + length / 2 - 2, z0 + length / 2 + 2
            self.block(l0, l1, z0, t0, self.h)
            self.block(l0, l1, t0, t1, self.h, "deadly", side="accent")
            self.block(l0, l1, t1, z0 + length, self.h)
        self.z = z0 + length
        self.pieces.add("split")

    def bounce(self, rise=2, gap=8, land=26, star=True):
        """A pad that throws the car over a gap onto higher road."""
        side = self.side
        self.let_go(self.z - 6)
        self.block(self.x0(), self.x1(), self.z, self.z + 2, self.h, "bounce")
        self.kerbs(self.z, self.z + 2)
        launch = self.z
        if star:
            # Where the car is 15 frames after the pad threw it up at 0.45.
            self.star(self.lane_x(), self.h + round(0.45 * 15 - 0.0125 * 15 * 15), launch + 9)
        self.z += 2 + gap
        self.h += rise
        self.road(land)
        if side:
            self.hug(side, at=launch + 2 + gap + 14)
        self.pieces.add("bounce")

    def ice(self, length, sides=(), star=True):
        """Ice between kerbs: the car slides on when the key is let go, so it
        ends against a kerb either way. Each crossing gets the road it needs."""
        z0 = self.z
        step = 5 * (2 * self.a) + 12
        length = max(length, step * len(sides) + 8)
        self.block(self.x0(), self.x1(), z0, z0 + length, self.h, "ice")
        self.kerbs(z0, z0 + length)
        for k, s in enumerate(sides):
            self.hug(s, at=z0 + step * k + 1)
            if star:
                self.star(self.lane_x(s), self.h, z0 + step * (k + 1) - 3)
        self.z = z0 + length
        self.pieces.add("ice")

    def turbo_jump(self, g=12, star=True):
        """A turbo pad and a long flight over a gap at full speed; then a
        stop to a standstill, and off again from rest."""
        side = self.side
        self.let_go(self.z - 6)
        self.block(self.x0(), self.x1(), self.z, self.z + 2, self.h, "turbo")
        self.kerbs(self.z, self.z + 2)
        self.act(self.z - 2, "speed", 1)
        self.z += 2
        # The run-up to the gap in one block.
        self.block(self.x0(), self.x1(), self.z, self.z + 14, self.h)
        self.kerbs(self.z, self.z + 14)
        self.z += 14
        edge = self.z
        takeoff = min(edge + (g + 0.8 - 28) / 2.0, edge - 2)
        self.act(takeoff, "jump")
        if star:
            self.star(self.lane_x(), self.h + 2, round(takeoff + 14))
        self.z = edge + g
        # Down after landing until the car stands (a "board" of no platform),
        # a moment standing, then Up again.
        self.act(takeoff + 31, "board", 999)
        self.act(takeoff + 31.1, "speed", 0.6)
        self.road(takeoff + 31 + 16 + 30 - self.z)
        if side:
            self.hug(side, at=self.z - 20)
        self.side = side
        self.pieces.add("turbo jump")

    def turbo_flights(self, gaps, star=True):
        """A turbo pad, then gap after gap taken at full speed to the flag.
        No stop follows a flight: a stop is timed by the clock while the pad
        is met at a place, so every stop carries a timing slip into the next
        flight, larger each time; at full speed to the end nothing adds up.
        Every landing is one block."""
        self.let_go(self.z - 6)
        self.block(self.x0(), self.x1(), self.z, self.z + 2, self.h, "turbo")
        self.kerbs(self.z, self.z + 2)
        self.act(self.z - 2, "speed", 1)
        self.z += 2
        run = 16
        for i, g in enumerate(gaps):
            self.block(self.x0(), self.x1(), self.z, self.z + run, self.h)
            self.kerbs(self.z, self.z + run)
            self.z += run
            edge = self.z
            # The middle of the take-off stretch at full speed (28 units a jump).
            takeoff = edge + (g - 27.2) / 2.0
            self.act(takeoff, "jump")
            if star:
                self.star(self.lane_x(), self.h + 2, round(takeoff + 14))
            self.z = edge + g
            # From the landing to the next take-off stretch.
            run = (takeoff + 28 - self.z) + 18
        # The last landing runs on to the flag in one block with it.
        self.block(self.x0(), self.x1(), self.z, self.z + run + 12, self.h)
        self.kerbs(self.z, self.z + run + 12)
        self.z += run + 12
        self.at_speed = True
        self.pieces.add("turbo flights")

    def falling_run(self, count, step=1, length=3):
        """Blocks that drop away under the car, each a step lower."""
        side = self.side
        self.let_go(self.z - 6)
        for i in range(count):
            self.h -= step if i else 0
            self.block(self.x0(), self.x1(), self.z, self.z + length, self.h, "falling")
            self.z += length
        self.h -= step
        self.road(20)
        if side:
            self.hug(side, at=self.z - 16)
        self.pieces.add("falling")

    def deadly_zigzag(self, sides, row=6, star=True, slack=8):
        """Deadly tiles across the road but for the lane along one kerb; the
        free lane changes side from row to row. `slack` is the road left
        over once the car has crossed: less of it, quicker changes."""
        cross = 5 * (2 * self.a) + slack
        for s in sides:
            if s != self.side:
                self.hug(s)
            self.road(cross)
            free = self.lane_x(s)
            # The tile leaves the kerb lane free: 1.6 units beside the kerb.
            if s > 0:
                tx0, tx1 = self.x0(), self.x1() - 1.6
            else:
                tx0, tx1 = self.x0() + 1.6, self.x1()
            self.block(tx0, tx1, self.z, self.z + row, self.h, "deadly", side="accent")
            rest = (self.x0(), tx0) if s < 0 else (tx1, self.x1())
            self.block(rest[0], rest[1], self.z, self.z + row, self.h)
            self.kerbs(self.z, self.z + row)
            if star:
                self.star(free, self.h, self.z + row / 2)
            self.z += row
        self.pieces.add("deadly rows")

    def deadly_island(self, length=8):
        """A deadly tile in the middle of the road: keep to either kerb."""
        self.block(self.x0(), self.cx - 0.8, self.z, self.z + length, self.h)
        self.block(self.cx + 0.8, self.x1(), self.z, self.z + length, self.h)
        self.block(self.cx - 0.8, self.cx + 0.8, self.z, self.z + length, self.h, "deadly", side="accent")
        self.kerbs(self.z, self.z + length)
        self.z += length
        self.pieces.add("deadly island")

    def platform_cross(self, length=10, dist=3, speed=3, direction="right", drop=1, star=True):
        """A gap crossed on a shuttle a step below the road: stop at the edge,
        drive off onto it when it is under the car, and off it onto road
        another step down."""
        edge = self.z
        self.let_go(edge - 10)
        width = 2 * self.a + 0.8
        # The shuttle swings to either side of the car's lane by half its
        # travel, so it is under the car whenever the car drives off.
        mid = self.lane_x(self.side) - width / 2.0
        x0 = mid - (dist / 2.0 if direction == "right" else -dist / 2.0)
        index = self.platform(x0, width, edge, length, self.h - drop, direction, speed, dist)
        self.act(edge - 8, "board", index)
        if star:
            # Where the car comes down on the shuttle, before it has been carried.
            self.star(self.lane_x(), self.h - drop, edge + 2)
        self.z = edge + length
        self.h -= 2 * drop
        # A landing wider than the lane by what the shuttle may have carried
        # the car; the route steers back into the lane before its kerbs.
        d = dist / 2.0 + 1.6
        side = self.side or 1
        self.block(self.x0() - d, self.x1() + d, self.z, self.z + 14, self.h)
        self.kerbs(self.z, self.z + 14, x0=self.x0() - d, x1=self.x1() + d)
        # Aim for the middle of the lane, which leaves two units either way;
        # the kerb is sought once the car is between the lane's kerbs.
        self.act(self.z + 1, "x", self.cx)
        self.z += 14
        self.road(16)
        self.hug(side, at=self.z - 14)
        self.pieces.add("platform crossing")

    def stepping_stones(self, count, g=5, star=True):
        """Islands a jump apart, each long enough to land, roll and jump again."""
        for i in range(count):
            self.gap(g, land=16 + g if i < count - 1 else 24, star=star and i % 2 == 0)
        self.pieces.add("stepping stones")

    # --- output ------------------------------------------------------------
    def source(self):
        road, side, accent, plat = ZONE_LOOK[self.zone]
        head = ["track %d  %s" % (self.number, self.name),
                "  # %s" % self.idea if self.idea else None,
                "  gravity 10",
                '  background "bk00%d.jpg"' % self.zone,
                '  settings "%s" 0 0 0 0' % self.name,
                '  texture road "%s"' % road,
                '  texture side "%s"' % side,
                '  texture accent "%s"' % accent,
                '  texture plat "%s"' % plat,
                '  texture slope "ramp.bmp"',
                '  texture flag "finish.bmp"',
                '  texture pad "bounce.bmp"',
                '  texture icy "ice.bmp"',
                '  texture drop "falling.bmp"',
                '  texture boost "turbo.bmp"',
                '  texture danger "deadly.bmp"']
        return "\n".join([h for h in head if h is not None] + self.lines) + "\n"

    def plan_text(self):
        out = ["# Route of track %d (%s) for quorbit-solve: Z COMMAND, from z = Z on." % (self.number, self.name)]
        for z, words in sorted(self.plan, key=lambda p: p[0]):
            out.append("%s %s" % (fmt(z), words))
        return "\n".join(out) + "\n"
