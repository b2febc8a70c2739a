"""Every control that can have the focus has a name in the language that is set, and a role that fits, seen from outside,
in each part of the program. Without --skin and --lang in all of them. With --show all controls are listed."""
import argparse
import itertools
import json
import os
import pathlib
import subprocess
import sys

import session
from judging import faults_of, has_focus_in_turn, is_row
from reader import TOPS, Reader

BASELINE = json.loads(pathlib.Path(__file__).with_name("baseline.json").read_text())
SKINS, LANGUAGES = ("redblack", "white"), ("en", "zh_CN")

MENUS = {"row-menu", "group-menu", "search-menu", "hit-menu", "save-menu", "window-menu", "play-on", "users", "menu",
         "field-menu", "camera-menu", "time-menu", "search-last", "default-view", "default-view-search"}
ARGUMENTS = {"wait": ["--delay", "120000"]}  # longer than anybody looks at it
LONG_NAME = "Perimeter_fence_north_gate_and_weighbridge_" * 5
LONG_QUESTION = 'Delete "{}" with 12 plans each?'.format('", "'.join([LONG_NAME] * 5))
NAMED_BY_SCENES = {"Weber", "Night shift", "Whole site with the car park", "viewer", "CAM 017", "fence", "gate",
                   "Platform 1", "Platform 2", "D-210", "Station", "10.0.7.90", "10.0.7.91", LONG_NAME, LONG_QUESTION}


def site_words():
    """What the demo site calls its plans, cameras, users and the like, which is the same in all languages."""
    file = pathlib.Path(os.environ["HOME"]) / "site.json"
    subprocess.run([OPTIONS.client, "--store", f"sqlite:{OPTIONS.store}", "--export", str(file)], check=True,
                   stdout=subprocess.DEVNULL)

    def texts(value):
        if isinstance(value, str):
            yield value
        elif isinstance(value, (dict, list)):
            for inner in value.values() if isinstance(value, dict) else value:
                yield from texts(inner)
    return NAMED_BY_SCENES | set(texts(json.loads(file.read_text())))


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
        scene, *keys = BASELINE["by_keys"].get(self._place, [self._place])
        with session.Program(OPTIONS.client, ["--scene", scene, *self._arguments], OPTIONS.store) as program:
            self._reader.attach(program)
            self._reader.until(lambda: program.has_logged("The scene is set"), f"the scene {scene}")
            self._reader.keys(*keys)
            if self._place in MENUS:
                self._reader.until(lambda: is_menu_open(self._reader), "the menu")
            self._reader.until(self._sees_all, f"{self._least}")
            return list(faults_of(self.tops + self.controls, self._language, OPTIONS.site))

    def _sees_all(self):
        """Whether all that is to be there is in sight, and nothing came or went meanwhile."""
        self._reader.hear()
        before = self._reader.comings
        seen = [sight for window in self._reader.windows for sight in self._reader.survey(window)]
        self.tops = [sight for sight in seen if sight.role in TOPS and not sight.parent]
        self.controls = [sight for sight in seen if has_focus_in_turn(sight)]
        return all(self.counts()[kind] >= least for kind, least in self._least.items()) and \
            self._reader.comings == before

    def counts(self):
        rows = sum(is_row(sight) for sight in self.controls)
        return {"controls": len(self.controls) - rows, "rows": rows}


def main():
    reader = Reader()
    OPTIONS.store = session.new_store(OPTIONS.client)
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
