"""The Crumbling Heights pieces keep the promises the route relies on: the
car always has road under its line, the kerb it holds leads on, and a
layout that breaks that is refused when the tracks are written."""
import unittest

import heights
from laid import blocks
from trackkit import Track


def road_under(t, x, z):
    """Tops of the blocks under the point (x, z), kerbs included."""
    return [b[4] for b in blocks(t) if b[0] <= x <= b[1] and b[2] <= z < b[3]]


def fresh(a=2, cx=0, side=1, run=40):
    t = Track(31, "test")
    t.a, t.cx = a, cx
    t.road(run)
    t.hug(side, at=8)
    return t


def steering(t):
    """The plan's steering targets in order of z."""
    return [(z, float(w.split()[1])) for z, w in sorted(t.plan) if w.startswith("x ")]


class MoveTest(unittest.TestCase):
    def test_the_kerb_held_runs_straight_into_the_new_road(self):
        for cx, a, side in ((3, 4, 1), (-4, 1, -1), (0, 6, 1)):
            t = fresh()
            heights.move(t, cx, a, side)
            start = t.z
            t.road(10)
            kerb = t.cx + side * (t.a + 0.9)
            # One kerb, one height, from the plaza into the road after it.
            self.assertEqual(len(set(road_under(t, kerb, start - 1) + road_under(t, kerb, start + 1))), 1)
            self.assertGreater(side * (steering(t)[-1][1] - t.lane_x(side)), 0, "the route holds to that kerb")

    def test_a_plaza_whose_kerb_would_cut_across_the_route_is_refused(self):
        t = fresh(a=3)
        with self.assertRaises(AssertionError):
            heights.move(t, -2, 2, 1)


class StairsTest(unittest.TestCase):
    def test_each_tread_is_a_step_over_and_its_kerb_reached_before_the_next_edge(self):
        for dx, dh in ((2, 1), (-1, 1), (2, -1), (-2, -1)):
            side = 1 if dx > 0 else -1
            t = fresh(cx=-2 * side, side=side, run=80)
            h0, cx0, start = t.h, t.cx, t.z
            (heights.climb if dh > 0 else heights.descend)(t, 3, dx)
            self.assertEqual((t.h, t.cx), (h0 + 3 * dh, cx0 + 3 * dx))
            jumps = [z for z, w in t.plan if w == "jump"]
            self.assertEqual(len(jumps), 3 if dh > 0 else 0, "a jump for every wall, none for a drop")
            # From the first edge on the route lets go, then holds to the
            # new kerb, in turn; the car crosses 1 unit in 5 and must be at
            # the kerb before it lets go for the next edge.
            moves = [m for m in steering(t) if m[0] > start - 20]
            self.assertEqual(len(moves), 6)
            for (hold, _), (let, _) in zip(moves[1::2], moves[2::2]):
                self.assertGreaterEqual(let - hold, 5 * abs(dx))
            for (z, x) in moves[0::2]:
                self.assertEqual(x, round(x), "let go on a whole number, where the stars are")


class ScreeTest(unittest.TestCase):
    def test_every_falling_block_and_the_landing_hold_the_car_line(self):
        for a, dx in ((3, 5), (6, 0), (4, -3)):
            t = fresh(a=a, cx=-2 if dx > 0 else 2, side=1 if dx >= 0 else -1, run=60)
            line = t.lane_x()
            heights.scree(t, 3, dx)
            falling = blocks(t, "falling")
            self.assertEqual(len(falling), 3)
            tops = [b[4] for b in falling]
            self.assertEqual(tops, sorted(tops, reverse=True), "each block a step lower")
            for x0, x1, z0, z1, _, _ in falling:
                # As far in from the edge as a car against a kerb, or more.
                self.assertTrue(x0 + 0.4 - 1e-6 <= line <= x1 - 0.4 + 1e-6, (x0, x1, line))
            # The landing under the car's line, a step below the last block,
            # and no kerb on that line.
            landing = road_under(t, line, falling[-1][3] + 1)
            self.assertEqual(landing, [tops[-1] - 1])

    def test_a_scree_that_would_leave_the_car_behind_is_refused(self):
        for dx in (7, -3):
            t = fresh(a=3, side=1)
            with self.assertRaises(AssertionError):
                heights.scree(t, 3, dx)


class EyeTest(unittest.TestCase):
    def test_two_lanes_round_a_hole_meet_again(self):
        t = fresh(a=2)
        heights.move(t, 0, 6, 1)
        z0 = t.z
        heights.eye(t, 1, 1, lambda t: (t.road(24), t.gap(5, land=30)), heights.crumbling_lane)
        mid = (z0 + t.z) / 2.0
        self.assertEqual(road_under(t, 0, mid), [], "a hole down the middle")
        self.assertEqual(road_under(t, t.cx + t.a, z0 + 26), [], "a gap in the lane taken")
        self.assertTrue(road_under(t, t.cx - t.a, z0 + 26), "the other lane runs on")
        self.assertTrue(blocks(t, "falling"))
        self.assertEqual(t.lane_x(1), t.cx + t.a, "the route is back on the wide road's kerb")

    def test_lanes_that_leave_no_hole_or_meet_at_two_heights_are_refused(self):
        t = fresh(a=2)
        with self.assertRaises(AssertionError):
            heights.eye(t, 1, 1, lambda t: t.road(20))
        t = fresh(a=6)
        with self.assertRaises(AssertionError):
            heights.eye(t, 1, 1, lambda t: t.step_up(1))


class GravelTest(unittest.TestCase):
    def test_the_free_lane_and_its_star_stay_on_firm_ground(self):
        t = fresh(a=4, side=-1)
        heights.gravel(t, [1, -1, 1])
        patches = blocks(t, "falling")
        self.assertEqual(len(patches), 3)
        stars = [list(map(float, l.split()[1:4])) for l in t.lines if l.split()[0] == "star"]
        for (x0, x1, z0, z1, _, _), (sx, _, sz), s in zip(patches, stars, [1, -1, 1]):
            self.assertTrue(z0 <= sz < z1)
            self.assertFalse(x0 <= sx <= x1, "a star over loose ground")
            self.assertGreaterEqual(min(abs(sx - x0), abs(sx - x1)), 0.8)



class SinkAndSwitchbackTest(unittest.TestCase):
    def test_a_sinking_road_narrows_from_the_side_the_car_is_not_on(self):
        for side in (1, -1):
            t = fresh(a=6, side=side)
            lane = t.lane_x(side)
            heights.sink(t, [4, 2])
            self.assertEqual(t.a, 2)
            # The held kerb's lane never moves: the car runs straight on it,
            # and every road below the crumbling runs still lies under it.
            self.assertEqual(t.lane_x(side), lane)
            for z in range(45, int(t.z), 2):
                self.assertTrue(road_under(t, lane, z + 0.5) or road_under(t, lane - side * 0.4, z + 0.5), z)
            with self.assertRaises(AssertionError):
                heights.sink(t, [3])

    def test_switchback_terraces_turn_the_route_at_every_one(self):
        t = Track(34, "test")
        t.a, t.h = 3, 10
        t.road(40)
        t.hug(-1, at=8)
        heights.switchback(t, 4, 4)
        tops = sorted({b[4] for b in blocks(t) if b[1] - b[0] > 5})
        self.assertEqual(tops, [6, 7, 8, 9, 10])
        # Held right, left, right, left: the kerb the next terrace lies to.
        holds = [1 if x > 0 else -1 for z, x in steering(t) if z > 40 and abs(x) > 6]
        turns = [s for k, s in enumerate(holds) if k == 0 or holds[k - 1] != s]
        self.assertEqual(turns, [1, -1, 1, -1])
        for b in blocks(t):
            self.assertGreaterEqual(b[0], -8.5)
            self.assertLessEqual(b[1], 8.5)

if __name__ == "__main__":
    unittest.main()
