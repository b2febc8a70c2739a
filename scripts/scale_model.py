#!/usr/bin/env python3
"""How the cost of one server grows with its desks, from what desk_costs.py measured: scale_model.py COSTS.json

Each quantity is taken as a + b * desks, fitted to the measured rows (least squares). What a change costs grows with
the desks that hear of it; how often changes are made grows with the desks, too: one desk makes CHANGES_A_DAY in
HOURS hours of work. A server is full when it needs FULL of its processors, or all of its memory for sessions. Rows
beyond what was measured are a calculation. The last column is for desks in databases of SITE each, which hear nothing
of each other.
"""
import json
import pathlib
import sys

DESKS = (20, 50, 100, 200, 500, 1000, 2000, 5000, 10000)
CHANGES_A_DAY, HOURS = 200, 8
CORES, FULL, MEMORY_MB, SITE = 8, 0.7, 32000, 200


def line_through(points):
    """a and b of the line closest to these points."""
    n = len(points)
    mean_x, mean_y = sum(x for x, _ in points) / n, sum(y for _, y in points) / n
    spread = sum((x - mean_x) ** 2 for x, _ in points)
    b = sum((x - mean_x) * (y - mean_y) for x, y in points) / spread
    return mean_y - b * mean_x, b


class Model:
    def __init__(self, costs):
        of_idle = {key: line_through([(row["desks"], row["idle"][key]) for row in costs]) for key in costs[0]["idle"]}
        of_change = {key: line_through([(row["desks"], (row["writing"][key] - row["idle"][key]) / row["changes"])
                                        for row in costs]) for key in costs[0]["idle"]}
        self.idle, self.change = of_idle, of_change
        self.megabytes = sum(row["megabytes"] for row in costs) / len(costs)
        self.sessions = sum(row["sessions"] / row["desks"] for row in costs) / len(costs)

    def at(self, desks):
        """Changes a second, then sessions, megabytes, statements and bytes a second, and cores."""
        changes = desks * CHANGES_A_DAY / (HOURS * 3600)
        rates = {}
        for key, (a, b) in self.idle.items():
            fixed, each = self.change[key]
            rates[key] = max(0, a + b * desks) + changes * max(0, fixed + each * desks)
        sessions = self.sessions * desks
        return (changes, sessions, sessions * self.megabytes, rates["statements"], rates["bytes"],
                rates["cpu_percent"] / 100)


def verdict(megabytes, cores):
    if cores > CORES * FULL:
        return "too many for its processors"
    return "too many for its memory" if megabytes > MEMORY_MB else "serves them"


def main():
    model = Model(json.loads(pathlib.Path(sys.argv[1]).read_text()))
    print(f"# {CHANGES_A_DAY} changes a desk in {HOURS} hours; a server of {CORES} cores, {MEMORY_MB} MB for sessions")
    print("desks  changes/s  sessions     MB  statements/s    MB/s  cores  one server                     sites of {SITE}: cores".format(SITE=SITE))
    for desks in DESKS:
        changes, sessions, megabytes, statements, sent, cores = model.at(desks)
        print(f"{desks:5} {changes:10.2f} {sessions:9.0f} {megabytes:6.0f} {statements:13.0f} {sent / 1e6:7.2f}"
              f" {cores:6.2f}  {verdict(megabytes, cores):<27} {desks / SITE * model.at(SITE)[-1]:14.2f}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
