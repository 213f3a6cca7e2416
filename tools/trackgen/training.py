"""The Training Ground: ten tracks that teach one thing each. They stay gentle
(wide timing windows, kerbs to lean on), but every one has an outline of its
own, so that a player who has driven them knows them again from the track
choice's picture: a road that opens out and closes again, plazas stepping
sideways, ice bays to one side and then the other, a band of deadly gates, a
fan that widens at every bounce, bridges set to alternate sides, islands in
a chevron."""

from trackkit import Track
import bridges


def widen(t, a, length, keep=0):
    """Wider from here on; the kerbs only move outwards, so the car meets no
    kerb front wherever it is."""
    assert a >= t.a, "track %d: widen() narrows at z %s" % (t.number, t.z)
    bridges.reshape(t, a, keep=keep)
    t.road(length)


def first_drive():
    # A long lens: the road opens out a lane at a time, with a star at one
    # kerb and then the other, and closes again from the left, the car on
    # the right kerb. Up alone still runs down the middle to the flag.
    t = Track(1, "First Drive", "steer from kerb to kerb for the stars; Up alone still reaches the flag")
    t.road(20)
    t.hug(1, at=4)
    for a in (3, 4):
        widen(t, a, 16)
    t.star_here(-4)
    t.hug(-1)
    for a in (5, 6):
        widen(t, a, 24)
    t.road(16)
    t.star_here(-4)
    t.hug(1)
    t.road(20)
    for a in (5, 4):
        bridges.reshape(t, a, keep=1)
        t.road(24)
    t.star_here(-6)
    t.finish(16)
    return t


def side_streets():
    t = Track(2, "Side Streets", "the road steps sideways; hold to the kerb it moves to")
    t.road(30)
    for dx in (4, -4, 4, -4, -6, 6):
        t.shift(dx)
    t.finish()
    return t


def thin_ice():
    # Bays of ice open out to one side of the road, then the other: slide
    # across each bay to its far kerb for the star and back.
    t = Track(3, "Thin Ice", "on ice the car slides on: let the kerb catch it")
    t.road(30)
    t.hug(-1, at=4)
    for side in (1, -1, 1):
        keep = -side
        if t.side != keep:
            t.hug(keep)
            t.road(bridges.cross_run(t))
        bridges.reshape(t, 4, keep=keep)
        t.ice(40, sides=[side, keep])
        bridges.reshape(t, 2, keep=keep)
        t.road(16)
    t.finish()
    return t


def handle_with_care():
    # The road parts round a slot, again and again: one way is free, the
    # other holds a deadly tile.
    t = Track(4, "Handle with Care", "deadly tiles: keep to the free lane")
    t.road(24)
    widen(t, 3, 16)
    for side in (1, -1, 1):
        t.split(42, hole=3, stars_side=side)
        t.road(38)
    t.deadly_zigzag([-1, 1])
    t.road(20)
    t.finish()
    return t


def up_and_over():
    # A wide road with ridges on it: up a ramp onto a narrow ridge along
    # the left kerb, and off its end back down onto the wide road.
    t = Track(5, "Up and Over", "ramps up, drops down; stars high and low")
    t.a = 3
    t.road(40)
    t.hug(-1, at=8)
    t.star_here(-10)
    for rise, ridge, fall in ((2, 1, 2), (2, 1, 2)):
        t.ramp_up(rise, land=4)
        bridges.reshape(t, ridge)
        t.road(26)
        t.star_here(-8)
        t.drop(fall, land=2)
        bridges.reshape(t, 3)
        t.road(28)
    t.star_here(-6)
    t.finish()
    return t


def crumbling():
    # Wide plazas joined by narrow runs that crumble, each along the kerb
    # the car comes in on, one side and then the other.
    t = Track(6, "Crumble", "blocks that fall away: keep going")
    t.a = 4
    t.road(40)
    t.hug(1, at=4)
    for side in (1, -1):
        if t.side != side:
            t.hug(side)
            t.road(bridges.cross_run(t))
        t.star_here(-4)
        t.ramp_up(3, land=12)
        bridges.reshape(t, 1)
        t.road(10)
        t.falling_run(3)
        widen(t, 4, 20, keep=side)
    t.finish()
    return t


def springs():
    # One lane along the right kerb; every bounce lands on a wider road, so
    # the track fans out to the left as it climbs.
    t = Track(7, "Springs", "bounce pads throw the car up onto higher road")
    t.a = 1
    t.road(40)
    t.hug(1, at=8)
    t.star_here(-4)
    for rise, a in ((1, 2), (2, 3), (2, 4)):
        t.bounce(rise, gap=6 + 2 * a)
        widen(t, a, 10, keep=1)
    t.drop(2, land=24)
    t.finish()
    return t


def shuttle_service():
    t = Track(8, "Shuttle Service", "wait for the shuttle, drop onto it, ride it over")
    t.road(40)
    t.hug(1, at=8)
    t.star_here(-4)
    t.ramp_up(3, land=24)
    t.platform_cross(10, dist=3, speed=3)
    t.road(30)
    t.platform_cross(12, dist=4, speed=3, direction="left", drop=0.5)
    t.finish()
    return t


def mind_the_gaps():
    # Islands a jump apart, each set off to the side of the last: out to the
    # right and back, in a chevron.
    t = Track(10, "Mind the Gaps", "jump the gaps, each a little wider")
    t.road(50)
    t.hug(1, at=10)
    t.star_here(-8)
    for g, dx, side in ((4, 3, 1), (5, 3, -1), (6, -3, -1), (6, -3, -1)):
        bridges.hop(t, g, dx=dx, land=34, side=side)
    t.road(8)
    t.finish()
    return t


def apron_jump(t, g, apron):
    """A turbo pad on the runway, a long flight over a gap at full speed onto
    a wide apron where the car comes to a stand, and off again from rest on
    the runway beyond. The car flies and stops in its lane, so the apron's
    kerbs, well out to either side, never come near it."""
    runway = t.a
    t.let_go(t.z - 6)
    t.block(t.x0(), t.x1(), t.z, t.z + 2, t.h, "turbo")
    t.kerbs(t.z, t.z + 2)
    t.act(t.z - 2, "speed", 1)
    t.z += 2
    t.road(14)
    edge = t.z
    takeoff = min(edge + (g + 0.8 - 28) / 2.0, edge - 2)
    t.act(takeoff, "jump")
    t.star(t.lane_x(), t.h + 2, round(takeoff + 14))
    t.z = edge + g
    t.act(takeoff + 31, "board", 999)
    t.act(takeoff + 31.1, "speed", 0.6)
    bridges.reshape(t, apron, keep=0)
    t.road(takeoff + 31 + 16 + 30 - t.z)
    # The runway on is a lane wider: the car comes off the apron in its old
    # lane, clear of the new kerbs however it came to a stand.
    bridges.reshape(t, runway + 1, keep=0)
    t.road(24)
    t.pieces.add("turbo jump")


def turbo():
    # A runway, and at the end of each flight a wide apron to stop on.
    t = Track(9, "Turbo", "turbo pads: a long jump only at full speed, then stop")
    t.road(40)
    t.hug(-1, at=8)
    t.star_here(-4)
    apron_jump(t, 10, 5)
    t.hug(1, at=t.z - 20)
    t.road(24)
    t.star_here(-6)
    apron_jump(t, 12, 6)
    t.finish()
    return t


def zone1():
    # In the order they teach: steering, then the road's own ways, then
    # flights; the last asks for every jump to be timed.
    return [first_drive(), side_streets(), thin_ice(), handle_with_care(), up_and_over(), crumbling(), springs(),
            shuttle_service(), turbo(), mind_the_gaps()]
