"""Checks of the springboard pieces and of the ten tracks built from them.

    python3 tools/trackgen/test_springs.py
"""
import os
import sys
import unittest

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

import springs  # noqa: E402
from laid import blocks  # noqa: E402
import zones  # noqa: E402
from trackkit import JUMP, Track  # noqa: E402

def tops_at(t, x, z, kind=None):
    return [b for b in blocks(t) if b[0] <= x <= b[1] and b[2] <= z < b[3] and (kind is None or b[5] == kind)]


def steering(t):
    """The route's steering targets, in order along z."""
    return [(z, float(w.split()[1])) for z, w in sorted(t.plan) if w.startswith("x ")]


def fresh(a=2, side=0, cx=0):
    t = Track(55, "test")
    t.a, t.cx = a, cx
    t.road(40)
    t.side = side
    return t


class Pieces(unittest.TestCase):
    def test_every_throw_of_a_pad_chain_comes_down_on_the_next_pad(self):
        for hops in (2, 5):
            t = fresh(side=-1)
            first = t.z
            springs.pad_chain(t, hops)
            pads = sorted(b for b in blocks(t) if b[5] == "bounce")
            self.assertEqual(len(pads), hops)
            for k, pad in enumerate(pads[1:], 1):
                # At least a car's length of pad either side of where the car comes down.
                land = first + springs.HOP * k
                self.assertLessEqual(pad[2], land - 1.5)
                self.assertGreaterEqual(pad[3], land + 2.5)
                # Nothing under the car between two pads: a gap to bounce over.
                self.assertEqual(tops_at(t, t.lane_x(), land - springs.HOP / 2), [])
            # The last throw lands on road, not a pad and not a hole.
            last = first + springs.HOP * hops
            self.assertEqual([b[5] for b in tops_at(t, t.lane_x(), last + 1)], ["plain"])
            # The kerb the car held before the chain is held again after it.
            self.assertLess(steering(t)[-1][1], t.lane_x())

    def test_a_pad_jog_lands_on_its_plaza_before_steering_for_the_new_lane(self):
        for cx, kind, rise in ((3, "ice", 1), (-4, "plain", 2)):
            t = fresh(side=1 if cx < 0 else -1)
            h = t.h
            springs.pad_jog(t, cx, rise=rise, kind=kind)
            launch = min(b[2] for b in blocks(t) if b[5] == "bounce")
            land = launch + springs.flight(rise)
            self.assertEqual(t.cx, cx)
            self.assertEqual(t.h, h + rise)
            # The throw comes down on the plaza, past the gap.
            under = tops_at(t, t.lane_x(-t.side), land + 0.5)
            self.assertEqual([(b[4], b[5]) for b in under], [(h + rise, kind)])
            self.assertEqual(tops_at(t, 0, launch + 5), [])
            # Steering for the new side starts once down; in the air it would
            # carry the car past the kerb.
            z, x = steering(t)[-1]
            self.assertGreater(z, land)
            self.assertGreater((x - cx) * (1 if cx > 0 else -1), t.a)

    def test_a_plaza_refuses_a_lane_that_does_not_share_its_held_kerb(self):
        t = fresh()
        with self.assertRaises(AssertionError):
            springs.plaza(t, 0, 1, 1)  # narrower inside: the right kerb moves in
        springs.plaza(t, 4, 2, 1)
        self.assertEqual((t.cx, t.a, t.side), (4, 2, 1))

    def test_a_drift_steers_past_where_it_ends_and_no_kerb_steps_across_the_lane(self):
        for dx in (5, -5):
            t = fresh(a=1, side=-1 if dx > 0 else 1)
            springs.drift(t, dx)
            self.assertEqual(t.cx, dx)
            s = 1 if dx > 0 else -1
            # One target for the whole drift, past its last kerb: the key stays held.
            z, x = steering(t)[-1]
            self.assertGreater(s * x, abs(dx) + t.a)
            # Each block one unit on: the car at the held kerb of a block is
            # still on the road of the next, clear of its far kerb.
            road = sorted((b for b in blocks(t) if b[4] == t.h), key=lambda b: b[2])
            for a, b in zip(road, road[1:]):
                self.assertIn(round(b[0] - a[0], 3), (0, s), (a, b))
                car = (a[1] - 0.4) if s > 0 else (a[0] + 0.4)
                self.assertTrue(b[0] + 0.4 <= car <= b[1] - 0.4, (a, b))

    def test_a_moon_shot_drops_onto_its_pad_and_flies_further_than_any_jump(self):
        for rise in (0, -1):
            t = fresh(side=1)
            h = t.h
            springs.moon_shot(t, rise)
            turbo = [b for b in blocks(t) if b[5] == "turbo"][0]
            pad = [b for b in blocks(t) if b[5] == "bounce"][0]
            # A step below the run-up: no seam level with the road at full speed.
            self.assertEqual(pad[4], h - 1)
            self.assertEqual(pad[2], turbo[3] + 14)
            landing = min(b[2] for b in blocks(t) if b[2] > pad[3] and b[5] == "plain")
            self.assertGreater(landing - pad[3], JUMP)
            self.assertEqual(t.h, h + rise)
            # The stop comes after the landing, then Up again at the usual speed.
            words = [w for z, w in sorted(t.plan) if z > landing]
            self.assertEqual(words[:2], ["board 999", "speed 0.6"])

    def test_an_eye_parts_the_road_round_a_wide_hole_and_guards_the_other_lane(self):
        for side in (-1, 1):
            t = fresh(side=-side)
            springs.eye(t, side=side)
            mid = t.z - 10 - 20
            self.assertEqual(tops_at(t, 0, mid), [])
            self.assertEqual(tops_at(t, 2 * side, mid), [])
            taken, other = tops_at(t, 6 * side, mid), tops_at(t, -6 * side, mid)
            self.assertEqual([b[5] for b in taken], ["plain"])
            self.assertEqual([b[5] for b in other], ["deadly"])
            # On from the taken side: the road after shares its outer kerb.
            edge = t.x0() if side < 0 else t.x1()
            self.assertAlmostEqual(edge, 6.4 * side)
            self.assertEqual(t.side, side)

    def test_a_pad_field_puts_each_pad_on_the_side_the_route_holds_before_a_trench(self):
        sides = [-1, 1, 1, -1]
        t = fresh()
        springs.pad_field(t, sides)
        pads = sorted((b for b in blocks(t) if b[5] == "bounce"), key=lambda b: b[2])
        self.assertEqual(len(pads), len(sides))
        for s, pad in zip(sides, pads):
            self.assertEqual(s, 1 if pad[0] >= 0 else -1)
            held = [x for z, x in steering(t) if z <= pad[2]][-1]
            self.assertEqual(s, 1 if held > 0 else -1)
            # A trench right behind the pad, across the whole field; road again before the car is down.
            self.assertEqual(tops_at(t, 0, pad[3] + 1), [])
            self.assertEqual(tops_at(t, -s * 5, pad[3] + 1), [])
            self.assertTrue(tops_at(t, s * 5, pad[2] + springs.HOP - 1))


class Zone(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.tracks = zones.zone6()

    def test_roads_stay_in_the_picture(self):
        for t in self.tracks:
            for b in blocks(t):
                self.assertGreaterEqual(b[0], -8.5, (t.name, b))
                self.assertLessEqual(b[1], 8.5, (t.name, b))
            self.assertLess(t.high - t.low, 7, t.name)

    def test_no_two_tracks_open_alike_or_share_an_outline(self):
        def outline(t, upto):
            # Road widths and positions along the track, sampled every 4 units.
            return tuple(tuple(sorted((round(b[0]), round(b[1]), b[5]) for b in blocks(t) if b[2] <= z < b[3]))
                         for z in range(-4, upto, 4))
        heads = [outline(t, 160) for t in self.tracks]
        self.assertEqual(len(set(heads)), len(self.tracks))
        self.assertEqual(len({t.name for t in self.tracks}), 10)
        self.assertEqual(len({frozenset(t.pieces) for t in self.tracks}), 10)


if __name__ == "__main__":
    unittest.main()
