#!/usr/bin/env python3
"""Checks the includes of the tree against docs/modules.toml, and draws that list.

usage: modules.py [--check | --write]

--check prints what is wrong with the includes and with the drawn list; the exit status is 1 then.
--write writes docs/pictures/modules.svg and the table in docs/architecture.md.
"""
import argparse
import os
import pathlib
import re
import sys
import textwrap
import tomllib

sys.dont_write_bytecode = True
import svg  # noqa: E402

ROOT = pathlib.Path(__file__).resolve().parents[2]
LIST = "docs/modules.toml"
PICTURE = "docs/pictures/modules.svg"
PAGE = "docs/architecture.md"
BEGIN, END = "<!-- modules: begin -->", "<!-- modules: end -->"
CODE = (".h", ".hpp", ".c", ".cpp", ".def")
CHECKED = ("Src/", "tools/", "platform/", "shared/", "include/")
INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]+([<"])([^>"\n]+)[>"]', re.MULTILINE)


def below(path, folder):
    return path == folder or path.startswith(folder.rstrip("/") + "/")


class Tree:
    """The list of modules, and the files that it speaks of. files: path -> text."""

    def __init__(self, listed, files):
        self.parts, self.modules = listed["part"], listed["module"]
        self.rules, self.files = listed.get("rule", []), files
        self.errors = []
        by_path = {module["path"]: module for module in self.modules}
        for module in self.modules:
            module["part"] = next((part for part in self.parts
                                   if below(module["path"], part["base"])), None)
            if module["part"] is None:
                self.errors.append("%s: %s is below the base of no [[part]]" %
                                   (LIST, module["path"]))
                module["part"] = self.parts[0]
            base = module["part"]["base"]
            module["name"] = os.path.relpath(module["path"], base)
            if module["name"] == ".":
                module["name"] = module["path"]
        for module in self.modules:
            module["targets"] = []
            for name in module["may"]:
                path = module["part"]["base"] + "/" + name
                target = by_path.get(path) or by_path.get(name)
                if target is None:
                    self.errors.append(
                        "%s: %s may include '%s', which is no module. Modules of its part: %s" %
                        (LIST, module["path"], name, ", ".join(
                            other["name"] for other in self.modules
                            if other["part"] is module["part"])))
                else:
                    module["targets"].append(target)

    def module_of(self, path):
        found = [module for module in self.modules if below(path, module["path"])]
        return max(found, key=lambda module: len(module["path"]), default=None)

    def resolve(self, path, name, part):
        """The file of the tree that an include names, as the compiler would find it, or None."""
        folders = [os.path.dirname(path)] + part["search"]
        # A header that is reached through any other base counts, too.
        folders += [folder for other in self.parts for folder in other["search"] + [other["base"]]]
        for folder in folders:
            file = os.path.normpath(os.path.join(folder, name))
            if file in self.files:
                return file
        return None

    def check_includes(self):
        for path in sorted(self.files):
            if not path.startswith(CHECKED) or not path.endswith(CODE):
                continue
            module = self.module_of(path)
            if module is None:
                self.errors.append(no_module(path))
                continue
            for mark, name in INCLUDE.findall(self.files[path]):
                self.check_include(path, module, mark, name)

    def check_include(self, path, module, mark, name):
        file = self.resolve(path, name, module["part"])
        if file is None:
            if mark == '"' and "/" in name:
                self.errors.append("%s: includes \"%s\", which is not in the tree" % (path, name))
            return
        target = self.module_of(file)
        if target is None or target is module:
            return
        for rule in self.rules:
            if below(path, rule["from"]) and any(below(file, never) for never in rule["never"]):
                self.errors.append("%s: must not include \"%s\" (%s): %s" %
                                   (path, name, file, rule["because"]))
                return
        if target in module["targets"] or target["part"].get("ground"):
            return
        self.errors.append(
            "%s: includes \"%s\" of module %s, but %s may include: %s.\n"
            "    Includes point down. Move what both need into a lower module; or, if %s is\n"
            "    below %s, add \"%s\" to its `may` in %s and run ./dev pictures." %
            (path, name, target["path"], module["path"], ", ".join(module["may"]) or "none",
             target["path"], module["path"],
             target["name"] if target["part"] is module["part"] else target["path"], LIST))

    def check_list(self):
        for module in self.modules:
            if not any(below(path, module["path"]) for path in self.files):
                self.errors.append("%s: %s has no files. Remove its [[module]]." %
                                   (LIST, module["path"]))
            for rule in self.rules:
                for target in module["targets"]:
                    if below(module["path"], rule["from"]) and any(
                            below(target["path"], never) for never in rule["never"]):
                        self.errors.append("%s: %s may not include %s: %s" % (
                            LIST, module["path"], target["path"], rule["because"]))
        circle = self.circle()
        if circle:
            self.errors.append("%s: these modules include each other in a circle: %s" %
                               (LIST, " -> ".join(module["path"] for module in circle)))

    def circle(self):
        done, active = set(), []

        def visit(module):
            if id(module) in done:
                return None
            if module in active:
                return active[active.index(module):] + [module]
            active.append(module)
            for target in module["targets"]:
                found = visit(target)
                if found:
                    return found
            active.pop()
            done.add(id(module))
            return None

        for module in self.modules:
            found = visit(module)
            if found:
                return found
        return None

    def layers(self, part):
        """The modules of a part, lowest layer first; each as high as those that include it allow."""
        own = [module for module in self.modules if module["part"] is part]
        height = {}

        def depth(module):
            if id(module) not in height:
                height[id(module)] = 1 + max(
                    (depth(target) for target in module["targets"] if target["part"] is part),
                    default=0)
            return height[id(module)]

        for module in sorted(own, key=depth, reverse=True):
            above = [height[id(other)] for other in own if module in other["targets"]]
            if above:
                height[id(module)] = min(above) - 1
        rows = [[module for module in own if height[id(module)] == level]
                for level in range(1, max(height.values()) + 1)]
        if part.get("rows"):
            rows = [[module] for row in rows for module in reversed(row)]
        return [row for row in rows if row]


def no_module(path):
    folder = os.path.dirname(path)
    return ("%s: belongs to no module. Add its folder to %s, above what it includes:\n\n"
            "    [[module]]\n"
            "    path = \"%s\"\n"
            "    holds = \"what lives here\"\n"
            "    may = [\"the modules whose headers it includes\"]\n"
            "    never = \"what must never be in it\"\n\n"
            "    and run ./dev pictures." % (path, LIST, folder))


# The picture.
GAP, PAD, LINE = 10, 12, 15
WIDTHS = {1: 190, 2: 330, 3: 500}


def box_lines(module, width):
    holds = textwrap.wrap(module["holds"], int((width - 2 * PAD) / 5.7))
    below_it = textwrap.wrap(
        ", ".join(target["name"] if target["part"] is module["part"] else target["path"]
                  for target in module["targets"]),
        int((width - 2 * PAD - 12) / 5.7), break_on_hyphens=False)
    return holds, below_it


def box_height(module, width):
    holds, below_it = box_lines(module, width)
    return 30 + LINE * len(holds) + (LINE * len(below_it) + 3 if below_it else 0)


def draw_box(picture, module, x, y, width, height, kind="box"):
    holds, below_it = box_lines(module, width)
    picture.box(kind, x, y, width, height, tip="never: " + module["never"])
    picture.text(x + PAD, y + 20, module["name"], "title", 13, bold=True)
    at = y + 37
    for line in holds:
        picture.text(x + PAD, at, line, "text", 11)
        at += LINE
    at += 3
    for index, line in enumerate(below_it):
        if index == 0:
            picture.text(x + PAD, at, "↓", "dim", 11)
        picture.text(x + PAD + 12, at, line, "dim", 11)
        at += LINE


def draw(tree):
    towers = []
    for part in tree.parts:
        if part.get("ground"):
            continue
        rows = tree.layers(part)
        width = WIDTHS[min(3, max(len(row) for row in rows))]
        inner = width - 2 * GAP
        heights = []
        for row in rows:
            each = (inner - GAP * (len(row) - 1)) / len(row)
            heights.append(max(box_height(module, each) for module in row))
        towers.append((part, rows, width, heights))
    tall = max(sum(heights) + GAP * (len(heights) + 1) for _, _, _, heights in towers)
    ground = [module for module in tree.modules if module["part"].get("ground")]
    top, margin = 54, 16
    total = 2 * margin + sum(tower[2] for tower in towers) + margin * (len(towers) - 1)
    height = top + tall + margin + 54 * len(ground) + 36
    picture = svg.Picture(
        total, height, "The modules of the tree and their includes",
        "Each module may include the modules named after the arrow, which lie on lower layers, and "
        "the public headers.")
    x = margin
    for part, rows, width, heights in towers:
        picture.text(x + width / 2, 26, part["name"], "title", 14, "middle", bold=True)
        picture.text(x + width / 2, 44, part["base"] + "/", "dim", 12, "middle", mono=True)
        picture.box("panel", x, top, width, tall, 8)
        y = top + tall
        for row, row_height in zip(rows, heights):
            y -= row_height + GAP
            each = (width - 2 * GAP - GAP * (len(row) - 1)) / len(row)
            for index, module in enumerate(row):
                draw_box(picture, module, x + GAP + index * (each + GAP), y, each, row_height)
        x += width + margin
    y = top + tall + margin
    for module in ground:
        draw_box(picture, module, margin, y, total - 2 * margin, 46, "base")
        y += 54
    picture.text(margin, y + 14, "↓  may include; every module may include the public headers, too. "
                 "Includes point down only.", "dim", 11)
    return str(picture)


def table(tree):
    lines = ["| Module | What lives here | May include | Must never be here |", "|---|---|---|---|"]
    for module in tree.modules:
        folder = "" if "." in module["path"] else "/"
        lines.append("| `%s%s` | %s | %s | %s |" % (
            module["path"], folder, module["holds"],
            ", ".join("`%s`" % name for name in module["may"]) or "—", module["never"]))
    return "\n".join(lines)


def page_with(page, content):
    before, rest = page.split(BEGIN, 1)
    after = rest.split(END, 1)[1]
    return before + BEGIN + "\n" + content + "\n" + END + after


def read_tree(root=ROOT):
    listed = tomllib.loads((root / LIST).read_text(encoding="utf-8"))
    paths = [path.relative_to(root).as_posix()
             for base in CHECKED for path in (root / base).rglob("*") if path.suffix in CODE]
    return Tree(listed, {path: (root / path).read_text(encoding="utf-8") for path in paths})


def main():
    parser = argparse.ArgumentParser(description="Check and draw the modules of the tree.")
    parser.add_argument("--check", action="store_true")
    parser.add_argument("--write", action="store_true")
    arguments = parser.parse_args()
    tree = read_tree()
    tree.check_list()
    page = (ROOT / PAGE).read_text(encoding="utf-8")
    if tree.circle():
        sys.exit("\n".join(tree.errors))
    wanted = {PICTURE: draw(tree), PAGE: page_with(page, table(tree))}
    if arguments.write:
        for path, content in wanted.items():
            (ROOT / path).write_text(content, encoding="utf-8")
    tree.check_includes()
    for path, content in wanted.items():
        if not (ROOT / path).exists() or (ROOT / path).read_text(encoding="utf-8") != content:
            tree.errors.append("%s is not what %s says. Run ./dev pictures." % (path, LIST))
    print("\n".join(tree.errors) if tree.errors else
          "%d modules, %d files: includes point down" % (len(tree.modules), len(tree.files)))
    return 1 if tree.errors else 0


if __name__ == "__main__":
    sys.exit(main())
