"""The world of the show: a lake in a forest, seen all the way round, at an hour."""

import random

from . import creatures
from .paint import ellipse, glow, gradient, seams, stop_list, vapour, veil
from .shapes import HEIGHT, WIDTH, bulrush, fir, forest, ground, peaks, reed, wave, wrapped

WATERLINE = 800

DUSK = {
    "sky": [(0, "#0b0a24"), (.16, "#171238"), (.32, "#2c1c52"), (.44, "#4f2b63"), (.54, "#86405f"),
            (.61, "#bb5f54"), (.66, "#d98a55")],
    "afterglow": "#ff9a52", "afterglow at": 1700, "warmth": .58,
    "cloud": "#e07a6c", "high cloud": "#6d4a8c",
    "ranges": [("#7c4468", "#b0605c"), ("#5a3563", "#94505f")],
    "mist": "#d98a6e",
    "woods": [("#56345f", "#9c5867"), ("#3f2753", "#7d4a64"), ("#2c1d45", "#573558"), ("#21163a", "#33214a")],
    "water": [(0, "#a65c62"), (.10, "#7d4560"), (.36, "#48305c"), (.75, "#2b2049"), (1, "#231a40")],
    "glint": "#f4b083", "near": "#1c1336", "near light": "#412a56",
    "stars": 240, "window": "#ffcf7a", "smoke": None, "eyes": "#f2b45c",
    "unlit": ("#251a49", "#47295b"),
    "letter": [(0, "#fff3dc"), (.45, "#fbd9ab"), (.8, "#e99c78"), (1, "#b8647a")],
}

MORNING = {
    "sky": [(0, "#0c1d3f"), (.16, "#1a3663"), (.32, "#3a5689"), (.42, "#6b789f"), (.50, "#a78f9c"),
            (.57, "#dca58c"), (.64, "#f7c088")],
    "afterglow": "#ffc47e", "afterglow at": 1040, "warmth": .78,
    "cloud": "#f7ad8c", "high cloud": "#8b93c0",
    "ranges": [("#7488a8", "#b5a9ac"), ("#586f98", "#9a9dae")],
    "mist": "#d3bfb8",
    "woods": [("#546c95", "#a3a0ad"), ("#3c5483", "#8089a3"), ("#2a3f6c", "#586a92"), ("#1f3059", "#344a77")],
    "water": [(0, "#a9a2ac"), (.10, "#7f8aa6"), (.36, "#4a6190"), (.75, "#2d4371"), (1, "#263a66")],
    "glint": "#f6cfa0", "near": "#16254a", "near light": "#3a5283",
    "stars": 26, "window": None, "smoke": "#dfd6d6", "eyes": None,
    "unlit": ("#27487a", "#5a74a0"),
    "letter": [(0, "#fff6e6"), (.45, "#fde3bd"), (.8, "#f2b58c"), (1, "#c98683")],
}


def definitions(hour):
    woods = zip(hour["woods"], ((560, 705), (600, 745), (640, 790), (700, 815)))
    return "".join([
        "<defs>", gradient("sky", hour["sky"]), gradient("water", hour["water"], WATERLINE, HEIGHT),
        *(gradient(f"range{k}", [(0, top), (1, foot)], 520, 690) for k, (top, foot) in enumerate(hour["ranges"])),
        *(gradient(f"wood{k}", [(0, c[0]), (.45, c[0]), (1, c[1])], *ys) for k, (c, ys) in enumerate(woods)),
        gradient("near", [(0, hour["near light"]), (.55, hour["near"]), (1, hour["near"])], 560, HEIGHT),
        gradient("deep", [(0, hour["near"], 0), (1, hour["near"], .85)], 980, HEIGHT),
        gradient("letter", hour["letter"], 0, 10), gradient("moonlight", [(0, "#fff3da"), (1, "#f3c79a")], -5, 5),
        gradient("unlit", [(0, hour["unlit"][0]), (1, hour["unlit"][1])], -5, 5),
        gradient("high", [(0, "#fff", 0), (.3, "#fff", .35), (.75, "#fff", .9), (1, "#fff", 0)], 40, 620),
        gradient("low", [(0, "#fff", 0), (.5, "#fff", 1), (1, "#fff", 0)], 560, 830),
        gradient("shore", [(0, "#fff", 0), (.55, "#fff", 1), (1, "#fff", 0)], 740, 880),
        '<radialGradient id="ray" gradientUnits="userSpaceOnUse" cx="1040" cy="628" r="880">' +
        stop_list([(0, "#ffe2b0", .5), (.3, "#ffd09a", .22), (1, "#ffd09a", 0)]) + "</radialGradient>",
        glow("halo", hour["glint"], .6), glow("afterglow", hour["afterglow"], .85),
        glow("lamp", "#ffbe6a", .55), glow("bank", hour["mist"], .6), glow("rim", hour["glint"], .35),
        vapour("clouds", hour["cloud"], 5, 5, 30, .47, 2.1),
        vapour("cirrus", hour["high cloud"], 9, 3, 16, .46, 1.8),
        vapour("mist", hour["mist"], 14, 7, 26, .36, 1.7), seams(), "</defs>"])


def sky(hour, light):
    rng = random.Random(2006)
    out = [f'<rect width="{WIDTH}" height="{HEIGHT}" fill="url(#sky)"/>']
    for _ in range(hour["stars"]):
        y = 4 + 480 * rng.random() ** 1.3
        out.append(f'<circle cx="{rng.uniform(4, WIDTH - 4):.1f}" cy="{y:.1f}" '
                   f'r="{rng.choice((1.1, 1.2, 1.3, 1.5, 2.2)):.1f}" fill="#f6e6dc" '
                   f'opacity="{rng.uniform(.2, .85) * (1 - y / 560):.2f}"/>')
    at = hour["afterglow at"]
    out += [veil("cirrus", 0, "high"),
            ellipse(at, 690, 900, 330, "url(#afterglow)", hour["warmth"]),
            ellipse(at, 700, 420, 190, "url(#afterglow)", hour["warmth"]),
            veil("clouds", 0, "high"), light]
    return "".join(out)


def land(hour, letters):
    """All that the water mirrors, far to near, with haze between and letters among the trees."""
    rng = random.Random(4)
    far = peaks(rng, 655, {2: 34, 3: 62, 5: 58, 7: 30, 11: 14, 19: 13, 31: 7, 53: 4, 83: 3})
    nearer = peaks(rng, 692, {3: 26, 4: 44, 6: 36, 9: 22, 14: 14, 23: 9, 41: 5, 67: 3})
    ragged = random.Random(31)
    woods = [forest(ragged, wave(ragged, 668, [16, 12, 7, 6]), WATERLINE, 6, 34, 84, 5),
             forest(ragged, wave(ragged, 716, [14, 10, 8, 5]), WATERLINE, 9, 62, 150, 3, ((1700, 300),)),
             forest(ragged, wave(ragged, 762, [10, 7, 5, 4]), WATERLINE, 12, 84, 230, 4, ((560, 420), (1720, 330))),
             forest(ragged, wave(ragged, 789, [3, 3, 2, 2]), WATERLINE + 3, 11, 22, 84, 7, ((640, 110),))]
    at = hour["afterglow at"]
    return "".join([
        f'<g id="land"><path d="{ground(far, WATERLINE, 6)}" fill="url(#range0)"/>',
        f'<path d="{ground(nearer, WATERLINE, 6)}" fill="url(#range1)"/>',
        ellipse(at, 690, 700, 120, "url(#afterglow)", .35), veil("mist", 0, "low"),
        f'<path d="{woods[0]}" fill="url(#wood0)"/>', veil("mist", 120, "low"), "</g>",
        f'<g id="letters">{letters}</g><g id="woods">',
        f'<path d="{woods[1]}" fill="url(#wood1)"/>', ellipse(at, 740, 640, 90, "url(#afterglow)", .28),
        veil("mist", 230, "low"), f'<path d="{woods[2]}" fill="url(#wood2)"/>',
        *(ellipse(x, 790, 330, 26, "url(#bank)", .55) for x in (180, 700, 1240, 1730)),
        f'<path d="{woods[3]}" fill="url(#wood3)"/>',
        creatures.cabin(640, WATERLINE + 1, 96, hour["near"], hour["window"], hour["smoke"]), "</g>"])


def lake(hour, roads):
    out = [f'<rect y="{WATERLINE}" width="{WIDTH}" height="{HEIGHT - WATERLINE}" fill="url(#water)"/>',
           f'<clipPath id="lake"><rect y="{WATERLINE}" width="{WIDTH}" height="{HEIGHT - WATERLINE}"/></clipPath>'
           f'<g clip-path="url(#lake)"><g transform="translate(0 {WATERLINE * 1.8:.1f}) scale(1 -.8)">'
           f'<use xlink:href="#land" opacity=".34"/><use xlink:href="#letters" opacity=".17"/>'
           f'<use xlink:href="#woods" opacity=".50"/></g></g>',
           f'<rect y="980" width="{WIDTH}" height="{HEIGHT - 980}" fill="url(#deep)"/>']
    at = hour["afterglow at"]
    out += [ellipse(at, WATERLINE + 30, 760, 120, "url(#afterglow)", .30),
            ellipse(at, WATERLINE + 40, 330, 150, "url(#afterglow)", .26)]
    rng = random.Random(12)
    for _ in range(420):  # ripples, longer and thicker as they come near
        near = rng.random() ** 1.5
        y = WATERLINE + 5 + near * (HEIGHT - WATERLINE - 30)
        colour = hour["glint"] if rng.random() < .35 else hour["woods"][2][0]
        out.append(ellipse(rng.uniform(0, WIDTH), y, rng.uniform(24, 80) + 150 * near, .9 + 2.8 * near,
                           colour, rng.uniform(.06, .20) * (1.15 - .7 * near)))
    for at, spread in roads:  # the road of light under moon or sun
        for step in range(74):
            near = (step / 74) ** 1.35
            out.append(ellipse(at + rng.gauss(0, spread * (.35 + near)), WATERLINE + 4 + near * (HEIGHT - WATERLINE - 60),
                               rng.uniform(12, 34) * (1 + 1.3 * near) * spread / 40, 1.1 + 2.4 * near, hour["glint"],
                               rng.uniform(.25, .62) * (1 - .62 * near)))
    out.append(veil("mist", 40, "shore"))
    return "".join(out)


def bank(hour, shift):
    """The near bank: firs as a frame, `shift` pixels aside; reeds, stones."""
    rng = random.Random(77)
    line = wave(rng, 1150, [14, 10, 8, 5, 3])
    out = [ground(line, HEIGHT + 20, 16)]
    for x, height in ((6, 600), (104, 380), (-86, 330), (176, 210), (1384, 700), (1300, 360), (1462, 430),
                      (1530, 230), (1240, 200), (2010, 270)):
        seed = rng.random()
        out += wrapped(lambda at: fir(random.Random(seed), at, line(at % WIDTH) + 10, height),
                       (x + shift) % WIDTH, height)
    for _ in range(210):
        x, tall, bend = rng.gauss(rng.choice((400, 780, 1640, 1880)), 70) % WIDTH, rng.uniform(22, 86), rng.uniform(-16, 16)
        kind = bulrush if rng.random() < .2 else reed
        out += wrapped(lambda at: kind(at, line(at % WIDTH) + 4, tall, bend), x, 30)
    stones = "".join(ellipse(x, y, w, h, hour["near"], 1) for x, y, w, h in
                     ((980, 1118, 46, 16), (1035, 1126, 30, 11), (905, 1130, 24, 8), (560, 1124, 34, 11)))
    return stones + f'<path d="{" ".join(out)}" fill="url(#near)"/>'


def panorama(hour, letters, light, roads, visitors, shift=0):
    """SVG of the world at an hour: `letters` among the trees, `light` in the sky, at each of
    `roads` (x, width) a road of light on the lake, `visitors` on water and bank; the near firs stand
    `shift` pixels aside."""
    return "\n".join([
        f'<svg xmlns="http://www.w3.org/2000/svg" xmlns:xlink="http://www.w3.org/1999/xlink" '
        f'width="{WIDTH}" height="{HEIGHT}" viewBox="0 0 {WIDTH} {HEIGHT}">', definitions(hour), sky(hour, light),
        land(hour, letters), lake(hour, roads), visitors, bank(hour, shift), "</svg>"])
