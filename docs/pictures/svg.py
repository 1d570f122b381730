"""Writes SVG pictures that are readable on light and dark pages, and the same on every machine.

A picture brings its own background, so it is readable even where the page's colors do not follow
the reader's. Colors are classes; dark ones replace them under prefers-color-scheme.
"""
from xml.sax.saxutils import escape, quoteattr

FONT = "ui-sans-serif,system-ui,'Segoe UI',Helvetica,Arial,sans-serif"

# class: (light, dark), each a list of CSS declarations.
COLORS = {
    "page": ("fill:#ffffff", "fill:#0d1117"),
    "panel": ("fill:#f3f5f8;stroke:#d5dbe3", "fill:#161b22;stroke:#30363d"),
    "box": ("fill:#ffffff;stroke:#8ba2c0", "fill:#0d1f36;stroke:#3f6ea8"),
    "base": ("fill:#e8f1e4;stroke:#87ab78", "fill:#12261a;stroke:#3f7a4d"),
    "title": ("fill:#1f2937", "fill:#e6edf3"),
    "text": ("fill:#3b4654", "fill:#c4ccd6"),
    "dim": ("fill:#5d6a7a", "fill:#94a0ae"),
    "line": ("stroke:#8b97a6", "stroke:#6b7684"),
    "grid": ("stroke:#e1e6ec", "stroke:#262d36"),
}
# Series of a plot: colors that differ in brightness, too.
SERIES = [("#1f5fbf", "#6cb0ff"), ("#c2571a", "#ffa657"), ("#2b7d3c", "#56d364"),
          ("#8a3fb0", "#d2a8ff"), ("#b3243c", "#ff7b72"), ("#6b7280", "#9aa4b0")]


def rules(colors):
    return "".join(".%s{%s}" % (name, value) for name, value in colors)


def style():
    light = [(name, pair[0]) for name, pair in COLORS.items()]
    dark = [(name, pair[1]) for name, pair in COLORS.items()]
    for number, (in_light, in_dark) in enumerate(SERIES):
        light += [("s%d" % number, "stroke:" + in_light), ("f%d" % number, "fill:" + in_light)]
        dark += [("s%d" % number, "stroke:" + in_dark), ("f%d" % number, "fill:" + in_dark)]
    return "%s\n@media (prefers-color-scheme: dark){%s}" % (rules(light), rules(dark))


def number(value):
    """A coordinate, always written in the same way."""
    text = "%.1f" % value
    return text[:-2] if text.endswith(".0") else text


class Picture:
    def __init__(self, width, height, title, description):
        self.width, self.height = width, height
        self.title, self.description = title, description
        self.parts = []

    def add(self, element, content=None, **attributes):
        written = "".join(
            " %s=%s" % (name.rstrip("_").replace("_", "-"),
                        quoteattr(number(value) if isinstance(value, (int, float)) else value))
            for name, value in attributes.items())
        self.parts.append("<%s%s/>" % (element, written) if content is None else
                          "<%s%s>%s</%s>" % (element, written, content, element))

    def box(self, kind, x, y, width, height, radius=6, tip=None):
        content = "<title>%s</title>" % escape(tip) if tip else None
        self.add("rect", content, class_=kind, x=x, y=y, width=width, height=height, rx=radius)

    def text(self, x, y, text, kind="text", size=12, anchor="start", bold=False, mono=False):
        extra = {}
        if bold:
            extra["font_weight"] = "600"
        if mono:
            extra["font_family"] = "ui-monospace,Consolas,monospace"
        if anchor != "start":
            extra["text_anchor"] = anchor
        self.add("text", escape(text), class_=kind, x=x, y=y, font_size=size, **extra)

    def line(self, x1, y1, x2, y2, kind="line", width=1.0, **extra):
        self.add("line", class_=kind, x1=x1, y1=y1, x2=x2, y2=y2, stroke_width=width, **extra)

    def __str__(self):
        head = ('<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 %s %s" width="%s" height="%s" '
                'role="img" aria-labelledby="t d" font-family="%s">' %
                (number(self.width), number(self.height), number(self.width), number(self.height),
                 FONT))
        return "\n".join([
            head, '<title id="t">%s</title>' % escape(self.title),
            '<desc id="d">%s</desc>' % escape(self.description),
            "<style>%s</style>" % style(),
            '<rect class="page" width="100%" height="100%" rx="8"/>'] + self.parts + ["</svg>", ""])
