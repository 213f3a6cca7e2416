"""Reads back what a Track has laid, for the piece checks: its block lines as
boxes, so a check can ask what lies under the car's line, and its outline as
the overview camera shows it, so that checks can tell shapes apart."""

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


def outline(t, samples=48):
    """What the overview camera shows, sampled along the track: the spans of
    road across it (holes and deadly tiles break a span)."""
    bs = sorted((b for b in blocks(t) if b[5] != "deadly"), key=lambda b: b[0])
    out = []
    for k in range(samples):
        z = -5 + (t.z + 5) * (k + 0.5) / samples
        spans = []
        for b in bs:
            if b[2] <= z < b[3]:
                if spans and b[0] <= spans[-1][1] + 0.01:
                    spans[-1][1] = max(spans[-1][1], b[1])
                else:
                    spans.append([b[0], b[1]])
        out.append(spans)
    return out


def alike(a, b):
    """Whether two samples of outlines show the same spans, give or take."""
    return len(a) == len(b) and all(abs(p[0] - q[0]) <= 1.5 and abs(p[1] - q[1]) <= 1.5 for p, q in zip(a, b))


def differences(t, u):
    """In how many samples two tracks' outlines differ."""
    return sum(1 for a, b in zip(outline(t), outline(u)) if not alike(a, b))
