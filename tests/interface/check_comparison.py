"""check_comparison.py SCRIPTS RECORD: what the comparison of interfaces says of a record that was changed."""
import pathlib
import re
import sys
import tempfile


def swapped(text, pattern):
    """The numbers of the first two matches in one class, the other way round."""
    for body in re.findall(r"<class-decl.*?</class-decl>", text, re.S):
        found = list(re.finditer(pattern, body))
        numbers = [one.group(1) for one in found]
        if len(found) > 1 and numbers[0] != numbers[1]:
            first, second = found[:2]
            changed = (body[:first.start(1)] + numbers[1] + body[first.end(1):second.start(1)] + numbers[0]
                       + body[second.end(1):])
            return text.replace(body, changed)
    sys.exit(f"nothing in the record is like {pattern}")


def without_function(text):
    """One function that is no virtual one less, with its symbol."""
    pattern = r'<member-function access="public">\s*<function-decl name="\w+" [^>]*elf-symbol-id="(\w+)".*?</member-function>'
    found = re.search(pattern, text, re.S)
    return re.sub(rf'<elf-symbol name="{found.group(1)}"[^>]*/>', "", text.replace(found.group(0), ""))


def main(scripts, record):
    sys.path.insert(0, scripts)
    import interface

    text = pathlib.Path(record).read_text(encoding="utf-8")
    members = r'<data-member access="\w+" layout-offset-in-bits="(\d+)"'
    virtual = r'<member-function access="\w+" vtable-offset="(\d+)"'
    with tempfile.TemporaryDirectory() as folder:
        kept, other = pathlib.Path(folder) / "kept.abi", pathlib.Path(folder) / "other.abi"
        for what, before, now, expected in [
                ("nothing changed", text, text, (False, False)),
                ("two members change places", text, swapped(text, members), (True, True)),
                ("two virtual functions change places", text, swapped(text, virtual), (True, True)),
                ("a function goes", text, without_function(text), (True, True)),
                ("a function comes", without_function(text), text, (True, False))]:
            kept.write_text(before, encoding="utf-8")
            other.write_text(now, encoding="utf-8")
            report, is_broken = interface.compare_dumps(kept, other)
            if (bool(report), is_broken) != expected:
                sys.exit(f"{what}: said {is_broken}, {report!r}")


if __name__ == "__main__":
    main(*sys.argv[1:])
