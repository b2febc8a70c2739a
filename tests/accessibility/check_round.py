"""A round through the program by someone who sees nothing of it: by names, roles and keys alone."""
import argparse
import sys

import session
from reader import Reader, Role, State

PLAN, GROUP, NEW_GROUP = "Heard plan", "Listeners", "Readers"


class Round:
    def __init__(self, reader):
        self.reader = reader

    @property
    def tree(self):
        return self.reader.await_control("Public plans", Role.TREE)

    def row(self, name):
        return self.reader.await_control(name, Role.CELL, self.tree)

    def go_to(self, name):
        row = self.row(name)
        row.act("SetFocus")
        self.reader.until(lambda: row.has(State.FOCUSED), f"the focus on {name!r}")
        return row

    def open_group(self, name):
        row = self.go_to(name)
        if not row.has(State.EXPANDED):
            assert row.has(State.EXPANDABLE, State.COLLAPSED), row.said()
            self.reader.keys("Right")
            self.reader.until(lambda: row.has(State.EXPANDED), f"{name!r} to open")
        return row

    def menu(self, name, entry):
        """Takes the entry of the row's menu."""
        self.go_to(name).act("ShowMenu")
        self.reader.until(lambda: self.open_menu(), "the menu")
        self.reader.await_control(entry, None, self.reader.popup()).press()

    def open_menu(self):
        self.reader.keys("Down")
        popup = self.reader.popup()
        return popup and popup.role == Role.POPUP_MENU

    def browse(self):
        self.open_group("Perimeter")
        gates = self.open_group("Gates")
        assert gates.description.startswith("Level 3, rows below: "), gates.said()
        plan = self.go_to("Gate overview, playing")
        assert plan.description.startswith("Level 4") and not plan.has(State.EXPANDABLE), plan.said()

    def search_and_play(self):
        field = self.reader.await_control("Search plans", Role.TEXT)
        field.focus()
        field.write("Perimeter tour")
        self.reader.keys("Return")
        hits = self.reader.await_control("Plans found", Role.LIST)
        self.reader.await_control("Perimeter tour...", Role.LIST_ITEM, hits).press()
        self.reader.await_control("Perimeter tour...", Role.FRAME)
        window = self.reader.await_control("Window 1: ...", Role.IMAGE)
        self.reader.until(lambda: window.description == "live", "a picture")
        field.focus()
        self.reader.keys("Escape")
        self.open_group("Tours")
        self.row("Perimeter tour, playing")

    def make_group(self):
        self.go_to("Tours")
        self.reader.press("New group")
        self.reader.await_control("New group", Role.TEXT).write(NEW_GROUP)
        self.reader.press("Add")
        self.row(NEW_GROUP)

    def rename_group(self):
        self.go_to(NEW_GROUP)
        self.reader.keys("shift+F2")
        field = self.reader.until(lambda: self.name_field(), "the field of the name")
        field.write(GROUP)
        self.reader.press("Save")
        self.row(GROUP)

    def name_field(self):
        focused = self.reader.focused()
        return focused if focused and focused.role == Role.TEXT and focused.text == NEW_GROUP else None

    def make_plan(self):
        self.go_to(GROUP)
        self.reader.press("New plan")
        self.reader.await_control("Name", Role.TEXT).write(PLAN)
        for page, camera in ((1, "CAM 001 Gate"), (2, "CAM 002 Gate barrier")):
            if page > 1:
                self.reader.press("New empty page after this one")
                self.reader.await_control("Page 2: 0...", Role.LIST_ITEM)
            self.place_camera(camera)
            self.reader.await_control(f"Page {page}: 1...", Role.LIST_ITEM)
        self.reader.press("Save", Role.BUTTON, self.reader.await_control("Plan editor"))
        self.row(PLAN)

    def place_camera(self, name):
        field = self.reader.await_control("Search cameras", Role.TEXT)
        field.focus()
        field.write(name)
        cameras = self.reader.await_control("Cameras", Role.TREE)
        self.reader.until(lambda: self.reader.find(name + "...", Role.CELL, cameras)
                          and not self.reader.find("CAM 003...", Role.CELL, cameras), "the only camera of this name")
        self.reader.keys("Return")

    def change_and_save(self):
        self.go_to(PLAN).press()
        self.row(PLAN + ", playing")
        self.reader.press("9 windows", Role.RADIO_BUTTON)
        self.reader.forget()
        self.reader.press("Save the plan")
        self.reader.await_news(PLAN)

    def share(self):
        self.menu(PLAN + ", playing", "Share")
        users = self.reader.await_control("Share with", Role.TREE)
        self.reader.await_control("guard", Role.CELL, users).act("Toggle")
        self.reader.forget()
        self.reader.press("Share")
        self.reader.await_news("hare")

    def delete(self):
        self.go_to(PLAN + ", playing")
        self.reader.press("Delete")
        question = self.reader.await_control("A plan that is playing will be deleted...", Role.DIALOG)
        self.reader.forget()
        self.reader.press("Delete", Role.BUTTON, question)
        self.reader.await_news(PLAN)
        assert not self.reader.find(PLAN + "...", Role.CELL, self.tree)


def main():
    reader = Reader()
    with session.Program(OPTIONS.client, ["--set", "timed_play=0", "--lang", "en"]) as program:
        reader.attach(program)
        reader.await_control("Perimeter", Role.CELL)
        walk = Round(reader)
        for step in (walk.browse, walk.search_and_play, walk.make_group, walk.rename_group, walk.make_plan,
                     walk.change_and_save, walk.share, walk.delete):
            print(step.__name__, flush=True)
            step()
    return 0


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("client")
    OPTIONS = parser.parse_args()
    sys.exit(session.run_inside(main))
