"""Whether one order explains what many desks were answered by one store.

The store lets one desk write at a time and numbers each change in its log, so the order can only be that of the log.
faults() replays it and says, a line each, what does not fit: a change that was acknowledged and is not in the log, or
stands there twice; one that no desk asked for, or that was refused; one that stands before another which was answered
before it was asked for; a read of what never was, or that goes back; a tree that is not what the order leads to.

A session is one connection of a desk: a list of calls, one after the other, each a dict with "do", "code", what else it
was called with, "begin" and "end" (seconds; no "end": never answered) and "answer": ok, refused (certainly not saved)
or unknown.
"""
import dataclasses
import math

GROUP_SAVED, GROUP_REMOVED, PLAN_SAVED, PLAN_REMOVED = 1, 2, 3, 4
KINDS = {"add_plan": PLAN_SAVED, "rename": PLAN_SAVED, "move": PLAN_SAVED, "append": PLAN_SAVED,
         "delete_plan": PLAN_REMOVED, "add_group": GROUP_SAVED, "rename_group": GROUP_SAVED,
         "delete_group": GROUP_REMOVED}
ADDS = ("add_plan", "add_group")
UPDATES = ("rename", "move", "append")
ROOT = "-1"


@dataclasses.dataclass
class History:
    sessions: list  # of lists of calls
    log: list       # (number, origin, kind, code) in the order of numbers, all there ever were
    added: dict     # code of each plan and group that was ever added, by the unique name it was added with
    trees: dict     # at the end, by whose it is: {code: (name, parent, pages)}, pages 0 for a group
    tokens: dict    # at the end in the store: {code: [token, ...]}


@dataclasses.dataclass(frozen=True)
class Row:
    name: str
    parent: str
    tokens: tuple = ()
    revision: int = 0  # of plans from 1

    def shown(self):
        return self.name, self.parent, len(self.tokens)


def words(call):
    return " ".join(f"{key}={call[key]}" for key in ("do", "code", "name", "parent", "token", "revision") if key in call)


def code_of(call, added):
    """Of what a change leaves its mark on in the log; none for something added that is nowhere."""
    return added.get(call["name"]) if call["do"] in ADDS else call["code"]


def faults_of_adding(history):
    for session in history.sessions:
        for call in session:
            if call["do"] not in ADDS:
                continue
            code = history.added.get(call["name"])
            if call["answer"] == "ok" and code != call["new_code"]:
                yield f"lost: {words(call)} was acknowledged with {call['new_code']}, the store has {code}"
            if call["answer"] == "refused" and code is not None:
                yield f"refused, but saved: {words(call)}"


def origins(history):
    """The log's name of each session: that of the entry that made the first thing the session added."""
    makers = {}
    for _, origin, kind, code in history.log:
        if kind in (PLAN_SAVED, GROUP_SAVED):
            makers.setdefault(code, origin)
    names = {}
    for number, session in enumerate(history.sessions):
        codes = [history.added.get(call["name"]) for call in session if call["do"] in ADDS]
        names[number] = next((makers[code] for code in codes if code in makers), None)
    return names


def assign(history, found):
    """The call behind each entry of the log. A session makes one call after the other, so both stand in one order."""
    entries = {}
    revisions = {}
    for place, (_, origin, kind, code) in enumerate(history.log):
        if kind == PLAN_SAVED:
            revisions[code] = revisions.get(code, 0) + 1
        entries.setdefault(origin, []).append((place, kind, code, revisions.get(code)))
    calls = {}
    for number, origin in origins(history).items():
        own = entries.pop(origin, [])
        for call in history.sessions[number]:
            if call["do"] not in KINDS or call["answer"] == "refused":
                continue
            if own and fits(call, own[0], history.added):
                calls[own.pop(0)[0]] = call
            elif call["answer"] == "ok":
                found.append(f"lost: {words(call)} was acknowledged and is not in the log in its place")
        for place, *_ in own:
            found.append(f"made twice, or by no desk: entry {history.log[place]}")
    for left in entries.values():
        found += [f"of no session: entry {history.log[place]}" for place, *_ in left]
    return calls


def fits(call, entry, added):
    _, kind, code, revision = entry
    is_same = KINDS[call["do"]] == kind and code_of(call, added) == code
    return is_same and (call["do"] not in UPDATES or call["revision"] + 1 == revision)


def faults_of_time(history, calls):
    """What was answered before another was asked for stands before it."""
    earliest, first = math.inf, None
    for place in sorted(calls, reverse=True):
        call = calls[place]
        if earliest < call["begin"]:
            yield f"out of order: {words(first)} was answered before {words(call)} began and stands after it"
        if call.get("end", math.inf) < earliest and call["answer"] == "ok":
            earliest, first = call["end"], call


def replay(history, calls, found):
    """The state that the order leads to, and all revisions of all plans with the call that made each."""
    rows, versions = {}, {}
    for place, entry in enumerate(history.log):
        call = calls.get(place)
        code = entry[3]
        if call is None:
            continue
        if call["do"] in ADDS:
            below = call["code"]
            row = Row(call["name"], below, (call["name"],), 1) if call["do"] == "add_plan" else Row(call["name"], below)
            is_possible = below == ROOT or below in rows
        else:
            row = rows.get(code)
            is_possible = row is not None and (call["do"] != "move" or call["parent"] in rows or call["parent"] == ROOT)
        if not is_possible:
            found.append(f"on what was not there: {words(call)}")
            continue
        if entry[2] in (PLAN_REMOVED, GROUP_REMOVED):
            remove(rows, code)
            continue
        rows[code] = changed(row, call)
        if rows[code].revision:
            versions[code, rows[code].revision] = rows[code], call
    return rows, versions


def changed(row, call):
    if call["do"] == "append":
        row = dataclasses.replace(row, tokens=row.tokens + (call["token"],))
    elif call["do"] == "move":
        row = dataclasses.replace(row, parent=call["parent"])
    elif call["do"] in ("rename", "rename_group"):
        row = dataclasses.replace(row, name=call["name"])
    return dataclasses.replace(row, revision=row.revision + 1) if call["do"] in UPDATES else row


def remove(rows, code):
    for below in [other for other, row in rows.items() if row.parent == code]:
        remove(rows, below)
    rows.pop(code, None)


def faults_of_reading(history, versions):
    for session in history.sessions:
        seen = {}
        for call in session:
            if call["answer"] != "ok":
                continue
            if call["do"] in UPDATES:
                seen[call["code"]] = call["revision"] + 1
            if call["do"] != "read":
                continue
            row, maker = versions.get((call["code"], call["read_revision"]), (None, None))
            read = Row(call["name"], call["parent"], tuple(call["tokens"]), call["read_revision"])
            if read != row:
                yield f"never was: {words(call)} read {read}, the order has {row}"
            elif maker["begin"] > call["end"]:
                yield f"from the future: {words(call)} read what {words(maker)} made later"
            if call["read_revision"] < seen.get(call["code"], 0):
                yield f"went back: {words(call)} read revision {call['read_revision']} after {seen[call['code']]}"
            seen[call["code"]] = max(call["read_revision"], seen.get(call["code"], 0))


def difference(tree, rows):
    wanted = {code: row.shown() for code, row in rows.items()}
    odd = sorted(code for code in wanted.keys() | tree.keys() if wanted.get(code) != tree.get(code))
    return "; ".join(f"{code} is {tree.get(code)}, the order has {wanted.get(code)}" for code in odd[:5])


def faults_of_tokens(history, rows):
    for code in sorted(rows.keys() | history.tokens.keys()):
        wanted = list(rows[code].tokens) if code in rows else []
        there = history.tokens.get(code, [])
        if len(set(there)) < len(there):
            yield f"doubled: tokens of {code}: {there}"
        elif there != wanted:
            yield f"tokens of {code} are {there}, the order has {wanted}"


def faults(history):
    found = list(faults_of_adding(history))
    calls = assign(history, found)
    found += faults_of_time(history, calls)
    rows, versions = replay(history, calls, found)
    found += faults_of_reading(history, versions)
    found += faults_of_tokens(history, rows)
    for whose, tree in history.trees.items():
        odd = difference(tree, rows)
        if odd:
            found.append(f"tree of {whose}: {odd}")
    return found


def state(history):
    """The trees' rows that the order leads to."""
    rows, _ = replay(history, assign(history, []), [])
    return {code: row.shown() for code, row in rows.items()}
