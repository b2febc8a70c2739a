#!/usr/bin/env python3
"""The binary interface of the libraries of a build with debug information, against the record of it in abi/.

Exit code of check: 0 the same, 1 another one, 77 the record was made with another compiler or Qt. renew writes the record
again."""
import argparse
import collections
import pathlib
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

import abi_layout
import slim_abi

ROOT = pathlib.Path(__file__).resolve().parent.parent
ABI = ROOT / "abi"
KINDS = r"(?:(?:vtable|VTT|typeinfo|typeinfo name|guard variable) for |(?:non-virtual|virtual) thunk to )?"
CANNOT_COMPARE = 77
FAILED = 0b0011  # bits of abidiff's exit code
RENEW = "scripts/interface.py renew build/{build}"

ADDED = """
A host that was built against {name} goes on without being built again, and may use what was added.
Decided so? Then
  1. raise the second number of the version in CMakeLists.txt, unless that was done since the last version given out,
  2. name what was added in CHANGELOG.md, in a line that begins with "Interface",
  3. {renew}
and commit abi/ with the change."""
BROKEN = """
A host that was built against {name} has to be built again: calls that were removed do not link, and what was changed
(sizes, places of members, order of virtual functions, parameters) is read wrongly without a word.
Not meant so? Then take it back: add instead of changing, new virtual functions and members at the end of classes that
hosts neither derive from nor have by value, or behind a pointer to what is private.
Decided so? Then
  1. raise TARN_INTERFACE_VERSION and the first number of the version in CMakeLists.txt, unless that was done since the
     last version given out,
  2. say in CHANGELOG.md, in a line that begins with "Interface", what a host has to change,
  3. {renew}
and commit abi/ with the change."""


def library_in(build, name):
    return build / "lib" / f"{name}.so"


def headers_of(build, name):
    """Folders of the library's own headers, and of those that these include."""
    host = [ROOT / "host", ROOT / "hostkit" / "public"]
    if name.startswith("libTarnHost"):
        return host, []
    return [build / "include" / "TarnPlanView"], host


def dump_of(build, name):
    """The interface as it is now, as a tree of XML."""
    own, included = headers_of(build, name)
    with tempfile.TemporaryDirectory() as folder:
        whole = pathlib.Path(folder) / "whole.abi"
        command = ["abidw", "--drop-private-types", "--no-show-locs", "--no-corpus-path", "--no-comp-dir-path",
                   "--type-id-style", "hash", "--exported-interfaces-only", "--drop-undefined-syms",
                   "--no-parameter-names", "--no-elf-needed", "--out-file", whole]
        for one in own + included:
            command += ["--headers-dir", one]
        subprocess.run(command + [library_in(build, name)], check=True)
        tree = ElementTree.parse(whole)
    slim_abi.slim(tree.getroot())
    missing = slim_abi.left_out(tree.getroot(), own)
    if missing:
        sys.exit(f"interface: {name}: the debug information lacks {', '.join(missing)}")
    return tree


def counts_of(library):
    """How many symbols each namespace exports."""
    listed = subprocess.run(["nm", "-D", "--defined-only", "-C", library], check=True, capture_output=True, text=True)
    names = [line.split(" ", 2)[2] for line in listed.stdout.splitlines()]
    found = [re.match(KINDS + r"(\w+)::", name) for name in names]
    return collections.Counter(one.group(1) if one else "no namespace" for one in found)


def symbols_text(build, name):
    counts = counts_of(library_in(build, name))
    return made_with(build) + "\n" + "".join(f"{space} {count}\n" for space, count in sorted(counts.items()))


def compare(build, name):
    """What is different, and whether a host would have to be built again."""
    kept = ABI / f"{name}.abi"
    with tempfile.TemporaryDirectory() as folder:
        now = pathlib.Path(folder) / f"{name}.abi"
        dump_of(build, name).write(now, encoding="unicode")
        return compare_dumps(kept, now)


def compare_dumps(before, now):
    compared = subprocess.run(["abidiff", "--no-show-locs", before, now], capture_output=True, text=True)
    if compared.returncode & FAILED:
        sys.exit(f"interface: abidiff failed: {compared.stderr}")
    counts = re.findall(r"changes summary: (\d+) Removed, (\d+) Changed", compared.stdout)
    lines, new_lines = abi_layout.lines_of(before), abi_layout.lines_of(now)
    report = compared.stdout if compared.returncode else ""
    report += "".join(f"- {line}\n" for line in sorted(lines - new_lines))
    report += "".join(f"+ {line}\n" for line in sorted(new_lines - lines))
    return report, abi_layout.is_broken(lines, new_lines) or any(int(count) for pair in counts for count in pair)


def check(build, name):
    missing = [kept.name for kept in (ABI / f"{name}.symbols", ABI / f"{name}.abi") if not kept.exists()]
    if missing:
        print(f"interface: abi/ lacks {' and '.join(missing)}; {RENEW.format(build=build.name)} makes them")
        return 1
    expected = (ABI / f"{name}.symbols").read_text()
    kept_with = expected.partition("\n")[0]
    if kept_with != made_with(build):
        print(f"interface: the record of {name} was made with {kept_with}, this is {made_with(build)}: not compared")
        return CANNOT_COMPARE
    counted = symbols_text(build, name)
    report, is_broken = compare(build, name)
    if not report and counted == expected:
        return 0
    print(f"The interface of {name} is not the one in abi/.\n\n{report}")
    if counted != expected:
        print(f"Exported symbols by namespace, as in abi/:\n{expected}\nnow:\n{counted}")
    advice = BROKEN if is_broken else ADDED
    print(advice.format(name=name, renew=RENEW.format(build=build.name)))
    return 1


def renew(build, name):
    ABI.mkdir(exist_ok=True)
    (ABI / f"{name}.symbols").write_text(symbols_text(build, name))
    dump_of(build, name).write(ABI / f"{name}.abi", encoding="unicode")
    return 0


def made_with(build):
    """The compiler and the Qt that a build was configured for."""
    cache = (build / "CMakeCache.txt").read_text()
    return re.search(r"^TARN_MADE_WITH:INTERNAL=(.*)$", cache, re.M).group(1)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("what", choices=["check", "renew"])
    parser.add_argument("build", type=lambda text: pathlib.Path(text).resolve())
    parser.add_argument("--library", action="append", help="as in libTarnHost; else all of the build's")
    options = parser.parse_args()
    names = options.library or sorted(path.stem for path in (options.build / "lib").glob("libTarn*.so"))
    run = {"check": check, "renew": renew}[options.what]
    return max(run(options.build, name) for name in names)


if __name__ == "__main__":
    sys.exit(main())
