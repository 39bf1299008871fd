"""Draws the ratios of one group as an SVG picture: a dot for each, a line for its spread, a mark for its target.

The picture brings its own background and follows the reader's choice of light or dark. A ratio that has no target is
hollow, one that misses it is a diamond: nothing is told by colour alone."""
import math
from html import escape

WIDTH, LEFT, RIGHT = 960, 350, 800  # of the picture; where the axis begins and ends
TOP, ROW = 84, 36
LEGEND = [("met", "target met"), ("missed", "target missed"), ("shown", "only shown")]
STYLE = """\
text{font:13px system-ui,sans-serif;fill:#1f2933}.small{font-size:11.5px;fill:#5a6672}
.head{font-size:16px;font-weight:600}.page{fill:#fff}
.band{fill:#f3f5f8}.grid{stroke:#d5dae1}.one{stroke:#1f2933;stroke-width:1.5}.spread{stroke-width:2.5}
.met{fill:#17785a;stroke:#17785a}.missed{fill:#c2410c;stroke:#c2410c}.shown{fill:#fff;stroke:#5a6672;stroke-width:2}
.target{stroke:#6d3fc4;stroke-width:3;stroke-dasharray:3 2}
@media(prefers-color-scheme:dark){text{fill:#e3e8ee}.small{fill:#9aa7b4}.page{fill:#12171d}.band{fill:#1a2129}
.grid{stroke:#313b46}.one{stroke:#e3e8ee}.target{stroke:#b79cff}.met{fill:#45c79b;stroke:#45c79b}
.missed{fill:#ff9a62;stroke:#ff9a62}.shown{fill:#12171d;stroke:#9aa7b4}}"""


class Axis:
    """Where ratios lie from left to right: from 0 on, or by their logarithms where they span more than a decade."""

    def __init__(self, bars):
        inner = [1.0] + [bar.ratio for bar in bars] + [bar.target for bar in bars if bar.target is not None]
        # A spread that runs far out ends at the edge, so that it does not press the others together.
        low = max(min(inner) / 2, min(inner + [bar.low for bar in bars]))
        high = min(max(inner) * 2, max(inner + [bar.high for bar in bars]))
        self.is_log = max(inner) / min(inner) > 10
        self.low, self.high = (low / 1.15, high * 1.15) if self.is_log else (0.0, high * 1.05)

    def at(self, ratio):
        ratio = min(max(ratio, self.low), self.high)
        if self.is_log:
            share = math.log(ratio / self.low) / math.log(self.high / self.low)
        else:
            share = ratio / self.high
        return LEFT + share * (RIGHT - LEFT)

    def ticks(self):
        if self.is_log:
            decades = range(math.floor(math.log10(self.low)), math.ceil(math.log10(self.high)) + 1)
            steps = (1, 2, 5) if self.high / self.low < 1000 else (1,)
            values = [step * 10.0**decade for decade in decades for step in steps]
        else:
            width = 10.0 ** math.floor(math.log10(self.high))
            step = next(part * width for part in (0.1, 0.2, 0.5, 1.0, 2.0) if self.high / (part * width) <= 8)
            values = [step * number for number in range(int(self.high / step + 1e-9) + 1)]
        return [value for value in values if self.low <= value <= self.high]


def mark(state, x, y):
    if state == "missed":
        return f'<path class="missed" d="M{x:.1f} {y - 7}l7 7l-7 7l-7 -7z"/>'
    return f'<circle class="{state}" cx="{x:.1f}" cy="{y}" r="5"/>'


def small(x, y, words, anchor="start"):
    return f'<text class="small" x="{x:g}" y="{y}" text-anchor="{anchor}">{escape(words)}</text>'


def draw(name, bars):
    """The picture of a group. Each bar has what, peer, ratio, low, high, target (or None), state (a word of LEGEND),
    and text, which is the ratio with its spread as people read it."""
    axis = Axis(bars)
    bottom = TOP + len(bars) * ROW
    title = f"{name}: what the library costs, in times of what its peer costs"
    told = "; ".join(f"{bar.what}, beside {bar.peer}: {bar.text}{bar.told_target}" for bar in bars)
    lines = [
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {bottom + 44}" role="img" '
        'aria-labelledby="title told">',
        f'<title id="title">{escape(title)}</title>',
        f'<desc id="told">{escape(told)}</desc>',
        f"<style>{STYLE}</style>",
        f'<rect class="page" width="{WIDTH}" height="{bottom + 44}"/>',
        f'<text class="head" x="16" y="28">{escape(title)}</text>',
    ]
    place = 16
    for state, words in LEGEND:
        lines.append(mark(state, place + 8, 50) + small(place + 20, 54, words))
        place += 118
    lines.append(f'<path class="target" d="M{place + 8} 42v16"/>' + small(place + 20, 54, "target"))
    lines.append(small(place + 84, 54, "line: least to most; left of 1 is cheaper than the peer"))
    for number in range(0, len(bars), 2):
        lines.append(f'<rect class="band" y="{TOP + number * ROW}" width="{WIDTH}" height="{ROW}"/>')
    for value in axis.ticks():
        x = axis.at(value)
        lines.append(f'<path class="grid" d="M{x:.1f} {TOP}V{bottom}"/>')
        lines += [small(round(x, 1), y, f"{value:g}", "middle") for y in (TOP - 6, bottom + 16)]
    lines.append(f'<path class="one" d="M{axis.at(1):.1f} {TOP}V{bottom}"/>')
    scale = "logarithmic scale" if axis.is_log else "scale from 0"
    lines.append(small((LEFT + RIGHT) // 2, bottom + 34, f"times the peer, {scale}", "middle"))
    for number, bar in enumerate(bars):
        y = TOP + number * ROW + ROW // 2
        lines.append(f'<text x="16" y="{y - 2}">{escape(bar.what)}</text>')
        lines.append(small(16, y + 12, f"beside {bar.peer}"))
        lines.append(f'<path class="spread {bar.state}" d="M{axis.at(bar.low):.1f} {y}H{axis.at(bar.high):.1f}"/>')
        if bar.target is not None:
            lines.append(f'<path class="target" d="M{axis.at(bar.target):.1f} {y - 12}v24"/>')
        lines.append(mark(bar.state, axis.at(bar.ratio), y))
        lines.append(f'<text x="{RIGHT + 14}" y="{y + 4}">{escape(bar.text)}</text>')
    lines.append("</svg>")
    return "\n".join(lines) + "\n"
