"""Gradients, clouds and glows as SVG elements."""

from .shapes import HEIGHT, WIDTH, wrapped

FADE = 420  # pixels


def stop_list(stops):
    return "".join(f'<stop offset="{s[0]}" stop-color="{s[1]}" '
                   f'stop-opacity="{s[2] if len(s) > 2 else 1}"/>' for s in stops)


def gradient(name, stops, top=0, bottom=HEIGHT):
    """From `top` down to `bottom`; stops are (offset, colour) or (offset, colour, opacity)."""
    return (f'<linearGradient id="{name}" gradientUnits="userSpaceOnUse" x1="0" x2="0" '
            f'y1="{top}" y2="{bottom}">' + stop_list(stops) + "</linearGradient>")


def glow(name, colour, strength):
    """Light around a disc, or a soft cloud: full in the middle, none at the rim."""
    return (f'<radialGradient id="{name}">' +
            stop_list([(0, colour, strength), (.2, colour, strength * .74), (.4, colour, strength * .42),
                       (.6, colour, strength * .18), (.8, colour, strength * .05), (1, colour, 0)]) +
            "</radialGradient>")


def ellipse(x, y, rx, ry, paint, opacity):
    """An ellipse, on both sides of an edge where it crosses one."""
    return "".join(wrapped(
        lambda at: f'<ellipse cx="{at:.1f}" cy="{y:.1f}" rx="{rx:.1f}" ry="{ry:.1f}" '
                   f'fill="{paint}" opacity="{opacity:.3f}"/>', x, rx))


def vapour(name, colour, seed, across, down, cut, strength):
    """A filter that fills an area with drifting vapour: noise with about `across` and `down` waves
    over the picture; what of it exceeds `cut` is seen, times `strength`."""
    red, green, blue = (int(colour[at:at + 2], 16) / 255 for at in (1, 3, 5))
    return (f'<filter id="{name}" filterUnits="userSpaceOnUse" x="0" y="0" width="{WIDTH + FADE}" '
            f'height="{HEIGHT}" color-interpolation-filters="sRGB"><feTurbulence type="fractalNoise" '
            f'baseFrequency="{across / WIDTH:.6f} {down / HEIGHT:.6f}" numOctaves="2" seed="{seed}"/>'
            f'<feColorMatrix values="0 0 0 0 {red:.3f} 0 0 0 0 {green:.3f} 0 0 0 0 {blue:.3f} '
            f'{strength} 0 0 0 {-cut * strength:.3f}"/></filter>')


def seams():
    """What `veil` needs: the left FADE pixels go over from what follows the right edge, so that
    noise, which repeats nowhere, has no seam."""
    out = []
    for name, left, right in (("in", 0, 1), ("out", 1, 0)):
        out.append(f'<linearGradient id="{name}" gradientUnits="userSpaceOnUse" x1="0" x2="{FADE}" y1="0" y2="0">'
                   + stop_list([(0, "#fff", left), (1, "#fff", right)]) + "</linearGradient>"
                   f'<mask id="fade{name}" maskUnits="userSpaceOnUse" x="0" y="0" width="{WIDTH}" height="{HEIGHT}">'
                   f'<rect width="{WIDTH}" height="{HEIGHT}" fill="url(#{name})"/></mask>')
    return "".join(out)


def veil(name, shift, fade):
    """The filter `name`, its noise taken `shift` pixels further down, between the heights of the
    gradient `fade`."""
    mask = f"m{name}{shift}"
    area = f'<rect width="{WIDTH + FADE}" height="{HEIGHT}" filter="url(#{name})"/>'
    return (f'<mask id="{mask}" maskUnits="userSpaceOnUse" x="0" y="0" width="{WIDTH}" height="{HEIGHT}">'
            f'<rect width="{WIDTH}" height="{HEIGHT}" fill="url(#{fade})"/></mask><g mask="url(#{mask})">'
            f'<g mask="url(#fadein)"><g transform="translate(0 {-shift})">{area}</g></g>'
            f'<g mask="url(#fadeout)"><g transform="translate({-WIDTH} {-shift})">{area}</g></g></g>')
