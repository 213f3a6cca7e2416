"""The recipes of the sixty tracks, ten a zone, and of the example user tracks."""
import random

from trackkit import Track


# --- zone 1: one idea a track -------------------------------------------------

def t01():
    t = Track(1, "First Drive")
    t.road(340)
    for z in (40, 110, 180, 250, 320):
        t.star(0, 1, z)
    t.finish()
    return t


def t02():
    t = Track(2, "Mind the Gaps")
    t.road(75)
    t.star_on_road(-15)
    t.gap(5, land=40)
    t.gap(7, land=40)
    t.gap(6, dh=1, land=40)
    t.gap(8, dh=-1, land=40)
    t.gap(9, land=50)
    t.star_on_road(-20)
    t.finish()
    return t


def t03():
    t = Track(3, "Up and Over")
    t.road(50)
    t.star_on_road(-20)
    t.ramp_up(2, land=40)
    t.star_on_road(-20)
    t.ramp_up(2, land=40)
    t.jump_star(-15)
    t.ramp_down(2, land=40)
    t.drop(2, land=40)
    t.star_on_road(-15)
    t.ramp_up(1, length=4, land=40)
    t.drop(1, land=30)
    t.finish()
    return t


def t04():
    t = Track(4, "Off the Line")
    t.road(40)
    t.widen_for_stars(40, 10, [-4])
    t.road(30, w=4)
    t.jump_star(-12)
    t.jog(4, length=40)
    t.widen_for_stars(50, 12, [5, -5])
    t.road(30, w=4)
    t.jog(-4, length=40)
    t.jump_star(-20)
    t.road(20)
    t.finish()
    return t


def t05():
    t = Track(5, "Springs")
    t.road(90)
    t.bounce(0, gap=8, land=40)
    t.bounce(2, gap=8, land=40)
    t.bounce(3, gap=6, land=40)
    t.road(20)
    t.drop(4, land=40)
    t.star_on_road(-10)
    t.finish()
    return t


def t06():
    t = Track(6, "Thin Ice")
    t.road(40)
    t.ice(40, side=1)
    t.road(30, w=4)
    t.ice(50, side=-1)
    t.road(30, w=4)
    t.ice(40, side=1)
    t.road(40, w=4)
    t.star_on_road(-10)
    t.finish()
    return t


def t07():
    t = Track(7, "Turbo")
    t.road(80)
    t.star_on_road(-10)
    t.turbo()
    t.road(40)
    t.gap(15, land=50, fast=True)
    t.road(20)
    t.brake()
    t.road(40)
    t.turbo()
    t.road(30)
    t.gap(12, dh=1, land=50, fast=True)
    t.brake()
    t.road(50)
    t.finish()
    return t


def t08():
    t = Track(8, "Crumble")
    t.road(70)
    t.ramp_up(3, land=20)
    t.ramp_up(3, land=30)
    t.star_on_road(-10)
    t.falling_run(3)
    t.road(30)
    t.star_on_road(-10)
    t.ramp_up(2, land=20)
    t.ramp_up(3, land=30)
    t.falling_run(4)
    t.road(40)
    t.finish()
    return t


def t09():
    t = Track(9, "Handle with Care")
    t.road(40)
    t.deadly_rows([0, 2])
    t.road(30, w=4)
    t.deadly_rows([2, 1, 0])
    t.star_on_road(-8)
    t.road(30, w=4)
    t.deadly_rows([1, 0, 2], speed=0.45)
    t.road(30, w=4)
    t.finish()
    return t


def t10():
    t = Track(10, "Shuttle Service")
    t.road(40)
    t.star_on_road(-10)
    t.platform_bridge(length=10, dist=3, speed=3, direction="right")
    t.star_on_road(-10)
    t.road(20, w=4)
    t.platform_bridge(length=12, dist=4, speed=3, direction="left")
    t.road(20, w=4)
    t.platform_bridge(length=8, dist=2, speed=2, direction="right")
    t.road(30, w=4)
    t.star_on_road(-10)
    t.finish()
    return t


def zone1():
    return [t01(), t02(), t03(), t04(), t05(), t06(), t07(), t08(), t09(), t10()]


# --- zones 2 to 6: pieces drawn from the zone's own set ----------------------

def safe_drop(t, rng):
    if t.h >= 3:
        t.drop(rng.choice([1, 2]), land=rng.randint(16, 24))
    else:
        t.ramp_up(2, land=rng.randint(18, 26))


def climb_for(t, need):
    while t.h < need:
        t.ramp_up(min(3, need - t.h + 1), land=20)


def stars_between(t, rng):
    pick = rng.random()
    if pick < 0.35:
        t.road(26)
        t.jump_star(-10)
    elif pick < 0.7:
        t.widen_for_stars(30, 10, [rng.choice([-4, 4])])
    else:
        t.road(20)
        t.star_on_road(-8)


def z2_piece(t, rng, d):
    k = rng.random()
    if k < 0.4:
        t.platform_bridge(length=rng.randint(8, 12), width=rng.choice([3, 4]), dist=rng.randint(2, 3 + d // 3),
                          speed=rng.randint(2, 3), direction=rng.choice(["left", "right"]), land=20)
        t.road(10, w=4)
    elif k < 0.7:
        t.gap(rng.randint(5, 8 + d // 3), dh=rng.choice([-1, 0, 1]) if t.h > 1 else rng.choice([0, 1]), land=24)
    elif k < 0.85:
        t.road(rng.randint(30, 40), w=2)
        t.road(10, w=4)
    else:
        t.jog(rng.choice([-4, 4]), length=20)


def z3_piece(t, rng, d):
    k = rng.random()
    if k < 0.45:
        t.ice(rng.randint(36, 50), side=rng.choice([-1, 1]))
        t.road(10, w=4)
    elif k < 0.8:
        t.turbo()
        t.road(rng.randint(20, 30))
        t.gap(rng.randint(12, 16 + d // 2), dh=rng.choice([0, 1]), land=40, fast=True)
        t.brake()
        t.road(20)
    else:
        t.gap(rng.randint(5, 9), land=24)


def z4_piece(t, rng, d):
    k = rng.random()
    if k < 0.55:
        n = rng.randint(3, 4 + d // 3)
        step = rng.choice([1, 2])
        climb_for(t, n * step + 2)
        t.falling_run(n, step=step, length=3 if step == 1 else 4)
        t.road(10)
    elif k < 0.75:
        t.ramp_up(rng.choice([1, 2, 3]), land=24)
    elif k < 0.9:
        t.gap(rng.randint(5, 9), dh=rng.choice([0, 1]), land=24)
    else:
        t.bounce(rng.choice([0, 1, 2]), gap=8, land=30)


def z5_piece(t, rng, d):
    k = rng.random()
    if k < 0.6:
        lanes = [rng.randint(0, 2) for _ in range(rng.randint(3, 4 + d // 2))]
        t.deadly_rows(lanes, row=rng.choice([6, 8]), between=10, speed=rng.choice([0.45, 0.5, 0.6]))
        t.road(10, w=4)
    elif k < 0.8:
        t.jog(rng.choice([-4, 4]), length=20)
    else:
        t.gap(rng.randint(5, 9), land=24)


def z6_piece(t, rng, d):
    k = rng.random()
    if k < 0.35:
        for _ in range(rng.randint(2, 3)):
            t.bounce(rng.choice([0, 1, 2, 3]), gap=rng.randint(6, 9), land=26)
    elif k < 0.5:
        t.turbo()
        t.road(20)
        t.gap(rng.randint(12, 17), land=40, fast=True)
        t.brake()
        t.road(20)
    elif k < 0.62:
        t.platform_bridge(length=rng.randint(8, 10), width=3, dist=rng.randint(2, 4), speed=rng.randint(2, 3),
                          direction=rng.choice(["left", "right"]), land=20)
        t.road(10, w=4)
    elif k < 0.74:
        t.ice(rng.randint(36, 44), side=rng.choice([-1, 1]))
        t.road(10, w=4)
    elif k < 0.86:
        n = rng.randint(3, 5)
        climb_for(t, n + 2)
        t.falling_run(n)
        t.road(10)
    else:
        t.deadly_rows([rng.randint(0, 2) for _ in range(3)], speed=0.5)
        t.road(10, w=4)


ZONE_PIECES = {2: z2_piece, 3: z3_piece, 4: z4_piece, 5: z5_piece, 6: z6_piece}
ZONE_LENGTH = {2: (420, 600), 3: (600, 820), 4: (520, 720), 5: (500, 700), 6: (760, 1050)}
ZONE_NAMES = {
    2: ["Stepping Stones", "Rope Bridge", "Cloud Hopper", "The Ferry", "Lanes in the Sky",
        "Crossings", "Drift Wood", "High Wire", "Long Way Round", "Bridge of Sighs"],
    3: ["Black Ice", "Afterburner", "Glacier Mouth", "Slide Rule", "Polar Express",
        "Frozen Lake", "Cold Start", "Skid Row", "Ice Cannon", "Whiteout"],
    4: ["Loose Gravel", "Going Down", "Stair Master", "Rock Fall", "Cave In",
        "Landslide", "Tumbledown", "Sinking Feeling", "Avalanche", "Collapse"],
    5: ["Thorn Hedge", "Narrow Escape", "Minefield", "Poison Path", "The Labyrinth",
        "Nightshade", "Sting", "Deadly Nightshade", "Last Breath", "Garden of Doom"],
    6: ["Trampoline", "Pogo", "Sky High", "Spring Fever", "Moon Shot",
        "Rebound", "Grand Tour", "Ricochet", "Everything Goes", "Finale"],
}


def zone_track(number):
    zone = (number - 1) // 10 + 1
    d = (number - 1) % 10
    rng = random.Random(number * 7919)
    t = Track(number, ZONE_NAMES[zone][d])
    lo, hi = ZONE_LENGTH[zone]
    target = lo + (hi - lo) * d / 9
    t.road(40)
    t.star_on_road(-12)
    piece = ZONE_PIECES[zone]
    while t.z < target:
        piece(t, rng, d)
        if rng.random() < 0.5:
            stars_between(t, rng)
        else:
            t.road(rng.randint(12, 20), w=4)
    t.road(20, w=4)
    side = rng.choice([-1, 1])
    t.star_on_road(-6, dx=side)
    t.act(t.z - 18, "x", t.cx + side)
    t.finish()
    return t


def all_tracks():
    return zone1() + [zone_track(n) for n in range(11, 61)]


def user_tracks():
    """Examples of tracks people make themselves: one short idea each."""
    a = Track(1, "Sunday Drive")
    a.zone = 2
    a.road(60)
    a.star_on_road(-20)
    a.widen_for_stars(30, 10, [4, -4])
    a.road(30, w=4)
    a.gap(6, land=30)
    a.platform_bridge(length=10, dist=3, speed=2, direction="left")
    a.road(40, w=4)
    a.star_on_road(-10)
    a.finish()

    b = Track(1, "Pad Party")
    b.zone = 6
    b.road(50)
    for rise in (1, 2, 0, 2, -1):
        b.bounce(rise, gap=7, land=26)
    b.road(30)
    b.jump_star(-10)
    b.finish()

    c = Track(1, "Ice Palace")
    c.zone = 3
    c.road(40)
    c.ice(40, side=-1)
    c.road(20, w=4)
    c.turbo()
    c.road(30)
    c.gap(14, land=40, fast=True)
    c.brake()
    c.ice(44, side=1)
    c.road(30, w=4)
    c.finish()
    return [("sunday_drive", a), ("pad_party", b), ("ice_palace", c)]
