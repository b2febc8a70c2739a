#!/usr/bin/env python3
"""bench_runs.py PROGRAM --runs N [--json FILE] [--document FILE] [--only CHAPTER] [--without CHAPTER]: runs the benchmarks N times, gives
median, worst and spread of each figure, and exits 1 when the worst run of one falls short of its bar. The rows of what
was measured are renewed in the document's table between its two marks; the others stay as they are."""
import argparse
import json
import pathlib
import statistics
import subprocess
import sys
import tempfile

FALLS_SHORT = 1
BEGIN, END = "<!-- measured -->\n", "<!-- end of measured -->\n"


def measure(program, chapters):
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder, "figures.json")
        command = [program, "--json", str(path)] + chapters
        code = subprocess.run(command, check=False).returncode
        if code not in (0, FALLS_SHORT) or not path.exists():
            sys.exit(f"bench: a run ended with {code}")
        return json.loads(path.read_text(encoding="utf-8"))["figures"]


def room_of(worst, bar, at_most):
    """The part of the limit that is left; negative when it falls short. A limit of nothing leaves no room."""
    if bar == 0:
        return 0 if worst == 0 else -1
    return 1 - worst / bar if at_most else 1 - bar / worst


def summary(figures):
    """Of one figure, as it came out in each run."""
    first = figures[0]
    values = sorted(figure["value"] for figure in figures)
    at_most = first["sense"] == "at most"
    best, worst = (values[0], values[-1]) if at_most else (values[-1], values[0])
    bar = first["bar"]
    room = room_of(worst, bar, at_most)
    median = statistics.median(values)
    spread = (values[-1] - values[0]) / median if median else 0
    return {"name": first["name"], "sense": first["sense"], "bar": bar, "median": median, "best": best,
            "worst": worst, "spread": spread, "room": room, "holds": room >= 0}


def summaries(runs):
    names = [figure["name"] for figure in runs[0]]
    by_name = [{figure["name"]: figure for figure in run} for run in runs]
    return [summary([run[name] for run in by_name]) for name in names]


def number(value):
    return f"{value:,.0f}" if abs(value) >= 100 else f"{value:.2f}"


def cells(figure):
    room = f"{figure['room']:.0%}" if figure["holds"] else f"short by {-figure['room']:.0%}"
    return [figure["name"], f"{figure['sense']} {figure['bar']:g}", number(figure["median"]), number(figure["worst"]),
            f"{figure['spread']:.0%}", room]


def write_table(path, figures, runs):
    text = path.read_text(encoding="utf-8")
    before, rest = text.split(BEGIN)
    table, after = rest.split(END)
    rows = {line.split("`")[1]: line for line in table.splitlines() if line.startswith("| `")}
    for figure in figures:
        name, *others = cells(figure)
        rows[name] = "| " + " | ".join([f"`{name}`", str(runs), *others]) + " |"
    lines = ["| Name | Runs | Limit | Median | Worst | Spread | Room |", "|---|---|---|---|---|---|---|", *rows.values()]
    path.write_text(before + BEGIN + "\n" + "\n".join(lines) + "\n\n" + END + after, encoding="utf-8")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("program")
    parser.add_argument("--runs", type=int, required=True)
    parser.add_argument("--json", type=pathlib.Path)
    parser.add_argument("--document", type=pathlib.Path)
    parser.add_argument("--only")
    parser.add_argument("--without", action="append", default=[])
    options = parser.parse_args()
    if options.runs < 1:
        parser.error("at least one run")
    chapters = ["--only", options.only] if options.only else []
    for chapter in options.without:
        chapters += ["--without", chapter]
    runs = []
    for run in range(options.runs):
        print(f"run {run + 1} of {options.runs}", flush=True)
        runs.append(measure(options.program, chapters))
    figures = summaries(runs)
    print(f"\n{'':24}{'limit':>16}{'median':>12}{'worst':>12}{'spread':>9}  room")
    for figure in figures:
        name, limit, median, worst, spread, room = cells(figure)
        print(f"{name:24}{limit:>16}{median:>12}{worst:>12}{spread:>9}  {room}")
    if options.json:
        options.json.write_text(json.dumps({"runs": options.runs, "figures": figures}, indent=1), encoding="utf-8")
    if options.document:
        write_table(options.document, figures, options.runs)
    return 0 if all(figure["holds"] for figure in figures) else FALLS_SHORT


if __name__ == "__main__":
    sys.exit(main())
