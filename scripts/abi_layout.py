"""What a dump of abidw says of types, as lines to compare. abidiff looks at what functions lead to, and passes over virtual
functions that are only declared; a host also holds records that stand in lists, and calls such functions."""
import subprocess
import xml.etree.ElementTree as ElementTree

KINDS = {"pointer-type-def": "{}*", "reference-type-def": "{}&", "qualified-type-def": "const {}"}
VIRTUAL = ": virtual function "


def text_of(types, number):
    """A type as it is written."""
    one = types.get(number)
    if one is None:
        return "?"
    if one.tag in KINDS:
        return KINDS[one.tag].format(text_of(types, one.get("type-id")))
    return one.get("name", one.tag)


def lines_about(one, path, types):
    for child in one:
        if child.tag == "member-type":
            yield from lines_about(child, path, types)
        elif child.tag == "namespace-decl" or (child.tag in ("class-decl", "union-decl") and child.get("size-in-bits")):
            inner = f"{path}::{child.get('name')}" if path else child.get("name")
            if child.get("size-in-bits"):
                yield f"{inner} has {child.get('size-in-bits')} bits"
            yield from lines_about(child, inner, types)
        elif child.tag == "enum-decl":
            for value in child.iter("enumerator"):
                yield f"{path}::{child.get('name')}::{value.get('name')} is {value.get('value')}"
        elif child.get("layout-offset-in-bits") is not None:
            member = child[0] if child.tag == "data-member" else child
            kind = text_of(types, member.get("type-id"))
            yield f"{path}: {child.tag} {member.get('name', '')} of type {kind} at {child.get('layout-offset-in-bits')}"
        elif child.get("vtable-offset") is not None:
            yield f"{path}{VIRTUAL}{child.get('vtable-offset')} is {child[0].get('mangled-name')}"


def lines_of(dump):
    root = ElementTree.parse(dump).getroot()
    types = {one.get("id"): one for one in root.iter() if one.get("id")}
    lines = "\n".join({line for unit in root.iter("abi-instr") for line in lines_about(unit, "", types)})
    return set(subprocess.run(["c++filt"], input=lines, check=True, capture_output=True, text=True).stdout.splitlines())


def is_broken(before, now):
    """Whether a type is other than it was. A new type is not, nor a new value; a new virtual function of a known one is."""
    known = {line.split(" has ")[0] for line in before}
    return bool(before - now) or any(VIRTUAL in line and line.split(VIRTUAL)[0] in known for line in now - before)
