"""Checks of the sky-bridge pieces: the roads they lay leave the car's line
free of kerb fronts, and roads side by side get the kerbs they need.

    python3 -m unittest discover -s tools/trackgen -p 'test_*.py'
"""
import unittest

import bridges
import zones
from trackkit import Track

SIDEWAYS = 0.2  # units across per unit along while a steering key is held


def blocks(t):
    """(x0, x1, z0, z1, top, bottom) of every block laid."""
    out = []
    for line in t.lines:
        w = line.split()
        if w[0] == "block":
            x, y, z, sx, sy, sz = map(float, w[1:7])
            out.append((x, x + sx, z, z + sz, y + sy, y))
    return out


def walk(t, z_end, start_x=0.0, step=0.1):
    """Drives the plan's steering through the laid road on the flat, the car
    moving across at SIDEWAYS while it steers and stopped by kerbs; returns
    the z of every kerb front the car runs into and every place it leaves the
    road, in the order met."""
    targets = sorted((z, float(w.split()[1])) for z, w in t.plan if w.startswith("x "))
    road = [b for b in blocks(t) if abs(b[4] - t.h) < 1e-6]
    kerbs = [b for b in blocks(t) if abs(b[4] - (t.h + 1)) < 1e-6]
    x, target, z, hits = start_x, start_x, -5.0, []
    while z + step < z_end:
        for tz, tx in targets:
            if tz <= z:
                target = tx
        ahead = z + step
        dx = max(-SIDEWAYS * step, min(SIDEWAYS * step, target - x))
        x0, x1 = x - 0.4, x + 0.4
        for k in kerbs:
            if k[2] <= ahead < k[3]:
                if k[0] < x1 - 1e-6 and k[1] > x0 + 1e-6:
                    hits.append(("kerb", round(k[2], 1)))
                if dx > 0 and k[0] >= x1 - 1e-6:
                    dx = min(dx, k[0] - x1)
                if dx < 0 and k[1] <= x0 + 1e-6:
                    dx = max(dx, k[1] - x0)
        x += dx
        if not any(r[2] <= ahead < r[3] and r[0] <= x <= r[1] for r in road):
            hits.append(("off", round(ahead, 1)))
        z = ahead
    return list(dict.fromkeys(hits))


def track(a=2):
    Track.start, Track.spacing = 1, 0
    t = Track(11, "test")
    t.a = a
    return t


class SideBySide(unittest.TestCase):
    def test_roads_merge_share_dividers_or_keep_their_kerbs(self):
        self.assertEqual(bridges.merge([(2, 4), (-1, 1), (0.5, 2)]), [(-1, 4)])
        self.assertEqual(bridges.merge([(-6.4, -3.6), (3.6, 6.4)]), [(-6.4, -3.6), (3.6, 6.4)])
        # A slit narrower than a car between two roads is filled.
        self.assertEqual(bridges.merge([(1.6, 6.4), (-3.4, 1.4)]), [(-3.4, 6.4)])
        # Kerbs 0.2 apart would leave a slit between them: one divider instead.
        self.assertEqual(bridges.kerb_ranges([(-0.4, 2.4), (4.6, 7.4)]), [(-1.4, -0.4), (2.4, 4.6), (7.4, 8.4)])
        # 1.2 apart: one divider filling the space, not two kerbs on top of each other.
        self.assertEqual(bridges.kerb_ranges([(-3.4, -0.6), (0.6, 3.4)]),
                         [(-4.4, -3.4), (-0.6, 0.6), (3.4, 4.4)])
        # Far apart: each road its own kerbs, a hole between.
        self.assertEqual(bridges.kerb_ranges([(-6.4, -3.6), (3.6, 6.4)]),
                         [(-7.4, -6.4), (-3.6, -2.6), (2.6, 3.6), (6.4, 7.4)])

    def test_eye_leaves_a_hole_between_two_lanes_and_stars_in_the_cars_lane(self):
        t = track()
        t.road(20)
        t.hug(1, at=1)
        bridges.reshape(t, 6, keep=0)
        t.road(30)
        bridges.eye(t, 40)
        t.road(20)
        lanes = [b for b in blocks(t) if b[2] == 45 and b[4] == t.h]
        self.assertEqual([(round(b[0], 3), round(b[1], 3)) for b in lanes], [(-6.4, -3.6), (3.6, 6.4)])
        self.assertTrue(all(line.split()[1] == "6" for line in t.lines if line.split()[0] == "star"))
        self.assertEqual(walk(t, t.z, start_x=0), [])


class CarsLine(unittest.TestCase):
    def test_drifts_both_ways_never_close_a_kerb_on_the_car(self):
        for a, dx in ((1, 6), (1, -6), (2, 4), (2, -8)):
            with self.subTest(a=a, dx=dx):
                t = track(a)
                t.road(20)
                bridges.drift(t, dx, stub=30)
                t.road(20)
                self.assertEqual(t.cx, dx)
                self.assertEqual(walk(t, t.z), [])
        # Aimed only past the kerb where it starts, the car stops short and
        # the kerb behind it closes in.
        t = track(1)
        t.road(20)
        t.hug(1, at=1)
        t.road(20)
        for _ in range(10):
            t.cx += 1
            t.road(7)
        self.assertEqual(walk(t, t.z)[0][0], "kerb")

    def test_crossings_carry_the_car_from_side_to_side(self):
        t = track()
        t.road(20)
        t.hug(1, at=1)
        bridges.reshape(t, 1)
        bridges.drift(t, 4, star=False)
        for _ in range(3):
            bridges.crossing(t, 5)
            t.road(10)
        self.assertEqual(t.cx, -5)
        self.assertEqual(walk(t, t.z), [])

    def test_narrowing_keeps_the_kerb_the_car_holds(self):
        t = track(5)
        t.road(20)
        t.hug(1, at=1)
        t.road(30)
        bridges.reshape(t, 2)
        t.road(20)
        self.assertEqual(walk(t, t.z), [])
        # Narrowed about the middle instead, the car at the old kerb is left
        # beyond the new one, in the air.
        t = track(5)
        t.road(20)
        t.hug(1, at=1)
        t.road(30)
        bridges.reshape(t, 2, keep=0)
        t.road(20)
        self.assertEqual(walk(t, t.z)[0], ("off", 45.0))

    def test_island_must_lie_under_the_cars_line(self):
        t = track()
        t.road(30)
        bridges.hop(t, 5, dx=2, land=20, side=1)  # the car at 0, the island -0.4..4.4
        self.assertEqual(t.plan[-1][1], "x 10")
        t = track()
        t.road(30)
        with self.assertRaises(AssertionError):
            bridges.hop(t, 5, dx=-2, a=1, land=20, side=0, kerbs=False)


class SkyBridges(unittest.TestCase):
    def test_blocks_meet_edge_to_edge_or_leave_room(self):
        # Roads laid beside one another must meet edge to edge: a kerb inside
        # a road or two kerbs in one place flicker and catch the car, and so
        # does a slit between two tops of one height.
        def inside(a0, a1, b0, b1):
            return min(a1, b1) - max(a0, b0) > 1e-6

        Track.start, Track.spacing = 1, 0
        for t in zones.zone2():
            bs = blocks(t)
            for i, a in enumerate(bs):
                for b in bs[i + 1:]:
                    with self.subTest(track=t.number, a=a, b=b):
                        along = inside(a[2], a[3], b[2], b[3])
                        self.assertFalse(along and inside(a[0], a[1], b[0], b[1]) and inside(a[5], a[4], b[5], b[4]))
                        slit = max(a[0] - b[1], b[0] - a[1])
                        self.assertFalse(along and abs(a[4] - b[4]) < 1e-6 and 1e-6 < slit < 0.4)


if __name__ == "__main__":
    unittest.main()
