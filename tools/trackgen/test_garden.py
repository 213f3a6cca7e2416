"""The Deadly Garden's poison field: all poison but for a path, and the path
wide enough for the car wherever the route takes it."""
import unittest

import garden
from laid import blocks
from trackkit import Track


class PoisonFieldTest(unittest.TestCase):
    def field(self, sides, a=5):
        t = Track(41, "test")
        t.a = a
        t.road(24)
        start = t.z
        garden.poison(t, sides)
        return t, start

    def test_the_path_follows_the_route_and_the_rest_is_poison(self):
        for sides in ([1, -1, 1, -1], [-1, 1, -1]):
            t, start = self.field(sides)
            tiles = blocks(t, "deadly")
            self.assertTrue(tiles)
            z = start
            while z < t.z:
                x = garden.path_x(t, z, -t.a, t.a)
                for b in tiles:
                    if b[2] - 1 <= z <= b[3] + 1:
                        gap = max(b[0] - x, x - b[1])
                        self.assertGreater(gap, 0.4 + 0.5, "poison beside the car at z %s x %s" % (z, x))
                z += 0.5
            # Seen from above it is a field of poison, not a road with tiles.
            area = sum((b[1] - b[0]) * (b[3] - b[2]) for b in tiles)
            self.assertGreater(area, 0.4 * (2 * t.a + 0.8) * (t.z - start), sides)

    def test_the_field_is_laid_in_few_strips(self):
        t, _ = self.field([1, -1, 1, -1, 1, -1])
        self.assertLess(len(t.lines), 800)


if __name__ == "__main__":
    unittest.main()
