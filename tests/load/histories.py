#!/usr/bin/env python3
"""Twenty desks work at random on one server, and both are made to fail: with_postgres.py histories.py LOAD_DESK

One more has the plug-in's tree, and only shows it.

Desks are killed and started again, their lines are cut and fall silent, the server is stopped for a while. In the end
one order must explain all that the desks were answered and show; see history_check.py. TARN_HISTORY_SECONDS says for
how long (10), TARN_HISTORY_SEED repeats the desks' and the faults' choices, though not the moments at which they meet.
With TARN_HISTORY_KEEP what the desks said stays in that folder.
"""
import collections
import json
import os
import pathlib
import random
import signal
import subprocess
import sys
import tempfile
import time

import history_check

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "store"))
import with_postgres  # noqa: E402

DESKS = 20
SETTLED_SECONDS = 30  # for all desks to come back from the last fault and to show the same

# The log is kept whole, and what was added is noted by the unique name it was added with.
PREPARE = """
CREATE SCHEMA proof;
CREATE TABLE proof.added (name TEXT PRIMARY KEY, code INTEGER NOT NULL);
CREATE FUNCTION proof.note() RETURNS trigger LANGUAGE plpgsql AS
  $$ BEGIN INSERT INTO proof.added VALUES (NEW.name, NEW.code); RETURN NEW; END $$;
CREATE TRIGGER noted AFTER INSERT ON plan FOR EACH ROW EXECUTE FUNCTION proof.note();
CREATE TRIGGER noted AFTER INSERT ON plan_group FOR EACH ROW EXECUTE FUNCTION proof.note();
CREATE FUNCTION proof.keep() RETURNS trigger LANGUAGE plpgsql AS $$ BEGIN RETURN NULL; END $$;
CREATE TRIGGER kept BEFORE DELETE ON change_log FOR EACH ROW EXECUTE FUNCTION proof.keep();
"""


class Desk:
    """A process, and what it has written. The next one in its place has a name of its own."""

    def __init__(self, program, url, name, seed, folder, *more):
        self.name = name
        self.said = folder / f"{name}.jsonl"
        self.file = self.said.open("w", encoding="utf-8")
        self.process = subprocess.Popen([program, url, name, str(seed), *more], stdin=subprocess.PIPE, stdout=self.file,
                                        stderr=(folder / f"{name}.err").open("w"), text=True,
                                        env=dict(os.environ, QT_QPA_PLATFORM="offscreen"))

    def say(self, word):
        self.process.stdin.write(word + "\n")
        self.process.stdin.flush()

    def lines(self):
        """Whole lines only: one that was killed may have been in the midst of one."""
        text = self.said.read_text(encoding="utf-8")
        return [json.loads(line) for line in text[:text.rfind("\n") + 1].splitlines()]

    def kill(self):
        self.process.kill()
        self.process.wait()

    def await_line(self, key, deadline, count=1):
        while time.monotonic() < deadline:
            found = [line for line in self.lines() if key in line]
            if len(found) >= count:
                return found[-1]
            if self.process.poll() is not None:
                raise SystemExit(f"desk {self.name} ended by itself: {self.process.returncode}")
            time.sleep(0.05)
        raise SystemExit(f"desk {self.name} does not say \"{key}\"; last: {self.lines()[-1:]}")

    def tree(self):
        count = sum("tree" in line for line in self.lines())
        self.say("tree")
        rows = self.await_line("tree", time.monotonic() + SETTLED_SECONDS, count + 1)["tree"]
        return {row["code"]: (row["name"], row["parent"], row["pages"]) for row in rows}


class Site:
    """The store's database and the server's process."""

    def __init__(self, name):
        server = os.environ["TARN_TEST_POSTGRES"]
        self.process = int(os.environ["TARN_TEST_POSTGRES_PID"])
        self.url = f"{server}/{name}"
        subprocess.run([with_postgres.tool("psql"), "-q", f"{server}/postgres", "-c", f"CREATE DATABASE {name}"],
                       check=True)

    def run(self, statement):
        return subprocess.run([with_postgres.tool("psql"), "-qAt", "-v", "ON_ERROR_STOP=1", self.url, "-c", statement],
                              check=True, capture_output=True, text=True).stdout

    def rows(self, query):
        return json.loads(self.run(f"SELECT coalesce(json_agg(row), '[]') FROM ({query}) row"))

    def pause(self):
        """A server that hangs, with all its processes."""
        os.kill(self.process, signal.SIGSTOP)
        for process in with_postgres.processes_of(self.process)[1:]:
            os.kill(process, signal.SIGSTOP)

    def go_on(self):
        with_postgres.go_on(self.process)


class Run:
    def __init__(self, program, seed, folder):
        self.random = random.Random(seed)
        self.program, self.folder = program, folder
        self.site = Site(f"histories_{seed}")
        self.ended, self.counts = [], collections.Counter()
        self.names = 0
        self.due = []  # what is to be mended, and when
        self.make_store()
        self.from_number = int(self.site.run("SELECT value FROM counter WHERE name = 'seq'"))
        self.desks = [self.start() for _ in range(DESKS)] + [self.start("rows")]  # the last only shows
        for desk in self.desks:
            desk.await_line("session", time.monotonic() + SETTLED_SECONDS)

    def make_store(self):
        desk = self.start()
        desk.await_line("session", time.monotonic() + SETTLED_SECONDS)
        desk.say("stop")
        desk.await_line("stopped", time.monotonic() + SETTLED_SECONDS)
        desk.say("quit")
        desk.process.wait(SETTLED_SECONDS)
        self.site.run(f"DELETE FROM plan; DELETE FROM plan_group; {PREPARE}")

    def start(self, *more):
        self.names += 1
        return Desk(self.program, self.site.url, f"d{self.names}", self.random.randrange(1 << 31), self.folder,
                    *more)

    def fail(self, now):
        place = self.random.randrange(len(self.desks))
        desk = self.desks[place]
        kills = 6 if place < DESKS else 0
        fault = self.random.choices(["kill", "cut", "silence", "stop"], [kills, 8, 4, 1])[0]
        self.counts[fault] += 1
        if fault == "kill":
            desk.kill()
            self.ended.append(desk)
            self.desks[place] = self.start()
        elif fault == "stop":
            self.site.pause()
            self.due.append((now + self.random.uniform(0.5, 3), self.site.go_on))
        else:
            desk.say(fault)
            self.due.append((now + self.random.uniform(0.1, 3), lambda: self.mend(desk)))

    def mend(self, desk):
        if desk.process.poll() is None:
            desk.say("mend")

    def work(self, seconds):
        end = time.monotonic() + seconds
        while (now := time.monotonic()) < end:
            if self.random.random() < 0.2:
                self.fail(now)
            self.mend_all(now)
            time.sleep(0.05)
        self.mend_all(float("inf"))
        for desk in self.desks:
            desk.say("stop")
        for desk in self.desks:
            desk.await_line("stopped", time.monotonic() + SETTLED_SECONDS)

    def mend_all(self, now):
        for when, mend in [due for due in self.due if due[0] <= now]:
            mend()
        self.due = [due for due in self.due if due[0] > now]

    def history(self):
        sessions = [session for desk in self.ended + self.desks for session in sessions_of(desk.lines())]
        log = [(row["seq"], row["origin"], row["kind"], str(row["code"])) for row in self.site.rows(
            f"SELECT * FROM change_log WHERE seq > {self.from_number} AND kind <= 4 AND code <> 0 ORDER BY seq")]
        added = {row["name"]: str(row["code"]) for row in self.site.rows("SELECT * FROM proof.added")}
        tree = {str(row["code"]): (row["name"], str(row["parent_code"]), row["pages"]) for row in self.site.rows(
            "SELECT code, name, parent_code, page_count AS pages FROM plan UNION ALL"
            " SELECT code, name, parent_code, 0 FROM plan_group")}
        tokens = {str(row["code"]): [page["name"] for page in json.loads(row["pages"])]
                  for row in self.site.rows("SELECT code, pages FROM plan_content JOIN plan USING (code)")}
        return history_check.History(sessions, log, added, {"the store": tree}, tokens)

    def settle(self, history):
        """All desks' trees, as soon as they are what the order leads to."""
        wanted = history_check.state(history)
        deadline = time.monotonic() + SETTLED_SECONDS
        for desk in self.desks:
            tree = desk.tree()
            while tree != wanted and time.monotonic() < deadline:
                time.sleep(0.1)
                tree = desk.tree()
            history.trees[f"desk {desk.name}"] = tree

    def end(self):
        self.site.go_on()
        for desk in self.desks:
            if desk.process.poll() is None:
                desk.kill()


def sessions_of(lines):
    """The calls of each connection of one desk; a call that was never answered has no end."""
    sessions = []
    for line in lines:
        if "session" in line:
            sessions.append([])
        elif "begin" in line:
            call = dict(line, begin=line["at"] / 1e9, answer="unknown")
            sessions[-1].append(call)
        elif "end" in line:
            call.update(line, code=call["code"], end=line["at"] / 1e9)
            if call["do"] in history_check.ADDS:
                call["new_code"] = line.get("code")
            if call["do"] == "read":
                call["read_revision"] = call.pop("revision", None)
    return sessions


def main():
    seconds = float(os.environ.get("TARN_HISTORY_SECONDS", 10))
    seed = int(os.environ.get("TARN_HISTORY_SEED", random.randrange(1 << 31)))
    folder = pathlib.Path(os.environ.get("TARN_HISTORY_KEEP") or tempfile.mkdtemp(prefix="tarn-histories-"))
    folder.mkdir(exist_ok=True)
    print(f"seed {seed}, {seconds:.0f} s", flush=True)
    run = Run(sys.argv[1], seed, folder)
    try:
        run.work(seconds)
        history = run.history()
        run.settle(history)
    finally:
        run.end()
    found = history_check.faults(history)
    calls = collections.Counter(call["answer"] for session in history.sessions for call in session)
    print(f"{DESKS} desks, {len(history.sessions)} connections, {sum(calls.values())} calls {dict(calls)}, "
          f"{len(history.log)} changes; faults {dict(run.counts)}")
    print("\n".join(found[:50]) or "one order explains them all")
    if len(history.log) < 5 * seconds:
        print("too few changes to say anything")
        return 1
    if found:
        print(f"{len(found)} faults; TARN_HISTORY_SEED={seed} repeats the choices")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
