"""Pieces of the Deadly Garden: wide beds of road with deadly tiles and holes
set into them, laid out so that the way through shows from above.

A bed is a stretch of road between kerbs, `2a + 0.8` wide about `t.cx`,
with rectangles cut into it: deadly tiles (level with the road) and holes
(nothing). It is laid as long strips running along z, one for each band of x
between the edges of the rectangles, so that a car running down a strip
crosses no seam; only where a strip is broken by a tile or a hole does a new
block begin.

Sideways the car moves one unit for every five along z when a steering key
is held, so a bed's doors and lanes sit where the car can reach them with
room to spare; the route aims for the middle of a door, never its edge.
"""


SLOPE = 5.0  # units along z to move one unit sideways
JUMP = 16.8  # units a jump carries the car on the flat at full speed


def _cuts(t, tiles, holes):
    out = []
    for kind, rects in (("deadly", tiles), ("hole", holes)):
        for x0, x1, z0, z1 in rects:
            out.append((kind, t.cx + x0, t.cx + x1, t.z + z0, t.z + z1))
    return out


def bed(t, length, tiles=(), holes=(), kerbs=True, kind="plain"):
    """Road `length` long with deadly tiles and holes, each (x0, x1, z0, z1)
    with x from the road's middle and z from where the bed starts; `kind`
    is that of the road between them (ice, say)."""
    cuts = _cuts(t, tiles, holes)
    x0, x1 = t.x0(), t.x1()
    z0, z1 = t.z, t.z + length
    xs = sorted({round(x0, 3), round(x1, 3)} |
                {round(min(max(v, x0), x1), 3) for c in cuts for v in (c[1], c[2])})
    for a, b in zip(xs, xs[1:]):
        if b - a < 1e-6:
            continue
        # What covers this band, in order along z.
        marks = sorted((max(c[3], z0), min(c[4], z1), c[0]) for c in cuts if c[1] < b - 1e-6 and c[2] > a + 1e-6)
        z = z0
        for m0, m1, cut in marks:
            if m0 > z + 1e-6:
                t.block(a, b, z, m0, t.h, kind)
            if cut == "deadly" and m1 > max(z, m0) + 1e-6:
                t.block(a, b, max(z, m0), m1, t.h, "deadly", side="accent")
            z = max(z, m1)
        if z1 > z + 1e-6:
            t.block(a, b, z, z1, t.h, kind)
    if kerbs:
        # A kerb only where there is road beside it: along a hole at the edge
        # it would stand over nothing.
        for side, edge in ((-1, x0), (1, x1)):
            inner = (edge, edge + 0.01) if side < 0 else (edge - 0.01, edge)
            open_ = sorted((max(c[3], z0), min(c[4], z1)) for c in cuts
                           if c[0] == "hole" and c[1] <= inner[0] + 1e-6 and c[2] >= inner[1] - 1e-6)
            z = z0
            for m0, m1 in open_:
                if m0 > z + 1e-6:
                    t.kerbs(z, m0, left=side < 0, right=side > 0)
                z = max(z, m1)
            if z1 > z + 1e-6:
                t.kerbs(z, z1, left=side < 0, right=side > 0)
    t.z = z1


def aim(t, z, x):
    """From z on, steer for x (from the road's middle)."""
    t.side = 0
    t.act(z, "x", t.cx + x)


def hold(t, z, side):
    """From z on, hold against the kerb on that side."""
    t.hug(side, at=z)


def lean(dx):
    """z needed to move dx sideways, and a little to settle."""
    return SLOPE * abs(dx) + 3


def star_at(t, x, dz, up=0):
    t.star(t.cx + x, t.h + up, t.z + dz)


# --- the garden's shapes ---------------------------------------------------------

def maze(t, doors, depth=4, walls=None, stars=True, post=0.8):
    """Rows of holes right across the road, each with one door (its x from
    the middle, a whole number), with room between to line up for the next
    door. A door at +-a lies along a kerb: the route holds against it there,
    which also puts right what the moves before left wrong; the doors between
    are wider. `walls` are holes along z between the rows, (x0, x1, z0, z1)
    from the maze's start, that close off a way round."""
    a = t.a
    holes, tiles, z, here = [], [], 0.0, (t.lane_x() - t.cx if t.side else 0)
    start = t.z
    for door in doors:
        run = lean(door - here) + 4
        if abs(door) == a:
            hold(t, start + z + 0.5, 1 if door > 0 else -1)
            w = 1.3
        else:
            aim(t, start + z + 0.5, door)
            w = 1.4
        # A wall of nothing down the room, as far from the way through as
        # it can be, so the room reads as a corridor and a dead end.
        lo, hi = min(here, door) - 1.5, max(here, door) + 1.5
        for free0, free1 in ((-a - 0.4, lo), (hi, a + 0.4)):
            if free1 - free0 >= 4 and walls is None:
                mid = (free0 + free1) / 2.0
                holes.append((mid - 1, mid + 1, z, z + run))
        z += run
        # Thorns stand either side of the door, a post of them each way.
        if door - w > -a - 0.4:
            holes.append((-a - 0.4, door - w - post, z, z + depth))
            tiles.append((door - w - post, door - w, z, z + depth))
        if door + w < a + 0.4:
            holes.append((door + w + post, a + 0.4, z, z + depth))
            tiles.append((door + w, door + w + post, z, z + depth))
        if stars:
            t.star(t.cx + door, t.h, start + z + depth / 2.0)
        z += depth
        here = door
    holes.extend(walls or ())
    bed(t, z + 4, holes=holes, tiles=tiles)
    return here


def hourglass(t, beams, wide=6, plaza=12, funnel=12):
    """Wide plazas joined by beams one lane wide, each somewhere else across
    the road: (x of the beam's middle, its length, the kerb to hold in it).
    The route lines up with a beam on the plaza before it and holds to a kerb
    once inside, which puts right whatever the lining up left wrong."""
    here = t.lane_x() - t.cx if t.side else 0
    cx = t.cx
    edge = wide + 0.4
    for bx, length, side in beams:
        t.a, t.cx = wide, cx
        run = max(plaza, lean(bx - here) + 2)
        aim(t, t.z + 0.5, bx)
        # The plaza narrows towards the beam in steps of nothing either side.
        holes = []
        for k in range(3):
            f = (k + 1) / 3.0
            z0 = run + funnel * k / 3.0
            holes.append((-edge, -edge + f * (bx - 1.4 + edge), z0, run + funnel))
            holes.append((edge - f * (edge - bx - 1.4), edge, z0, run + funnel))
        bed(t, run + funnel, holes=[h for h in holes if h[1] - h[0] > 0.2])
        t.a, t.cx = 1, cx + bx
        t.road(4)
        hold(t, t.z - 3, side)
        # Thorns along the kerb not held, once the car is along the other.
        t.road(8)
        tile = (-1.4, -0.2) if side > 0 else (0.2, 1.4)
        bed(t, length - 16, tiles=[(tile[0], tile[1], 0, length - 16)])
        t.road(4)
        t.star_here(-length / 2.0 + 2)
        here = bx + side
    t.a, t.cx = wide, cx
    t.side = beams[-1][2]


def hedge(t, sides, length=30, thick=1.6):
    """A deadly hedge down the middle of the road, broken where the car
    crosses it; each stretch of hedge ends in a bar across the lane the car
    came along, so the car goes through the break before it. `sides` are the
    lanes held, one per stretch."""
    holes, tiles = [], []
    z = 0.0
    start = t.z
    edge = t.a + 0.4
    here = t.side
    for k, s in enumerate(sides):
        if s != here:
            # The break: crossing from kerb to kerb.
            hold(t, start + z + 0.5, s)
            z += lean(2 * t.a) + 4
            here = s
        tiles.append((-thick / 2.0, thick / 2.0, z, z + length))
        t.star(t.cx + s * t.a, t.h, start + z + length / 2.0)
        if k + 1 < len(sides) and sides[k + 1] != s:
            # The bar shuts the lane at the far end of the next break.
            bar = z + length + lean(2 * t.a) + 4
            lo, hi = (thick / 2.0, edge) if s > 0 else (-edge, -thick / 2.0)
            tiles.append((lo, hi, bar, bar + 5))
        z += length
    bed(t, z + 8, tiles=tiles, holes=holes)


def path_x(t, z, lo=-1e9, hi=1e9):
    """Where the route puts the car's middle at z, from the plan: straight
    moves of one unit sideways for five along z towards each aim, stopped
    by the kerbs' lanes at lo and hi."""
    x, last, target = 0.0, -1e9, 0.0
    steps = sorted(t.plan, key=lambda p: p[0])
    for pz, words in steps:
        if pz > z:
            break
        w = words.split()
        if w[0] != "x" or w[1] == "free":
            continue
        x = _advance(x, target, pz - last, lo, hi) if last > -1e8 else x
        last, target = pz, float(w[1])
    return _advance(x, target, z - last, lo, hi) if last > -1e8 else x


def _advance(x, target, dz, lo, hi):
    d = dz / SLOPE
    return max(lo, min(hi, x + max(-d, min(d, target - x))))


def minefield(t, sides, pitch=(2.5, 6.0), size=1.2, clear=0.6):
    """A wide road sown with small deadly tiles on a staggered grid, except
    along the route: kerb to kerb, one kerb per entry of `sides`."""
    start = t.z
    z = 0.0
    here = t.side
    for s in sides:
        hold(t, start + z + 0.5, s)
        dz = lean(2 * t.a if here else t.a) + 6 if s != here else 20
        t.star(t.cx + s * t.a, t.h, start + z + dz - 2)
        z += dz
        here = s
    length = z + 6
    a = t.a
    # The car's middle, kept within the kerbs.
    lim = a

    def car_x(zz):
        return path_x(t, zz, t.cx - lim, t.cx + lim) - t.cx

    tiles = []
    row = 0
    zz = 6.0
    while zz + size < length - 4:
        off = (row % 2) * pitch[0] / 2.0
        x = -a - 0.4 + 0.6 + off
        while x + size <= a + 0.4 - 0.6:
            near = min(abs(car_x(start + q) - min(max(car_x(start + q), x), x + size))
                       for q in (zz - 1, zz, zz + size / 2.0, zz + size, zz + size + 1))
            if near >= clear + 0.4:
                tiles.append((x, x + size, zz, zz + size))
            x += pitch[0]
        zz += pitch[1] / 2.0
        row += 1
    bed(t, length, tiles=tiles)


def poison(t, sides, clear=0.9, step=2.0, grain=0.5):
    """A wide road all poison but for the way the route takes through it,
    kerb to kerb, one kerb per entry of `sides`: a path winding through a
    deadly field. The path's edges keep `clear` beside the car's sides and
    fall on a grid of `grain`, so the field is laid in long strips."""
    start = t.z
    z = 0.0
    here = t.side
    for s in sides:
        hold(t, start + z + 0.5, s)
        dz = lean(2 * t.a if here else t.a) + 10 if s != here else 20
        t.star(t.cx + s * t.a, t.h, start + z + dz - 4)
        z += dz
        here = s
    length = z + 6
    a = t.a

    def car_x(zz):
        return path_x(t, zz, t.cx - a, t.cx + a) - t.cx

    # Bands of `grain` across the field, each poison in the slices of `step`
    # along z that keep clear of the path, runs of slices laid as one tile.
    x0, x1 = -a - 0.4, a + 0.4
    edges = [x0 + k * grain for k in range(int((x1 - x0) / grain + 1e-6) + 1)]
    if edges[-1] < x1 - 1e-6:
        edges.append(x1)
    bands = list(zip(edges, edges[1:]))
    runs = {band: [] for band in bands}
    zz = 8.0
    while zz < length - 6:
        xs = [car_x(start + q) for q in (zz - 2, zz, zz + step / 2.0, zz + step, zz + step + 2)]
        lo, hi = min(xs) - 0.4 - clear, max(xs) + 0.4 + clear
        for b0, b1 in bands:
            if b1 <= lo or b0 >= hi:
                band = runs[(b0, b1)]
                if band and abs(band[-1][1] - zz) < 1e-6:
                    band[-1][1] = zz + step
                else:
                    band.append([zz, zz + step])
        zz += step
    tiles = [(b0, b1, z0, z1) for (b0, b1), band in runs.items() for z0, z1 in band]
    bed(t, length, tiles=tiles)
    t.pieces.add("poison field")


def drift(t, runs, block=8, thorn=1.0):
    """The road drifts sideways a unit a block, a run of blocks one way,
    then the next run the other way: a sawtooth. The car holds to the kerb
    on the side the road drifts to; the other side grows thorns, leaving
    `thorn` of road beside the held lane (none where the car crosses)."""
    for k, (s, count) in enumerate(runs):
        # Away from the kerb behind it before the road turns back: the next
        # block's kerb stands a unit into this one's lane.
        t.side = s
        t.act(t.z - block, "x", t.cx + s * (t.a + 6 + count))
        for i in range(count):
            if i:
                t.cx += s
            crossing = i < 4 and k > 0 or i < 2
            if crossing or i == count - 1 or i % 2:
                t.road(block)
                continue
            inner = s * (t.a - 0.4 - thorn)
            edge = -s * (t.a + 0.4)
            lo, hi = min(inner, edge), max(inner, edge)
            bed(t, block, tiles=[(lo, hi, 1, block - 1)])
            if i % 4 == 2:
                t.star_here(-block / 2.0)


def taper(t, sides, row=5, slack=2):
    """Rows of thorns across the road, each leaving the lane along one kerb
    free; after each row the road loses a unit on the side the car is not
    on, so the rows come quicker as it narrows to a point."""
    for s in sides:
        if s != t.side:
            hold(t, t.z + 0.5, s)
        t.road(5 * 2 * t.a + slack)
        edge = t.a + 0.4
        lo, hi = (-edge, edge - 1.6) if s > 0 else (-edge + 1.6, edge)
        bed(t, row, tiles=[(lo, hi, 0, row)])
        t.star(t.lane_x(s), t.h, t.z - row / 2.0)
        if t.a > 1:
            # Narrow on the far side: the car is along the other kerb.
            t.a -= 0.5
            t.cx += 0.5 * s
        t.road(4)


def rink(t, sides, island=24, lane=1.6):
    """Ice between kerbs with deadly islands down the middle: the car slides
    from kerb to kerb between the islands and keeps to a kerb beside them,
    a lane `lane` wide."""
    step = 5 * 2 * t.a + 12
    tiles, z, start = [], 0.0, t.z
    for s in sides:
        hold(t, start + z + 1, s)
        z += step
        half = t.a + 0.4 - lane
        # Two beds of thorns with a strip of ice between.
        tiles.append((-half, half, z, z + island / 2.0 - 1))
        tiles.append((-half, half, z + island / 2.0 + 1, z + island))
        t.star(t.lane_x(s), t.h, start + z + island / 2.0)
        z += island
    bed(t, z + 8, tiles=tiles, kind="ice")
    t.pieces.add("ice")


def stagger(t, islands, g=5):
    """Islands a jump apart, each some way to the side of the last and as
    long as it says: (dx, length). The car takes off from the kerb on the
    side the next island lies to, so it comes down inside it, then holds to
    the kerb on the side of the island after; thorns fill the other side."""
    first = 1 if islands[0][0] > 0 else -1
    if t.side != first:
        hold(t, t.z + 0.5, first)
        t.road(lean(2 * t.a) + 6)
    for k, (dx, length) in enumerate(islands):
        # The kerb to hold on this island: the side the next one lies to.
        d = 1 if islands[min(k + 1, len(islands) - 1)][0] > 0 else -1
        edge = t.z
        t.let_go(edge - 8)
        takeoff = min(edge + (g + 0.8 - JUMP) / 2.0, edge - 1.5)
        t.act(takeoff, "jump")
        t.star(t.lane_x(), t.h + 2, round(takeoff + 8.5))
        t.z = edge + g
        t.cx += dx
        down = max(edge + g + 3, takeoff + JUMP + 3)
        t.side = d
        t.hug(d, at=down)
        # Thorns once the car is across, to the end of the island.
        across = down + lean(3) + 2 - t.z
        t.road(across)
        edge_ = t.a + 0.4
        lo, hi = (-edge_, edge_ - 1.6) if d > 0 else (-edge_ + 1.6, edge_)
        bed(t, length - across - 8, tiles=[(lo, hi, 0, length - across - 8)])
        t.road(8)
    t.pieces.add("stepping stones")


def terraces(t, treads):
    """A wide staircase of treads (x of the lane left free, dh, length), each
    dh higher (or lower) than the last: up a tread the car jumps its face,
    down one it drives off the edge. Thorns cover each tread but for one
    lane, at a kerb or in the middle; the lanes in the middle come only
    between lanes at a kerb, where the car puts right what a move left
    wrong. The car reaches the free lane before the thorns begin."""
    a = t.a
    for lane, dh, length in treads:
        face = t.z
        if t.side:
            t.let_go(face - 12)
        if dh > 0:
            t.act(face - 8.4, "jump")
            t.star(t.lane_x(), t.h + 2, face - 4)
        here = t.lane_x() - t.cx if t.side else t.lane_x(0) - t.cx
        t.h += dh
        if abs(lane) == a:
            hold(t, face + 10, 1 if lane > 0 else -1)
        else:
            aim(t, face + 10, lane)
        across = 10 + lean(lane - here) + 4
        t.block(t.x0(), t.x1(), face, face + across, t.h, thick=max(dh, 0) + 1)
        t.kerbs(face, face + across)
        t.z = face + across
        t.star(t.cx + lane, t.h, t.z - 2)
        edge = a + 0.4
        thorns = length - across - 8
        tiles = [(lo, hi, 0, thorns) for lo, hi in ((-edge, lane - 1.3), (lane + 1.3, edge)) if hi - lo > 0.5]
        bed(t, thorns, tiles=tiles)
        t.road(8)
        t.side = 0 if abs(lane) != a else t.side
    t.pieces.add("step up")


def resize(t, a):
    """The road changes width keeping the kerb the car holds where it is, so
    a narrower road's kerb never stands in the car's lane."""
    side = t.side or 1
    t.cx += side * (t.a - a)
    t.a = a
    t.hug(side, at=t.z)
