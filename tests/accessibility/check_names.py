"""Every control that can have the focus has a name in the language that is set, and a role that fits, seen from outside,
in each part of the program. Without --skin and --lang in all of them. With --show all controls are listed."""
import argparse
import itertools
import json
import os
import pathlib
import re
import subprocess
import sys

import session
from reader import TOPS, VIEWS, Gone, Reader, Role, State

BASELINE = json.loads(pathlib.Path(__file__).with_name("baseline.json").read_text())
SKINS, LANGUAGES = ("redblack", "white"), ("en", "zh_CN")

ROWS = {Role.CELL, Role.LIST_ITEM, Role.TREE_ITEM, Role.TABLE_COLUMN_HEADER, Role.FILLER}
MENUS = {"row-menu", "group-menu", "search-menu", "save-menu", "window-menu", "play-on", "users", "menu", "field-menu",
         "camera-menu", "time-menu", "search-last", "default-view"}
MENU_ROWS = {Role.MENU_ITEM, Role.CHECK_ITEM, Role.RADIO_ITEM, Role.MENU}
CHECKED = {Role.CHECK_BOX, Role.RADIO_BUTTON, Role.TOGGLE_BUTTON}
PLACES = {Role.PANEL, Role.LAYERED_PANE, Role.CANVAS, Role.IMAGE, Role.DIALOG, Role.SCROLL_BAR}

OPENED_BY_KEYS = {"field-menu": ("search-empty", "Menu"), "camera-menu": ("cameras", "Menu"),
                  "time-menu": ("plan-editor-times", "Menu")}  # what no scene opens
ARGUMENTS = {"wait": ["--delay", "120000"]}  # longer than anybody looks at it
HAN = re.compile("[\u4e00-\u9fff]")
IN_ANY_LANGUAGE = re.compile(r"English|简体中文|(Ctrl|Alt|Shift)\+.*|F\d+|\w+://\S+")
NAMED_BY_SCENES = {"Weber", "Night shift", "Whole site with the car park", "viewer", "CAM 017", "fence", "gate"}


def site_words():
    """What the demo site calls its plans, cameras, users and the like, which is the same in all languages."""
    folder = pathlib.Path(os.environ["HOME"])
    file, store = folder / "site.json", f"sqlite:{folder / 'site.sqlite'}"
    for arguments in (["--quit-after", "0.1"], ["--export", str(file)]):
        subprocess.run([OPTIONS.client, "--store", store, *arguments], check=True, stdout=subprocess.DEVNULL)

    def texts(value):
        if isinstance(value, str):
            yield value
        elif isinstance(value, (dict, list)):
            for inner in value.values() if isinstance(value, dict) else value:
                yield from texts(inner)
    return NAMED_BY_SCENES | set(texts(json.loads(file.read_text())))


def is_named(sight):
    """By a word, not by a sign."""
    return any(letter.isalpha() for letter in sight.name)


def is_in_language(name, language, site):
    if IN_ANY_LANGUAGE.fullmatch(name):
        return True
    if language == "zh_CN":
        return HAN.search(name) or all(part in site for part in name.split("/"))
    return not HAN.search(name)


def is_labelled(sight):
    """A box whose name is what is chosen in it says what it is for elsewhere."""
    return sight.control.labels or sight.control.description


def is_fitting(sight):
    """Whether what the role promises can be done or read."""
    role, states = sight.role, sight.states
    is_on = State.ENABLED in states
    if role in ROWS | MENU_ROWS | PLACES:
        return True
    if role == Role.BUTTON:
        return not is_on or {"Press", "ShowMenu"} & set(sight.actions)
    if role in CHECKED:
        return not is_on or {"Toggle", "Press"} & set(sight.actions)
    if role in (Role.TEXT, Role.PASSWORD):
        return "Text" in sight.interfaces and states & {State.EDITABLE, State.READ_ONLY}
    if role == Role.SPIN_BUTTON:
        return "Value" in sight.interfaces
    if role == Role.COMBO_BOX:
        return is_labelled(sight) and (not is_on or sight.actions)
    if role in VIEWS:
        return State.FOCUSABLE in states and all(child.role in ROWS for child in sight.children)
    if role == Role.LABEL:
        return State.READ_ONLY in states  # a text that can be marked and copied
    if role == Role.TAB_LIST:
        return any(child.role == Role.TAB for child in sight.children)
    return role == Role.TAB


def has_focus_in_turn(sight):
    if sight.role in VIEWS:
        return sight.parent.role != Role.COMBO_BOX
    return sight.role not in TOPS and (State.FOCUSABLE in sight.states or sight.role in MENU_ROWS)


def faults_of(sights, language, site):
    for sight in sights:
        if not is_named(sight):
            yield f"no name: {sight.said()} below {sight.parent.said() if sight.parent else 'nothing'}"
        elif not is_in_language(sight.name, language, site):
            yield f"not in {language}: {sight.said()}"
        try:
            if sight.role not in TOPS and not is_fitting(sight):
                yield f"role does not fit: {sight.said()} {sorted(sight.states)} {sight.actions}"
        except Gone:
            yield f"went while it was looked at: {sight.said()}"


def is_menu_open(reader):
    """A menu is known once an entry has the focus."""
    if not reader.popup():
        reader.keys("Down")
    return reader.popup()


class Look:
    """At one part of the program in one skin and language."""

    def __init__(self, reader, place, skin, language):
        self._reader = reader
        self._place = place
        self._language = language
        self._arguments = ["--set", "timed_play=0", "--skin", skin, "--lang", language, *ARGUMENTS.get(place, [])]
        self._least = BASELINE["places"].get(place, {"controls": 1, "rows": 0})
        self.tops, self.controls = [], []

    def take(self):
        scene, *keys = OPENED_BY_KEYS.get(self._place, (self._place,))
        with session.Program(OPTIONS.client, ["--scene", scene, *self._arguments]) as program:
            self._reader.attach(program)
            self._reader.until(lambda: program.has_logged("The scene is set"), f"the scene {scene}")
            self._reader.keys(*keys)
            if self._place in MENUS:
                self._reader.until(lambda: is_menu_open(self._reader), "the menu")
            self._reader.until(self._sees_all, f"{self._least}")
            return list(faults_of(self.tops + self.controls, self._language, OPTIONS.site))

    def _sees_all(self):
        """Whether all that is to be there is in sight, and nothing came or went meanwhile."""
        before = self._reader.comings
        seen = [sight for window in self._reader.windows for sight in self._reader.survey(window)]
        self.tops = [sight for sight in seen if sight.role in TOPS and not sight.parent]
        self.controls = [sight for sight in seen if has_focus_in_turn(sight)]
        return all(self.counts()[kind] >= least for kind, least in self._least.items()) and \
            self._reader.comings == before

    def counts(self):
        rows = sum(sight.role in ROWS for sight in self.controls)
        return {"controls": len(self.controls) - rows, "rows": rows}


def main():
    reader = Reader()
    OPTIONS.site = site_words()
    seen, faults = 0, []
    looks = itertools.product([OPTIONS.skin] if OPTIONS.skin else SKINS, [OPTIONS.lang] if OPTIONS.lang else LANGUAGES,
                              OPTIONS.place or BASELINE["places"])
    for skin, language, place in looks:
        look = Look(reader, place, skin, language)
        try:
            wrong = look.take()
        except AssertionError as error:
            wrong = [str(error)]
        print(place, skin, language, look.counts(), flush=True)
        if OPTIONS.show:
            for sight in look.controls:
                print("   ", sight.said(), sorted(state.name for state in sight.states), sight.actions)
        seen += len(look.controls)
        faults += [f"{place} {skin} {language}: {fault}" for fault in wrong]
    share = 100 * (seen - len(faults)) / max(1, seen)
    print(*faults, sep="\n")
    print(f"{share:.1f} % of {seen} controls have a name and a role that fits; to be {BASELINE['share']} %")
    return int(share < BASELINE["share"])


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("client")
    parser.add_argument("--skin", choices=SKINS)
    parser.add_argument("--lang", choices=LANGUAGES)
    parser.add_argument("--place", action="append", help="this part alone; may be repeated")
    parser.add_argument("--show", action="store_true")
    OPTIONS = parser.parse_args()
    sys.exit(session.run_inside(main))
