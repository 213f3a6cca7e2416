"""Reads back what a Track has laid, for the piece checks: its block lines as
boxes, so a check can ask what lies under the car's line."""

KINDS = ("ice", "deadly", "turbo", "finish", "falling", "bounce")


def blocks(t, kind=None):
    """(x0, x1, z0, z1, top, kind) of every block line of a track, only those
    of one kind when `kind` is given ("plain" for a block without one)."""
    out = []
    for line in t.lines:
        w = line.split()
        if w[0] != "block":
            continue
        x, y, z, sx, sy, sz = map(float, w[1:7])
        k = w[-1] if w[-1] in KINDS else "plain"
        if kind is None or k == kind:
            out.append((x, x + sx, z, z + sz, y + sy, k))
    return out
