#!/usr/bin/env python3
"""The checker of histories finds what is planted, and nothing where nothing is."""
import copy
import unittest

from history_check import GROUP_SAVED, PLAN_REMOVED, PLAN_SAVED, History, faults


def call(do, code, times, answer="ok", **more):
    return {"do": do, "code": code, "begin": times[0], "end": times[1], "answer": answer, **more}


def sound():
    """Ann adds a group and a plan in it, both append; Bob reads, adds, and deletes; one of Ann's is never answered."""
    ann = [call("add_group", "-1", (1, 2), name="g", new_code="10"),
           call("add_plan", "10", (3, 4), name="p", new_code="11"),
           call("append", "11", (7, 10), token="t1", revision=1),
           call("append", "11", (13, 14), token="t3", revision=2, answer="refused"),
           call("rename_group", "10", (15, 99), name="g2", answer="unknown")]
    bob = [call("add_plan", "-1", (1, 3), name="q", new_code="12"),
           call("read", "11", (5, 6), name="p", parent="10", tokens=["p"], read_revision=1),
           call("append", "11", (8, 12), token="t2", revision=2),
           call("read", "11", (13, 14), name="p", parent="10", tokens=["p", "t1", "t2"], read_revision=3),
           call("delete_plan", "12", (15, 16))]
    log = [(1, "B", PLAN_SAVED, "12"), (2, "A", GROUP_SAVED, "10"), (3, "A", PLAN_SAVED, "11"),
           (4, "A", PLAN_SAVED, "11"), (5, "B", PLAN_SAVED, "11"), (6, "B", PLAN_REMOVED, "12"),
           (7, "A", GROUP_SAVED, "10")]
    tree = {"10": ("g2", "-1", 0), "11": ("p", "10", 3)}
    return History([ann, bob], log, {"g": "10", "p": "11", "q": "12"}, {"store": tree, "bob": dict(tree)},
                   {"11": ["p", "t1", "t2"]})


def without_the_unanswered(history):
    history.log.pop()
    for tree in history.trees.values():
        tree["10"] = ("g", "-1", 0)


def lost_at_the_end(history):
    history.tokens["11"].remove("t1")


def lost_in_the_log(history):
    history.log.pop(3)


def lost_plan(history):
    history.added.pop("q")


def doubled_token(history):
    history.tokens["11"].append("t2")


def doubled_entry(history):
    history.log.append((8, "B", PLAN_REMOVED, "12"))


def doubled_update(history):
    history.log.append((8, "B", PLAN_SAVED, "11"))


def refused_but_saved(history):
    history.sessions[1][0]["answer"] = "refused"


def reordered_tokens(history):
    history.tokens["11"] = ["p", "t2", "t1"]


def reordered_in_time(history):
    history.sessions[0][1].update(begin=20, end=21)  # the plan that others had changed by then


def written_on_what_is_gone(history):
    history.log[0], history.log[5] = (1, "B", PLAN_REMOVED, "12"), (6, "B", PLAN_SAVED, "12")


def stale_read(history):
    history.sessions[1][3].update(tokens=["p", "t1"], read_revision=2)


def read_of_what_never_was(history):
    history.sessions[1][1]["tokens"] = ["p", "t2"]


def read_of_the_future(history):
    history.sessions[1][1].update(tokens=["p", "t1"], read_revision=2)


def by_no_session(history):
    history.log.append((8, "C", GROUP_SAVED, "10"))


def old_tree(history):
    history.trees["bob"]["10"] = ("g", "-1", 0)


def tree_with_what_was_deleted(history):
    history.trees["bob"]["12"] = ("q", "-1", 1)


PLANTED = {lost_at_the_end: "tokens of 11", lost_in_the_log: "lost: do=append", lost_plan: "lost: do=add_plan",
           doubled_token: "doubled", doubled_entry: "made twice", doubled_update: "made twice",
           refused_but_saved: "refused, but saved", reordered_tokens: "tokens of 11", reordered_in_time: "out of order",
           written_on_what_is_gone: "lost: do=add_plan", stale_read: "went back", read_of_what_never_was: "never was",
           read_of_the_future: "from the future", by_no_session: "of no session", old_tree: "tree of bob",
           tree_with_what_was_deleted: "tree of bob"}


class HistoryCheckTest(unittest.TestCase):
    def test_explains_what_is_sound(self):
        self.assertEqual(faults(sound()), [])
        history = sound()
        without_the_unanswered(history)
        self.assertEqual(faults(history), [])

    def test_finds_what_is_planted(self):
        for plant, wanted in PLANTED.items():
            with self.subTest(plant.__name__):
                history = copy.deepcopy(sound())
                plant(history)
                found = faults(history)
                self.assertTrue(any(line.startswith(wanted) for line in found), found)


if __name__ == "__main__":
    unittest.main()
