"""Small things that the drift brings by."""

import random


def placed(x, y, scale, path, fill, more=""):
    return f'<g transform="translate({x:.1f} {y:.1f}) scale({scale})"><path d="{path}" fill="{fill}"/>{more}</g>'


# Standing at the water's edge, looking left; 100 units from hoof to shoulder.
ELK = ("M-4,0 L-2,-34 Q-7,-46 -6,-56 L-20,-61 L-24,-56 Q-28,-48 -29,-55 L-30,-60 Q-40,-57 -46,-58 "
       "Q-49,-63 -43,-66 L-33,-73 Q-30,-79 -25,-78 L-24,-82 Q-22,-83 -20,-78 Q-12,-76 -4,-82 Q4,-92 16,-90 "
       "Q30,-85 46,-82 Q60,-82 65,-70 Q68,-60 64,-50 L61,-36 L63,-18 L61,0 L57,0 L57,-18 L54,-32 L50,-44 "
       "Q48,-36 50,-30 L52,-16 L49,0 L45,0 L46,-16 L42,-34 Q40,-44 38,-47 Q24,-42 13,-45 L12,-34 L9,-16 L9,0 "
       "L5,0 L5,-18 L4,-36 L2,-18 L0,0 Z "
       "M-25,-78 Q-36,-84 -37,-98 L-33,-92 L-32,-104 L-28,-93 L-25,-106 L-23,-93 L-18,-104 L-18,-92 L-12,-100 "
       "L-15,-88 Q-18,-80 -22,-78 Z")


def elk(x, y, size, fill):
    return placed(x, y, size / 100, ELK, fill)


def boat(x, y, size, fill, lantern=None):
    """A rowing boat and who sits in it; a lantern at the stem if it is dark."""
    path = ("M-60,-12 Q-40,4 0,5 Q44,4 66,-16 Q40,-8 0,-8 Q-36,-8 -60,-12 Z "
            "M-14,-8 Q-20,-30 -8,-36 Q-13,-46 -5,-50 Q4,-50 3,-40 Q12,-32 12,-8 Z M-8,-28 L-52,8 L-50,10 L-4,-22 Z "
            "M56,-10 L57,-40 L59,-40 L59,-10 Z")
    light = ""
    if lantern:
        light = (f'<circle cx="58" cy="-44" r="46" fill="url(#lamp)"/><circle cx="58" cy="-44" r="4.5" fill="{lantern}"/>'
                 f'<path d="M48,12 h20 l-3,3 h-14 z M50,22 h16 l-4,3 h-8 z" fill="{lantern}" opacity=".55"/>')
    return placed(x, y, size / 100, path, fill, light)


def cabin(x, y, size, fill, window=None, smoke=None):
    """A cabin on the shore: lit windows at dusk, smoke in the morning."""
    out = []
    if smoke:
        for step in range(30):
            up = step / 30
            out.append(f'<circle cx="{16 + 26 * up * up * (1 + .5 * ((step * 7) % 5 - 2) / 2):.1f}" '
                       f'cy="{-58 - 170 * up:.1f}" r="{4 + 22 * up:.1f}" fill="{smoke}" opacity="{.20 * (1 - up) + .01:.3f}"/>')
    path = ("M-36,0 V-22 H-42 L0,-50 L42,-22 H36 V0 Z M12,-40 V-58 H21 V-34 Z "
            "M42,0 V-14 L58,-26 L74,-14 V0 Z M-60,2 L-60,-4 H-36 V2 Z M-56,0 V12 H-53 V0 Z")
    light = ""
    if window:
        light = (f'<circle cx="-10" cy="-13" r="80" fill="url(#lamp)"/>'
                 f'<path d="M-20,-20 h9 v11 h-9 Z M-8,-20 h9 v11 h-9 Z" fill="{window}"/>'
                 f'<path d="M-22,12 h24 l-3,3 h-16 z M-19,22 h18 l-4,3 h-9 z M-20,33 h20 l-6,2 h-8 z" '
                 f'fill="{window}" opacity=".5"/>')
    return f'<g transform="translate({x} {y}) scale({size / 100})">{"".join(out)}</g>' + placed(x, y, size / 100, path, fill, light)


def owl(x, y, size, fill, eyes):
    path = "M-13,0 Q-19,-22 -12,-36 L-11,-45 L-5,-39 Q0,-41 5,-39 L11,-45 L12,-36 Q19,-22 13,0 L6,10 L3,2 L-3,2 L-6,10 Z"
    return placed(x, y, size / 50, path, fill,
                  f'<circle cx="-5" cy="-31" r="2.6" fill="{eyes}"/><circle cx="5" cy="-31" r="2.6" fill="{eyes}"/>')


def cranes(x, y, fill):
    """A skein on its way, the leader at the left."""
    rng = random.Random(21)
    out = []
    for place in range(-4, 6):
        at, up = x + abs(place) * 30 + rng.uniform(-5, 5), y + place * 15 + rng.uniform(-4, 4)
        lift = rng.uniform(-10, 9)
        out.append(f'M{at - 12:.1f},{up:.1f} Q{at - 2:.1f},{up - 3:.1f} {at + 3:.1f},{up - 1:.1f} '
                   f'Q{at + 7:.1f},{up - lift - 6:.1f} {at + 14:.1f},{up - lift - 10:.1f} '
                   f'Q{at + 10:.1f},{up - lift * .4:.1f} {at + 8:.1f},{up + .5:.1f} L{at + 20:.1f},{up + 2:.1f} '
                   f'Q{at + 4:.1f},{up + 4:.1f} {at - 12:.1f},{up:.1f} Z')
    return f'<path d="{" ".join(out)}" fill="{fill}"/>'
