"""Checks of the Training Ground: what each of its tracks promises a first
driver, and that no two of them look alike.

    python3 tools/trackgen/test_training.py
"""
import os
import sys
import unittest

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

import laid  # noqa: E402
import training  # noqa: E402
from trackkit import Track  # noqa: E402

CAR = 0.4  # half the car's width


def raised_over(t, x0, x1, z):
    """Blocks standing above the road (kerbs) across x0..x1 at z."""
    road = {b[4] for b in laid.blocks(t) if b[2] <= z < b[3] and b[0] <= (x0 + x1) / 2 <= b[1]}
    low = min(road) if road else None
    return [b for b in laid.blocks(t) if b[2] <= z < b[3] and b[0] < x1 and b[1] > x0 and low is not None
            and b[4] > low + 0.5]


class TrainingGround(unittest.TestCase):
    def setUp(self):
        Track.start, Track.spacing = 1, 0
        self.tracks = training.zone1()

    def test_up_alone_runs_down_the_first_drive_to_the_flag(self):
        t = self.tracks[0]
        finish = [b for b in laid.blocks(t, "finish")][0]
        z = -5.0
        while z < finish[3]:
            under = [b for b in laid.blocks(t) if b[2] <= z < b[3] and b[0] <= -CAR and b[1] >= CAR]
            self.assertTrue(under, "no road under the middle at z %s" % z)
            self.assertFalse(raised_over(t, -CAR, CAR, z), "a kerb across the middle at z %s" % z)
            z += 0.5

    def test_no_two_look_alike_and_each_leaves_the_straight_line(self):
        for i, t in enumerate(self.tracks):
            self.assertEqual(t.number, i + 1)
            spans = [s for s in laid.outline(t) if s]
            middles = {round((s[0][0] + s[-1][1]) / 2) for s in spans}
            widths = {round(s[-1][1] - s[0][0]) for s in spans}
            self.assertTrue(len(middles) > 1 or len(widths) > 1, t.name)
            for u in self.tracks[i + 1:]:
                self.assertGreater(laid.differences(t, u), 12, "%s and %s look alike" % (t.name, u.name))

    def test_the_runway_beyond_an_apron_leaves_the_cars_lane_clear(self):
        # The car stops on the apron wherever the flight and the brakes left
        # it along its lane; the runway's kerbs must not stand across it.
        for side in (1, -1):
            t = Track(9, "test")
            t.road(30)
            t.hug(side, at=2)
            t.road(20)
            lane = t.lane_x()
            training.apron_jump(t, 10, 5)
            apron_end = max(b[3] for b in laid.blocks(t) if b[1] - b[0] > 10)
            kerbs = raised_over(t, lane - CAR - 0.5, lane + CAR + 0.5, apron_end + 0.5)
            self.assertEqual(kerbs, [], (side, lane))


if __name__ == "__main__":
    unittest.main()
