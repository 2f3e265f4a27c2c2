"""Lettering: capitals as strokes, drawn for this show."""

# Width and strokes of each letter, ten units high. Strokes are 1.5 wide; those that run past 0
# or 10 are cut off there.
LETTERS = {
    " ": (3.0, ""),
    "0": (6.6, "M3.3,.75 A2.55,4.25 0 1 1 3.3,9.25 A2.55,4.25 0 1 1 3.3,.75 Z"),
    "2": (6.2, "M.8,3 C.9,1.5 1.9,.75 3.1,.75 C4.5,.75 5.4,1.6 5.4,2.9 C5.4,4.3 4.4,5.3 3.4,6.3 "
               "L.6,9.25 H5.9"),
    "6": (6.5, "M5.3,-.3 C2.6,1.5 .75,3.9 .75,6.7 M3.25,4.2 A2.5,2.52 0 1 1 3.25,9.25 "
               "A2.5,2.52 0 1 1 3.25,4.2 Z"),
    "A": (7.4, "M0,11 L3.7,.2 L7.4,11 M1.8,7.1 H5.6"),
    "B": (6.5, "M.75,4.8 H3.3 C4.6,4.8 5.4,4 5.4,2.8 C5.4,1.5 4.6,.75 3.3,.75 H.75 V9.25 H3.5 "
               "C5,9.25 5.75,8.4 5.75,7 C5.75,5.6 5,4.8 3.5,4.8"),
    "C": (7.0, "M6.7,2.7 C6.1,1.4 5.1,.75 4,.75 C2,.75 .75,2.5 .75,5 C.75,7.5 2,9.25 4,9.25 "
               "C5.1,9.25 6.1,8.6 6.7,7.3"),
    "D": (7.0, "M.75,.75 H2.7 C5.1,.75 6.25,2.4 6.25,5 C6.25,7.6 5.1,9.25 2.7,9.25 H.75 Z"),
    "E": (5.4, "M5.2,.75 H.75 V9.25 H5.3 M.75,4.9 H4.7"),
    "G": (7.4, "M6.7,2.7 C6.1,1.4 5.1,.75 4,.75 C2,.75 .75,2.5 .75,5 C.75,7.5 2,9.25 4,9.25 "
               "C5.1,9.25 6,8.8 6.6,8 V5.4 H4.1"),
    "H": (6.7, "M.75,0 V10 M5.95,0 V10 M.75,4.9 H5.95"),
    "I": (1.5, "M.75,0 V10"),
    "K": (6.6, "M.75,0 V10 M6.7,-1 L.9,5.9 M2.4,4 L6.9,11"),
    "L": (5.3, "M.75,0 V9.25 H5.2"),
    "M": (8.5, "M.75,11 V-.4 L4.25,7.4 L7.75,-.4 V11"),
    "N": (6.9, "M.75,11 V-.9 L6.15,10.9 V-1"),
    "O": (9.6, "M4.8,.75 A4.05,4.25 0 1 1 4.8,9.25 A4.05,4.25 0 1 1 4.8,.75 Z"),
    "P": (6.2, "M.75,10 V.75 H3.3 C4.8,.75 5.6,1.7 5.6,3.2 C5.6,4.7 4.8,5.65 3.3,5.65 H.75"),
    "Q": (8.6, "M4.3,.75 A3.55,4.25 0 1 1 4.3,9.25 A3.55,4.25 0 1 1 4.3,.75 Z M4.6,6.1 L8.4,10.6"),
    "R": (6.7, "M.75,10 V.75 H3.3 C4.8,.75 5.6,1.6 5.6,3 C5.6,4.4 4.8,5.3 3.3,5.3 H.75 M3,5 L6.7,11"),
    "S": (6.5, "M5.7,2.9 C5.5,1.5 4.5,.75 3.25,.75 C1.8,.75 .85,1.6 .85,2.8 C.85,4.2 2,4.6 3.25,4.95 "
               "C4.6,5.3 5.75,5.8 5.75,7.2 C5.75,8.5 4.7,9.25 3.25,9.25 C1.9,9.25 .9,8.5 .7,7"),
    "T": (6.4, "M0,.75 H6.4 M3.2,0 V10"),
    "U": (6.9, "M.75,-1 V6.2 C.75,8.2 1.8,9.25 3.45,9.25 C5.1,9.25 6.15,8.2 6.15,6.2 V-1"),
    "V": (7.4, "M0,-1 L3.7,9.8 L7.4,-1"),
    "Y": (6.8, "M.1,-1 L3.4,5.2 L6.7,-1 M3.4,5 V10"),
    "Z": (6.6, "M.3,.75 H5.5 L.9,9.25 H6.3"),
}

# How much closer two letters stand whose shapes leave a gap between them.
KERNING = {"LV": 1.9, "RV": 0.6, "TA": 1.5}


def layout(text, spacing):
    """The letters with strokes as (letter, left), and the width of all, in units of LETTERS."""
    placed, at = [], 0.0
    for letter, following in zip(text, text[1:] + " "):
        width, strokes = LETTERS[letter]
        if strokes:
            placed.append((letter, at))
        at += width + spacing - KERNING.get(letter + following, 0.0)
    return placed, at - spacing


def half_moon(x, radius):
    """The O of the show: a disc in the middle of a letter's height, its right half lit."""
    seas = ((.36, -.52, .17), (.52, .08, .23), (.22, .40, .13), (.62, .46, .10), (.16, -.14, .08),
            (.80, -.20, .08), (.40, .72, .09))
    return (f'<g transform="translate({x:.2f} 5) rotate(14)">'
            f'<circle r="{radius}" fill="url(#unlit)"/>'
            f'<path d="M0,{-radius} A{radius},{radius} 0 0 1 0,{radius} Q{radius * .10:.2f},0 0,{-radius} Z" '
            f'fill="url(#moonlight)"/>' +
            "".join(f'<circle cx="{a * radius:.2f}" cy="{b * radius:.2f}" r="{c * radius:.2f}" '
                    f'fill="#b9806a" opacity="{.10 + .06 * (a < .4):.2f}"/>' for a, b, c in seas) +
            f'<circle r="{radius - .06:.2f}" fill="none" stroke="url(#moonlight)" stroke-width=".12" '
            f'opacity=".55"/></g>')


def lettering(text, middle, top, height, spacing, weight=1.5, moons=False, engraved=None, shade="#120c2a"):
    """A line of capitals around the x coordinate `middle`, `height` pixels high; `spacing` in
    tenths of that. With `moons`, each O is a half moon; `engraved` is the colour of a line along
    the strokes."""
    placed, width = layout(text, spacing)
    scale = height / 10
    left = middle - width * scale / 2
    strokes = "".join(f'<path transform="translate({at:.2f} 0)" d="{LETTERS[letter][1]}"/>'
                      for letter, at in placed if not (moons and letter == "O"))
    name = f"cut{round(left)}x{top}"
    out = [f'<clipPath id="{name}"><rect x="-2" y="0" width="{width + 4:.2f}" height="10"/></clipPath>'
           f'<clipPath id="{name}s"><rect x="-3" y="-.3" width="{width + 6:.2f}" height="10.6"/></clipPath>',
           f'<g transform="translate({left:.1f} {top}) scale({scale:.4f})" fill="none" '
           f'stroke-linejoin="miter" stroke-miterlimit="9">']
    for spread, opacity in ((2.5, .05), (2.1, .07), (1.75, .12)):  # the dark around letters, soft
        out.append(f'<g clip-path="url(#{name}s)" stroke="{shade}" stroke-width="{weight + spread - 1.2:.2f}" '
                   f'stroke-linejoin="round" opacity="{opacity}">{strokes}</g>')
    out.append(f'<g transform="translate(.16 .20)"><g clip-path="url(#{name})" stroke="{shade}" '
               f'stroke-width="{weight}" opacity=".55">{strokes}</g></g>')
    out.append(f'<g clip-path="url(#{name})" stroke="url(#letter)" stroke-width="{weight}">{strokes}</g>')
    if engraved:
        out.append(f'<g clip-path="url(#{name})" stroke="{engraved}" stroke-width=".17" '
                   f'stroke-opacity=".8">{strokes}</g>')
    if moons:
        out += [half_moon(at + LETTERS["O"][0] / 2, 4.75) for letter, at in placed if letter == "O"]
    out.append("</g>")
    return "\n".join(out)


def centre_of(text, letter, middle, height, spacing):
    """The x coordinate of the middle of the first `letter` of such a line."""
    placed, width = layout(text, spacing)
    at = next(at for each, at in placed if each == letter)
    return middle + (at + LETTERS[letter][0] / 2 - width / 2) * height / 10
