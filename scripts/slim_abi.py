"""What abidw writes of a library, down to what a host sees: types of Qt and std have a name and no inside, what is not
reached from an exported symbol is left out, and the order is always the same."""
import hashlib
import re
import xml.etree.ElementTree as ElementTree

OURS = {
    "LyraPluginManager", "MarUIControl", "ResourceData", "ResourceTreeKit", "TarnConfiguration", "TarnHost", "TarnPlanView",
    "WidgetKit", "Wren", "marlog", "play_plugin_protocol", "ptz_plugin_protocol", "tarn_ui_data_controller",
    "view_plugin_protocol",
}
NAMED = {"class-decl", "union-decl", "enum-decl", "typedef-decl"}
REFERENCES = ("type-id", "naming-typedef-id")


def is_ours(name):
    parts = name.split("::")
    return parts[0] in OURS and "Private" not in parts


def opaque_id(name):
    return hashlib.sha256(name.encode()).hexdigest()[:12]


def take_foreign(parent, path, names):
    """Removes named types that are not ours; `names` gets what their ids are called."""
    for child in list(parent):
        inner = child[0] if child.tag == "member-type" and len(child) else child
        name = path + inner.get("name", "")
        if inner.tag in NAMED and not is_ours(name):
            names[inner.get("id")] = name
            inside = [one for one in inner.iter() if one is not inner and one.get("id")]
            names.update((one.get("id"), f"{name}::{one.get('name', one.tag)}") for one in inside)
            parent.remove(child)
        elif inner.tag == "namespace-decl" or inner.tag in NAMED:
            take_foreign(inner, name + "::", names)
        elif inner.tag in ("function-decl", "var-decl") and not is_ours(name):
            parent.remove(child)


def is_defined_type(one):
    return one.tag in NAMED and one.get("is-declaration-only") is None


def reached(units):
    """The elements that exported symbols and types of ours lead to. All of these, since many stand in lists alone."""
    parents = {child: parent for unit in units for parent in unit.iter() for child in parent}
    types = {one.get("id"): one for one in parents if one.get("id")}
    todo = [one for one in parents if one.get("elf-symbol-id") or is_defined_type(one)]
    found = set()
    while todo:
        one = todo.pop()
        if one in found or one.tag == "abi-instr":
            continue
        found.add(one)
        todo.append(parents[one])
        if one.tag == "namespace-decl":
            continue
        for inner in one.iter():
            found.add(inner)
            todo += [types[inner.get(key)] for key in REFERENCES if inner.get(key) in types]
    return found


def keep(parent, found):
    for child in list(parent):
        if child not in found:
            parent.remove(child)
        elif child.tag == "namespace-decl":
            keep(child, found)


def order(one):
    return (one.tag, one.get("name", ""), one.get("mangled-name", ""), one.get("id", ""), one.get("type-id", ""))


def join(target, parent):
    """Puts what stands in a namespace into the one of that name."""
    for child in parent:
        same = None
        if child.tag == "namespace-decl":
            same = next((one for one in target.findall("namespace-decl") if one.get("name") == child.get("name")), None)
        if same is None and child.tag == "namespace-decl":
            same = ElementTree.SubElement(target, "namespace-decl", name=child.get("name"))
        if same is None:
            target.append(child)
        else:
            join(same, child)
    target[:] = sorted(target, key=order)


def slim(root):
    units = root.findall("abi-instr")
    names = {}
    for unit in units:
        take_foreign(unit, "", names)
    found = reached(units)
    everything = ElementTree.Element("abi-instr", {"address-size": "64", "path": "all", "language": units[0].get("language")})
    for unit in units:
        keep(unit, found)
        join(everything, unit)
        root.remove(unit)
    opaque = set()
    for one in everything.iter():
        for key in REFERENCES:
            if one.get(key) in names:
                opaque.add(names[one.get(key)])
                one.set(key, opaque_id(names[one.get(key)]))
    for name in sorted(opaque):
        declared = {"name": name, "visibility": "default", "is-declaration-only": "yes", "id": opaque_id(name)}
        ElementTree.SubElement(everything, "class-decl", declared)
    root.append(everything)
    ElementTree.indent(root, " ")


def left_out(root, folders):
    """Classes of the headers that the dump names and does not describe."""
    defined = set()
    for header in (one for folder in folders for one in folder.rglob("*.h")):
        defined.update(re.findall(r"^(?:class|struct) (?:\w+_EXPORT )?(\w+)[^;\n]*\{$", header.read_text(), re.M))
    classes = list(root.iter("class-decl"))
    described = {one.get("name") for one in classes if one.get("is-declaration-only") is None}
    return sorted({one.get("name") for one in classes} & defined - described)
