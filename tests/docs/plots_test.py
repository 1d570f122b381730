#!/usr/bin/env python3
"""The plots of docs/pictures show the times of bench/results.json."""
import copy
import json
import pathlib
import sys
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "bench"))
import plots  # noqa: E402


class Plots(unittest.TestCase):
    def setUp(self):
        self.results = json.loads(plots.RESULTS.read_text(encoding="utf-8"))

    def test_pictures_are_those_of_the_data(self):
        for name, picture in plots.drawn(self.results).items():
            self.assertEqual(picture, (plots.PICTURES / name).read_text(encoding="utf-8"),
                             "%s is out of date: run ./dev pictures" % name)

    def test_every_time_is_drawn(self):
        before = plots.drawn(self.results)
        drawn = [plots.COMPARED[title] for titles in plots.GROUPS.values() for title in titles]
        names = [name.format(length) for name in drawn for length in plots.LENGTHS]
        names += [f"filling/{kind}/{size}/wide" for kind in plots.GROWING for size in plots.SIZES]
        for name in names:
            changed = copy.deepcopy(self.results)
            changed["times"][name]["cpu_ns"] *= 2
            self.assertNotEqual(before, plots.drawn(changed), name)


if __name__ == "__main__":
    unittest.main()
