"""Checks of the Frost Run pieces and of the ten tracks built from them.

    python3 tools/trackgen/test_frost.py
"""
import os
import sys
import unittest

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

import frost  # noqa: E402
import laid  # noqa: E402
from laid import blocks  # noqa: E402
import zones  # noqa: E402
from trackkit import Track  # noqa: E402


def road_under(t, x, z):
    """The blocks whose top is at road height under the point (kerbs stand a unit higher)."""
    return [b for b in blocks(t) if b[0] <= x <= b[1] and b[2] <= z < b[3] and b[4] == t.h]


def kerb_faces(t):
    """Front faces of kerbs: (x0, x1, z) of every raised block that starts after the track's start."""
    return [(b[0], b[1], b[2]) for b in blocks(t) if b[4] > t.h and b[2] > -5]


def fresh(a=2, side=0):
    t = Track(21, "test")
    t.a = a
    t.road(30)
    t.side = side
    return t


class Pieces(unittest.TestCase):
    def test_drift_moves_a_lane_a_tread_and_the_held_kerb_never_steps_in(self):
        for side in (1, -1):
            t = fresh()
            frost.drift(t, side, 4, tread=10)
            self.assertEqual(frost.lanes(t), (-2 + 4 * side, 2 + 4 * side))
            # The steering target lies past where the kerb ends up, so the key stays held.
            self.assertGreater(side * float(t.plan[-1][1].split()[1]), 6)
            # Every new kerb front stands beside the lane the car rubs just before it, never across it.
            for x0, x1, z in kerb_faces(t):
                road = road_under(t, 0 if z <= 30 else (-2 if side < 0 else 2) + side * 10, z - 0.1)
                road = [b for b in blocks(t) if b[4] == t.h and b[2] < z <= b[3]]
                lane = road[0][0] + 0.4 if side < 0 else road[0][1] - 0.4
                self.assertFalse(x0 < lane + 0.4 and x1 > lane - 0.4, (x0, x1, z))
            # Road under the held lane all the way: each step's lane lies on the next step's road.
            for k in range(4):
                lane_before = (2 if side > 0 else -2) + k * side
                z_step = t.z - 10 * (4 - k)
                self.assertTrue(road_under(t, lane_before, z_step + 0.5), (side, k))

    def test_narrowing_on_the_held_side_is_refused_and_a_funnel_keeps_that_kerb(self):
        t = fresh(a=4, side=-1)
        with self.assertRaises(AssertionError):
            frost.narrow(t, -3, 4, 6)
        with self.assertRaises(AssertionError):
            frost.widen(t, -3, 4, 6)
        t = fresh(a=4)
        frost.funnel(t, 1, 2)
        self.assertEqual(frost.lanes(t), (2, 4))
        # Every piece of the funnel keeps its right kerb at the same place.
        rights = {round(b[1], 3) for b in blocks(t) if b[4] > t.h and b[0] > 4}
        self.assertEqual(rights, {5.4})

    def test_a_field_leaves_its_holes_open_and_lays_every_tile(self):
        t = fresh(a=3)
        z0 = t.z
        holes = [(-1, 6, 10, 20), (-6, 1, 40, 50)]
        deadly = [(-6.4, 4.8, 60, 64)]
        frost.field(t, -7, 7, 80, holes=holes, deadly=deadly)
        for hx0, hx1, dz0, dz1 in holes:
            for x in (hx0 + 0.1, (hx0 + hx1) / 2, hx1 - 0.1):
                self.assertEqual(road_under(t, x, z0 + (dz0 + dz1) / 2), [], (x, dz0))
        tiles = [b for b in blocks(t) if b[5] == "deadly"]
        self.assertEqual([tuple(round(v, 3) for v in (b[0], b[1], b[2] - z0, b[3] - z0)) for b in tiles], deadly)
        # Everywhere else the field is road, from kerb to kerb.
        for dz in (0, 5, 25, 55, 62, 79):
            for x in (-7.3, -3, 0.5, 3, 7.3):
                inside = any(h[0] <= x <= h[1] and h[2] <= dz < h[3] for h in holes)
                if not inside:
                    self.assertTrue(road_under(t, x, z0 + dz), (x, dz))

    def test_islands_must_take_in_the_car_and_the_take_off_comes_before_the_edge(self):
        t = fresh(a=3, side=1)  # the car rubs the right kerb, at x 3
        with self.assertRaises(AssertionError):
            frost.hop(t, 4, 10)
        t = fresh(a=3, side=1)
        edge = t.z
        frost.hop(t, -1, 6, g=5)
        jumps = [z for z, w in t.plan if w == "jump"]
        self.assertEqual(len(jumps), 1)
        self.assertLess(jumps[0], edge)
        self.assertGreater(jumps[0] + 16.8, edge + 5 + 0.8)
        self.assertEqual(road_under(t, 3, edge + 2), [])
        self.assertTrue(road_under(t, 3, edge + 6))
        t = fresh(a=3, side=1)
        frost.cold_hop(t, -1, 6, g=10)
        words = [w for z, w in t.plan]
        self.assertIn("board 999", words)
        self.assertLess(words.index("speed 1"), words.index("jump"))


class FrostRun(unittest.TestCase):
    def setUp(self):
        self.tracks = zones.all_tracks()[20:30]

    def test_every_track_reads_as_its_own_shape(self):
        for i in range(10):
            for j in range(i + 1, 10):
                differ = laid.differences(self.tracks[i], self.tracks[j])
                self.assertGreater(differ, 12, "tracks %d and %d look alike" % (21 + i, 21 + j))

    def test_every_track_moves_sideways_and_stays_in_view(self):
        for t in self.tracks:
            spans = [s for s in laid.outline(t) if s]
            middles = {round((s[0][0] + s[-1][1]) / 2) for s in spans}
            widths = {round(s[-1][1] - s[0][0]) for s in spans}
            self.assertTrue(len(middles) > 1 or len(widths) > 1, t.name)
            for b in blocks(t):
                self.assertGreaterEqual(b[0], -8.5, t.name)
                self.assertLessEqual(b[1], 8.5, t.name)


if __name__ == "__main__":
    unittest.main()
