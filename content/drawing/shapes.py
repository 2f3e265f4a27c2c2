"""Shapes as SVG path data. What crosses an edge of the panorama is drawn on both sides."""

import math
import random

WIDTH, HEIGHT = 2048, 1182


def wave(rng, level, heights):
    """A line over x that repeats after WIDTH; heights[k] for k + 1 waves."""
    phases = [rng.uniform(0, 2 * math.pi) for _ in heights]

    def at(x):
        return level + sum(height * math.sin(2 * math.pi * (k + 1) * x / WIDTH + phases[k])
                           for k, height in enumerate(heights))
    return at


def peaks(rng, level, heights):
    """Like `wave`, with sharp tops; heights maps summits to pixels."""
    parts = [(count, height, rng.uniform(0, math.pi)) for count, height in heights.items()]

    def at(x):
        return level - sum(height * (1 - abs(math.sin(math.pi * count * x / WIDTH + phase)))
                           for count, height, phase in parts)
    return at


def outline(points):
    return "M" + " ".join(f"{x:.1f},{y:.1f}" for x, y in points) + " Z"


def ground(line, bottom, step):
    """The area under a line, a little past both edges."""
    points = [(x, line(x)) for x in range(-2 * step, WIDTH + 3 * step, step)]
    return outline([(-2 * step, bottom)] + points + [(WIDTH + 2 * step, bottom)])


def fir(rng, x, foot, height):
    """A fir: boughs that hang, wider and more ragged towards the foot; near ones have twigs."""
    tiers = max(5, int(height / 16))
    reach = height * rng.uniform(.16, .225)
    lean = height * rng.uniform(-.012, .012)
    twigs = 0 if height < 130 else 3 if height < 260 else 6
    sides = []
    for side in (1, -1):
        points = []
        for tier in range(1, tiers + 1):
            down = tier / tiers
            y = foot - height * (1 - down * .92)
            out = reach * (.06 + .94 * down ** .9) * rng.uniform(.62, 1.1)
            middle = x + lean * (1 - down)
            drop = height / tiers * (rng.uniform(.35, .8) if twigs == 0 else rng.uniform(.6, 1.25))
            inner = out * (rng.uniform(.22, .36) if twigs == 0 else rng.uniform(.18, .5))
            points.append((middle + side * (inner + out) / 2, y + drop * .35))
            points.append((middle + side * out, y + drop))
            for twig in range(twigs):
                along = 1 - (twig + rng.uniform(.5, 1)) / (twigs + 1)
                at, low = inner + (out - inner) * along, y + drop * (.62 + .38 * along)
                points.append((middle + side * (at + out * .03), low))
                points.append((middle + side * (at + out * .01), low + height * rng.uniform(.004, .013)))
                points.append((middle + side * (at - out * .02), low))
            points.append((middle + side * inner, y + drop * .55))
        sides.append(points)
    trunk = height * .014 + .7
    top = x + lean
    return outline([(top, foot - height * 1.02)] + sides[0] +
                   [(x + trunk, foot - height * .06), (x + trunk * 1.3, foot + 8),
                    (x - trunk * 1.3, foot + 8), (x - trunk, foot - height * .06)] + sides[1][::-1])


def snag(rng, x, foot, height):
    """A dead trunk with a few bare branches."""
    half = height * .012 + .6
    out = [outline([(x - half * .4, foot - height), (x + half * .5, foot - height * .97),
                    (x + half * 1.4, foot + 6), (x - half * 1.4, foot + 6)])]
    for _ in range(7):
        y, side = foot - height * rng.uniform(.3, .95), rng.choice((-1, 1))
        long = height * rng.uniform(.04, .11)
        out.append(outline([(x, y), (x + side * long, y - long * rng.uniform(-.2, .5)), (x, y + half)]))
    return " ".join(out)


def reed(x, foot, height, bend):
    """A blade of reed, its tip `bend` pixels aside."""
    half = foot - height * .5
    return (f"M{x - 2:.1f},{foot + 6:.1f} Q{x:.1f},{half:.1f} {x + bend:.1f},{foot - height:.1f} "
            f"Q{x + 3:.1f},{half:.1f} {x + 2:.1f},{foot + 6:.1f} Z")


def bulrush(x, foot, height, bend):
    """A stalk and its head."""
    top = foot - height
    return (reed(x, foot, height, bend) + f" M{x + bend - 3:.1f},{top:.1f} q3,-7 6,0 l-1,24 q-2,5 -4,0 Z")


def wrapped(shape, x, margin):
    """What `shape(x)` draws, again on the far side where it crosses an edge."""
    out = [shape(x)]
    if x < margin:
        out.append(shape(x + WIDTH))
    if x > WIDTH - margin:
        out.append(shape(x - WIDTH))
    return out


def forest(rng, line, bottom, gap, least, most, rhythm, clearings=()):
    """Ground and the firs on it, one outline. Where a clearing (x, half width) is, they are low."""
    out = [ground(line, bottom, 16)]
    x = 0.0
    while x < WIDTH - gap * .4:
        tall = .5 + .5 * math.sin(2 * math.pi * rhythm * x / WIDTH + 1.3)
        tall *= .6 + .4 * math.sin(2 * math.pi * (2 * rhythm + 1) * x / WIDTH + 4)
        height = least + (most - least) * (.25 + .75 * max(0.0, tall)) * rng.random() ** .6
        for middle, half in clearings:
            away = abs((x - middle + WIDTH / 2) % WIDTH - WIDTH / 2) / half
            height *= min(1.0, .5 + .5 * away ** 2)
        seed, kind = rng.random(), snag if rng.random() < .035 and height > 60 else fir
        out += wrapped(lambda at: kind(random.Random(seed), at, line(at % WIDTH) + 4 + height * .17, height),
                       x, height)
        x += gap * rng.uniform(.5, 1.5) * (1 if rng.random() < .9 else 1.8)
    return " ".join(out)
