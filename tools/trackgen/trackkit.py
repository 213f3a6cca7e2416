"""Pieces for building Quorbit tracks as text: a Track collects blocks, ramps,
platforms and stars as `.trk` lines and, beside them, the route a driver
takes (the plan read by quorbit-solve).

Conventions: the road is a run of blocks whose top is at height `h`, centred
on `cx`, `w` wide; `z` is where the next piece starts. The car drives at
0.6 a frame (15 units a second), jumps 16 units on the flat and gets 21 out
of a bounce pad; turbo gives 1.0 a frame and 27 units of jump.
"""

ZONE_LOOK = {
    # zone: (road top, road sides, accent, platform)
    1: ("road.bmp", "wall.bmp", "edge.bmp", "platform.bmp"),
    2: ("road_alt.bmp", "edge.bmp", "wall.bmp", "platform.bmp"),
    3: ("road_alt.bmp", "wall.bmp", "edge.bmp", "platform.bmp"),
    4: ("road.bmp", "edge.bmp", "wall.bmp", "platform.bmp"),
    5: ("road.bmp", "wall.bmp", "AnimationTest_0.bmp", "platform.bmp"),
    6: ("road_alt.bmp", "edge.bmp", "AnimationTest_0.bmp", "platform.bmp"),
}

KIND_TEX = {"finish": "flag", "bounce": "pad", "ice": "icy", "falling": "drop",
            "turbo": "boost", "deadly": "danger"}


def fmt(v):
    v = round(float(v), 3)
    return str(int(v)) if v == int(v) else ("%g" % v)


class Track:
    def __init__(self, number, name, gravity=10):
        self.number = number
        self.zone = (number - 1) // 10 + 1
        self.name = name
        self.gravity = gravity
        self.lines = []
        self.plan = []
        self.kinds = set()
        self.stars = 0
        self.platforms = 0
        self.z = -5.0
        self.h = 1
        self.cx = 0
        self.w = 4

    # --- raw objects -------------------------------------------------------
    def block(self, x0, x1, z0, z1, top, kind="plain", thick=1, top_tex="road", side="side"):
        assert top - thick >= 0, "track %d: a block below 0 at z %s" % (self.number, z0)
        tex = KIND_TEX.get(kind, top_tex)
        line = "  block %s %s %s  %s %s %s  tex %s %s %s %s" % (
            fmt(x0), fmt(top - thick), fmt(z0), fmt(x1 - x0), fmt(thick), fmt(z1 - z0), side, side, side, tex)
        if kind != "plain":
            line += "  " + kind
            self.kinds.add(kind)
        self.lines.append(line)

    def platform(self, x0, width, z0, length, top, direction, speed, dist, loop=True):
        self.lines.append("  platform %s %s %s  %s 1 %s  tex side side side plat  dir %s speed %d dist %d%s" % (
            fmt(x0), fmt(top - 1), fmt(z0), fmt(width), fmt(length), direction, speed, dist,
            "  loop" if loop else ""))
        self.kinds.add("platform")
        index = self.platforms
        self.platforms += 1
        return index

    def ramp(self, x0, y, z0, sx, sy, sz, rot):
        self.lines.append("  ramp %d %d %d  %d %d %d  tex slope side  rot %d" % (x0, y, z0, sx, sy, sz, rot))
        self.kinds.add("ramp")

    def star(self, x, y, z):
        assert y >= 0, "track %d: a star below 0 at z %s" % (self.number, z)
        self.lines.append("  star %d %d %d" % (round(x), round(y), round(z)))
        self.stars += 1

    def comment(self, text):
        self.lines.append("  # " + text)

    def act(self, z, *words):
        self.plan.append((float(z), " ".join(fmt(w) if isinstance(w, (int, float)) else w for w in words)))

    # --- road pieces -------------------------------------------------------
    def road(self, length, w=None, cx=None, kind="plain", top_tex="road"):
        if w is not None:
            self.w = w
        if cx is not None and cx != self.cx:
            self.cx = cx
        self.block(self.cx - self.w / 2, self.cx + self.w / 2, self.z, self.z + length, self.h, kind, top_tex=top_tex)
        self.z += length

    def steer(self, x, at=None):
        self.act(self.z if at is None else at, "x", x)

    def speed(self, s, at=None):
        self.act(self.z if at is None else at, "speed", s)

    def finish(self):
        self.road(4, kind="finish")

    def star_on_road(self, dz, dx=0):
        self.star(self.cx + dx, self.h, self.z + dz)

    def jump_star(self, dz):
        """A star two units over the road: jump eight units before it."""
        zs = round(self.z + dz)
        self.star(self.cx, self.h + 2, zs)
        self.act(zs - 8.5, "jump")

    # --- features ----------------------------------------------------------
    def gap(self, g, dh=0, land=20, fast=False, air_star=True):
        edge = self.z
        lead = 3.0 if fast else 2.0
        self.act(edge - lead, "jump")
        if air_star:
            self.star(self.cx, self.h + 2, edge - lead + (11 if fast else 8))
        self.z = edge + g
        self.h += dh
        self.road(land)

    def ramp_up(self, dh=2, length=6, land=20):
        self.ramp(self.cx - self.w // 2, self.h, self.z, self.w, dh, length, 0)
        self.z += length
        self.h += dh
        self.block(self.cx - self.w / 2, self.cx + self.w / 2, self.z, self.z + land, self.h, thick=dh + 1)
        self.z += land

    def ramp_down(self, dh=2, length=6, land=16):
        self.ramp(self.cx - self.w // 2, self.h - dh, self.z, self.w, dh, length, 2)
        self.z += length
        self.h -= dh
        self.road(land)

    def drop(self, dh=2, land=16):
        self.h -= dh
        self.road(land)

    def bounce(self, rise=2, gap=8, land=30, star=True, fast=False):
        self.road(2, kind="bounce")
        if star:
            self.star(self.cx, self.h + 4, self.z + (16 if fast else 10))
        self.z += gap
        self.h += rise
        self.road(land)

    def turbo(self, cruise_until=None):
        self.road(2, kind="turbo")
        self.speed(1, at=self.z - 2)

    def brake(self):
        self.speed(0.6)

    def ice(self, length, side=1, width=6, star=True):
        z0 = self.z
        half = width / 2
        self.block(self.cx - half, self.cx + half, z0, z0 + length, self.h, "ice")
        for sgn in (-1, 1):
            x = self.cx + sgn * (half + 0.5)
            self.block(x - 0.5, x + 0.5, z0, z0 + length, self.h + 1, side="accent", top_tex="accent")
        self.act(z0 + 1, "x", self.cx + side * (half - 1))
        if star:
            self.star(self.cx + side * (half - 1), self.h, z0 + length * 0.6)
        self.z += length
        self.w = width + 2
        self.road(10)
        self.act(self.z - 10, "x", self.cx)

    def falling_run(self, count, step=1, length=3):
        for i in range(count):
            self.h -= step if i else 0
            self.block(self.cx - self.w / 2, self.cx + self.w / 2, self.z, self.z + length, self.h, "falling")
            self.z += length
        self.h -= step
        self.road(16)

    def falling_hops(self, count, spacing=16.5, length=4):
        """Falling pads a jump apart: jump held, the car bounces from one to the next."""
        edge = self.z
        self.act(edge - 2, "hold")
        first = edge - 2 + 16.2 - 1.5
        for i in range(count):
            z0 = first + i * spacing
            self.block(self.cx - self.w / 2, self.cx + self.w / 2, z0, z0 + length, self.h, "falling")
        self.z = first + count * spacing
        self.road(24)
        self.act(self.z - 24 + 6, "release")

    def widen_for_stars(self, length, width, xs):
        """A plaza wider than the road with stars out at the sides; the car
        needs five units of road for every unit it moves sideways."""
        old_w = self.w
        z0 = self.z
        cursor, prev = z0 + 1, 0
        for x in xs:
            zs = round(cursor + 5 * abs(x - prev) + 4)
            self.act(cursor, "x", self.cx + x)
            self.star(self.cx + x, self.h, zs)
            cursor, prev = zs + 1, x
        self.act(cursor, "x", self.cx)
        length = max(length, cursor + 5 * abs(prev) + 6 - z0)
        self.road(length, w=width)
        self.w = old_w

    def jog(self, dx, length=24, width=None):
        """The road moves sideways: a wide junction, then the new lane."""
        new_cx = self.cx + dx
        lo = min(self.cx, new_cx) - self.w / 2
        hi = max(self.cx, new_cx) + self.w / 2
        self.block(lo, hi, self.z, self.z + 16, self.h)
        self.act(self.z, "x", new_cx)
        self.z += 16
        self.cx = new_cx
        self.road(length, w=width)

    def deadly_rows(self, lanes, row=6, between=12, width=6, speed=None):
        """Three lanes; each row leaves one lane (0, 1, 2 from the left) free.
        Between rows the car needs road to change lanes at its speed."""
        lane_w = width / 3
        s = speed or 0.6
        if speed:
            self.speed(speed)
        x = self.cx
        for free in lanes:
            x_free = self.cx - width / 2 + lane_w * (free + 0.5)
            run = max(between, round(abs(x_free - x) / 0.12 * s + 4))
            self.road(run, w=width)
            self.act(self.z - run, "x", x_free)
            for lane in range(3):
                x0 = self.cx - width / 2 + lane_w * lane
                kind = "plain" if lane == free else "deadly"
                self.block(x0, x0 + lane_w, self.z, self.z + row, self.h, kind,
                           side="accent" if kind == "deadly" else "side")
            if free != 1:
                self.star(x_free, self.h, self.z + row / 2)
            self.z += row
            x = x_free
        run = max(between, round(abs(x - self.cx) / 0.12 * s + 4))
        self.road(run, w=width)
        self.act(self.z - run, "x", self.cx)
        if speed:
            self.speed(0.6, at=self.z - run)

    def platform_bridge(self, length=10, width=3, dist=3, speed=3, direction="right", land=20):
        """A gap bridged by a shuttle: stop at the edge, board it when it is under the car."""
        edge = self.z
        x0 = self.cx - width / 2 - (dist / 2 if direction == "right" else -dist / 2)
        index = self.platform(x0, width, edge, length, self.h, direction, speed, dist)
        self.act(edge - 6, "board", index)
        self.act(edge + 1, "ride", index)
        lo = min(x0, x0 + (dist if direction == "right" else -dist))
        hi = max(x0, x0 + (dist if direction == "right" else -dist)) + width
        self.z = edge + length
        self.block(lo - 0.5, hi + 0.5, self.z, self.z + land, self.h)
        self.act(self.z + 1, "x", self.cx)
        self.z += land
        self.w = max(self.w, 4)

    # --- output ------------------------------------------------------------
    def source(self):
        road, side, accent, plat = ZONE_LOOK[self.zone]
        head = ["track %d  %s" % (self.number, self.name),
                "  gravity %s" % fmt(self.gravity),
                '  background "bk00%d.jpg"' % self.zone,
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
        return "\n".join(head + self.lines) + "\n"

    def plan_text(self):
        out = ["# Route of track %d (%s) for quorbit-solve: Z COMMAND, from z = Z on." % (self.number, self.name)]
        for z, words in sorted(self.plan, key=lambda p: p[0]):
            out.append("%s %s" % (fmt(z), words))
        return "\n".join(out) + "\n"
