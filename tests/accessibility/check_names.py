"""Every control that can have the focus has a name and a role that fits, seen from outside, in each part of the program,
in both skins and languages. With --show all of them are listed."""
import argparse
import json
import pathlib
import sys

import session
from reader import TOPS, VIEWS, Gone, Reader, Role, State

BASELINE = json.loads(pathlib.Path(__file__).with_name("baseline.json").read_text())
LOOKS = (("redblack", "en"), ("white", "zh_CN"), ("redblack", "zh_CN"), ("white", "en"))
WHOLE_LOOKS = 2  # of these see all parts, the others the first

ROWS = {Role.CELL, Role.LIST_ITEM, Role.TREE_ITEM, Role.TABLE_COLUMN_HEADER, Role.FILLER}
MENUS = {"row-menu", "save-menu", "window-menu", "play-on", "users", "menu"}
MENU_ROWS = {Role.MENU_ITEM, Role.CHECK_ITEM, Role.RADIO_ITEM, Role.MENU}
CHECKED = {Role.CHECK_BOX, Role.RADIO_BUTTON, Role.TOGGLE_BUTTON}
PLACES = {Role.PANEL, Role.LAYERED_PANE, Role.CANVAS, Role.IMAGE, Role.DIALOG, Role.SCROLL_BAR}


def is_named(control):
    """By a word, not by a sign."""
    return any(letter.isalpha() for letter in control.name)


def is_fitting(control, role, states):
    """Whether what the role promises can be done or read."""
    is_on = State.ENABLED in states
    if role in ROWS | MENU_ROWS | PLACES:
        return True
    if role == Role.BUTTON:
        return not is_on or {"Press", "ShowMenu"} & set(control.actions)
    if role in CHECKED:
        return not is_on or {"Toggle", "Press"} & set(control.actions)
    if role in (Role.TEXT, Role.PASSWORD):
        return "Text" in control.interfaces and states & {State.EDITABLE, State.READ_ONLY}
    if role == Role.SPIN_BUTTON:
        return "Value" in control.interfaces
    if role == Role.COMBO_BOX:
        return not is_on or control.actions
    if role in VIEWS:
        return State.FOCUSABLE in states and all(child.role in ROWS for child in control.children)
    if role == Role.LABEL:
        return State.READ_ONLY in states  # a text that can be marked and copied
    if role == Role.TAB_LIST:
        return any(child.role == Role.TAB for child in control.children)
    return role == Role.TAB


def has_focus_in_turn(role, states):
    return State.FOCUSABLE in states or role in VIEWS or role in MENU_ROWS


def faults_of(window, show):
    """How many controls there are, and what is wrong with them."""
    count, faults = 0, []
    for control in window.walk():
        try:
            role, states = control.role, control.states
            if role in TOPS and control == window:
                if not is_named(control):
                    faults.append(f"window without a name: {control.said()}")
                continue
            if not has_focus_in_turn(role, states) or (role in VIEWS and control.parent.role == Role.COMBO_BOX):
                continue
            count += 1
            if show:
                print("   ", control.said(), sorted(state.name for state in states), control.actions)
            if not is_named(control):
                faults.append(f"no name: {control.said()} below {control.parent.said()}")
            if not is_fitting(control, role, states):
                faults.append(f"role does not fit: {control.said()} {sorted(states)} {control.actions}")
        except Gone:
            continue
    return count, faults


def look_at(reader, place, arguments, show):
    print(place, *arguments, end=": ", flush=True)
    with session.Program(OPTIONS.client, ["--scene", place, "--set", "timed_play=0", *arguments]) as program:
        reader.attach(program)
        reader.until(lambda: reader.windows, "a window")
        reader.until_quiet()
        if place in MENUS:
            reader.keys("Down")  # a menu is known once an entry has the focus
            reader.until_quiet()
        counts = [faults_of(window, show) for window in reader.windows]
    total = sum(count for count, _ in counts)
    print(total, "controls", flush=True)
    return total, [fault for _, faults in counts for fault in faults]


def main():
    reader = Reader()
    seen, faults = 0, []
    places = OPTIONS.place or list(BASELINE["places"])
    for number, (skin, language) in enumerate(LOOKS):
        for place in places if number < WHOLE_LOOKS else places[:1]:
            count, wrong = look_at(reader, place, ["--skin", skin, "--lang", language], OPTIONS.show)
            least = BASELINE["places"].get(place, 1)
            if count < least:
                wrong.append(f"{count} controls instead of {least} at least")
            seen += count
            faults += [f"{place} {skin} {language}: {fault}" for fault in wrong]
    share = 100 * (seen - len(faults)) / seen
    print(*faults, sep="\n")
    print(f"{share:.1f} % of {seen} controls have a name and a role that fits; to be {BASELINE['share']} %")
    return int(share < BASELINE["share"])


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("client")
    parser.add_argument("--place", action="append", help="this scene alone; may be repeated")
    parser.add_argument("--show", action="store_true")
    OPTIONS = parser.parse_args()
    sys.exit(session.run_inside(main))
