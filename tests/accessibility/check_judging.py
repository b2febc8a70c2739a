"""That the look at names and roles finds what is wrong: its judgement of controls that are made up, and that it goes to
every part of the program."""
import json
import pathlib
import subprocess
import sys
import types
import unittest

import judging
from reader import Role, Sight, State

BASELINE = json.loads(pathlib.Path(__file__).with_name("baseline.json").read_text())
USUAL = {State.ENABLED, State.FOCUSABLE, State.SHOWING}


def made_up(role, name="Doors", parent=None, **parts):
    """A control in sight that can have the focus."""
    control = types.SimpleNamespace(labels=parts.pop("labels", []), description=parts.pop("description", ""))
    sight = Sight(control, parent, role, parts.pop("states", USUAL), name, **parts)
    if parent:
        parent.children.append(sight)
    return sight


def below(role, *rest, **parts):
    return made_up(*rest, parent=made_up(role), **parts)


def off(*states):
    return {State.FOCUSABLE, State.SHOWING, *states}


class Roles(unittest.TestCase):
    def expect(self, fitting, *sights):
        for sight in sights:
            with self.subTest(sight.said()):
                self.assertEqual(bool(judging.is_fitting(sight)), fitting)

    def test_what_has_no_role_of_its_own_is_a_row_of_a_view_alone(self):
        self.expect(True, *(below(view, Role.FILLER) for view in judging.VIEWS))
        self.expect(False, made_up(Role.FILLER), *(below(role, Role.FILLER) for role in
                    (Role.FRAME, Role.DIALOG, Role.PANEL, Role.FILLER, Role.POPUP_MENU, Role.CELL)))

    def test_rows_stand_in_views_and_entries_in_menus(self):
        self.expect(True, below(Role.TREE, Role.CELL), below(Role.LIST, Role.LIST_ITEM), below(Role.MENU, Role.CHECK_ITEM),
                    below(Role.POPUP_MENU, Role.MENU_ITEM), below(Role.TAB_LIST, Role.TAB))
        self.expect(False, below(Role.PANEL, Role.CELL), made_up(Role.LIST_ITEM), below(Role.TREE, Role.MENU_ITEM),
                    below(Role.FRAME, Role.MENU), below(Role.PANEL, Role.TAB))

    def test_places_are_those_that_are_known(self):
        self.expect(True, made_up(Role.PANEL, "Live pictures"), made_up(Role.PANEL, "实时预览"),
                    made_up(Role.LAYERED_PANE, "Settings"), made_up(Role.CANVAS, "Window 1 of 16: Hall"),
                    made_up(Role.IMAGE, "窗口 3：无摄像机"))
        self.expect(False, made_up(Role.PANEL), made_up(Role.PANEL, "Settings"), made_up(Role.LAYERED_PANE),
                    made_up(Role.PANEL, "Live pictures and more"), made_up(Role.CANVAS), made_up(Role.IMAGE, "Window"),
                    made_up(Role.SCROLL_BAR), made_up(Role.SEPARATOR), made_up(200))

    def test_what_is_on_can_be_done(self):
        self.expect(True, made_up(Role.BUTTON, actions=["Press"]), made_up(Role.BUTTON, states=off()),
                    made_up(Role.CHECK_BOX, actions=["Toggle"]), made_up(Role.RADIO_BUTTON, actions=["Press"]),
                    made_up(Role.COMBO_BOX, labels=["Doors"], actions=["ShowMenu"]),
                    made_up(Role.SPIN_BUTTON, interfaces={"Value"}))
        self.expect(False, made_up(Role.BUTTON, actions=["SetFocus"]), made_up(Role.CHECK_BOX, actions=["SetFocus"]),
                    made_up(Role.COMBO_BOX, actions=["ShowMenu"]), made_up(Role.SPIN_BUTTON, interfaces={"Text"}),
                    made_up(Role.COMBO_BOX, labels=["Doors"], actions=["SetFocus"]))

    def test_texts_can_be_read(self):
        self.expect(True, made_up(Role.TEXT, states=off(State.EDITABLE), interfaces={"Text"}),
                    made_up(Role.LABEL, states=off(State.READ_ONLY)))
        self.expect(False, made_up(Role.TEXT, states=off(State.EDITABLE)), made_up(Role.TEXT, interfaces={"Text"}),
                    made_up(Role.LABEL))

    def test_views_have_rows_and_bars_have_tabs(self):
        tree, bar = below(Role.TREE, Role.CELL).parent, below(Role.TAB_LIST, Role.TAB).parent
        self.expect(True, tree, bar)
        self.expect(False, below(Role.TREE, Role.PANEL).parent, made_up(Role.LIST, states={State.SHOWING}),
                    below(Role.TAB_LIST, Role.BUTTON).parent)


class Names(unittest.TestCase):
    SITE = {"Hall", "Gates"}

    def faults(self, language, *names):
        sights = [made_up(Role.BUTTON, name, actions=["Press"]) for name in names]
        return list(judging.faults_of(sights, language, self.SITE))

    def test_good_ones(self):
        self.assertEqual(self.faults("en", "Save", "Ctrl+S", "简体中文"), [])
        self.assertEqual(self.faults("zh_CN", "保存", "Hall", "Hall/Gates", "Gates (Hall / Gates)", "English", "F1"), [])

    def test_bad_ones(self):
        for language, name, fault in (("en", "", "no name"), ("en", "+", "no name"), ("en", "保存", "not in en"),
                                      ("zh_CN", "Save", "not in zh_CN"), ("zh_CN", "Hall/Doors", "not in zh_CN"), ("zh_CN", "Gates, 3 more", "not in zh_CN")):
            with self.subTest(name):
                self.assertTrue(self.faults(language, name)[0].startswith(fault))

    def test_a_bare_control_is_reported(self):
        faults = list(judging.faults_of([below(Role.DIALOG, Role.FILLER)], "en", self.SITE))
        self.assertEqual(len(faults), 1)
        self.assertTrue(faults[0].startswith("role does not fit"))


class Parts(unittest.TestCase):
    def test_every_scene_is_looked_at_or_left_out_for_a_reason(self):
        said = subprocess.run([CLIENT, "--help"], check=True, capture_output=True, text=True).stdout
        scenes = set(said.partition("Scenes: ")[2].split())
        looked_at, left_out = set(BASELINE["places"]) - set(BASELINE["by_keys"]), BASELINE["left_out"]
        self.assertEqual(looked_at & set(left_out), set())
        self.assertEqual(scenes, looked_at | set(left_out))
        self.assertTrue(all(left_out.values()))


if __name__ == "__main__":
    CLIENT = sys.argv.pop(1)
    unittest.main()
