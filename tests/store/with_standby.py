#!/usr/bin/env python3
"""Two PostgreSQL servers, of which one follows the other: with_standby.py PROGRAM [ARGUMENT...]

What the first has committed the second has written down: replication is synchronous. The program finds both in
TARN_TEST_PAIR, "HOST:PORT,HOST:PORT", and calls TARN_TEST_FAIL_OVER, a command, to have the first killed without
warning and the second take its place; a new standby is made then where the first one was. Exit codes as
with_postgres.py has them.
"""
import glob
import json
import os
import shutil
import signal
import subprocess
import sys
import tempfile
import time

import with_postgres

PATIENCE = 60


class Pair:
    """The two servers' state, in a file, so that a further process can go on with it."""

    def __init__(self, folder):
        self.folder = folder
        self.account = with_postgres.unprivileged()
        self.ports, self.pids, self.primary = [0, 0], [0, 0], 0

    def load(self):
        with open(os.path.join(self.folder, "state.json"), encoding="utf-8") as file:
            self.ports, self.pids, self.primary = json.load(file)
        return self

    def save(self):
        with open(os.path.join(self.folder, "state.json"), "w", encoding="utf-8") as file:
            json.dump([self.ports, self.pids, self.primary], file)

    def data(self, node):
        return os.path.join(self.folder, f"node{node}")

    def run(self, tool, *arguments):
        subprocess.run([with_postgres.tool(tool), *arguments], check=True, stdout=subprocess.DEVNULL,
                       cwd=self.folder, **self.account)

    def start(self, node):
        options = {"listen_addresses": "127.0.0.1", "unix_socket_directories": self.folder, "fsync": "off",
                   "synchronous_standby_names": "*", "wal_receiver_status_interval": "1", "max_connections": "50"}
        command = [with_postgres.tool("postgres"), "-D", self.data(node), "-p", str(self.ports[node])]
        for name, value in options.items():
            command += ["-c", f"{name}={value}"]
        with open(os.path.join(self.folder, f"log{node}"), "ab") as log:
            server = subprocess.Popen(command, cwd=self.folder, stdout=log, stderr=log, start_new_session=True,
                                      **self.account)
        self.pids[node] = server.pid
        self.await_for(lambda: subprocess.run(
            [with_postgres.tool("pg_isready"), "-q", "-h", "127.0.0.1", "-p", str(self.ports[node])],
            check=False).returncode == 0)

    @staticmethod
    def await_for(is_so):
        end = time.monotonic() + PATIENCE
        while not is_so():
            if time.monotonic() > end:
                raise TimeoutError("a server does not get ready")
            time.sleep(0.05)

    def ask(self, node, question):
        return subprocess.run(
            [with_postgres.tool("psql"), "-h", "127.0.0.1", "-p", str(self.ports[node]), "-U", "super", "-d", "postgres",
             "-Atc", question], check=True, capture_output=True, text=True).stdout.strip()

    def make_primary(self):
        self.run("initdb", "-D", self.data(0), "-U", "super", "-A", "trust", "-E", "UTF8", "--locale=C", "--no-sync")
        self.start(0)

    def make_standby(self, node):
        shutil.rmtree(self.data(node), ignore_errors=True)
        self.run("pg_basebackup", "-h", "127.0.0.1", "-p", str(self.ports[self.primary]), "-U", "super", "-D",
                 self.data(node), "-R", "-X", "stream", "-c", "fast", "--no-sync")
        self.start(node)
        self.await_for(lambda: self.ask(self.primary, "SELECT count(*) FROM pg_stat_replication "
                                                      "WHERE sync_state = 'sync'") == "1")

    def kill(self, node):
        for process in with_postgres.processes_of(self.pids[node]):
            try:
                os.kill(process, signal.SIGKILL)
            except ProcessLookupError:
                pass
        self.await_for(lambda: not is_alive(self.pids[node]))
        for lock in glob.glob(os.path.join(self.folder, f".s.PGSQL.{self.ports[node]}*")):
            os.remove(lock)

    def fail_over(self):
        lost = self.primary
        self.kill(lost)
        self.primary = 1 - lost
        self.run("pg_ctl", "-D", self.data(self.primary), "promote", "-w", "-t", str(PATIENCE))
        self.make_standby(lost)
        self.save()


def is_alive(process):
    try:
        with open(f"/proc/{process}/stat", encoding="utf-8") as file:
            return file.read().rpartition(")")[2].split()[0] != "Z"
    except OSError:
        return False


def main():
    if sys.argv[1:2] == ["--fail-over"]:
        Pair(sys.argv[2]).load().fail_over()
        return 0
    if not all(with_postgres.tool(name) for name in ("initdb", "postgres", "pg_basebackup", "pg_ctl", "psql")):
        print("PostgreSQL is not installed: nothing is tested against servers.")
        return 1 if os.environ.get("TARN_REQUIRE_POSTGRES") else 77
    folder = tempfile.mkdtemp(prefix="tarn-pair-")
    pair = Pair(folder)
    if pair.account:
        os.chown(folder, pair.account["user"], pair.account["group"])
    try:
        pair.ports = [with_postgres.free_port(), with_postgres.free_port()]
        pair.make_primary()
        pair.make_standby(1)
        pair.run("createuser", "-h", "127.0.0.1", "-p", str(pair.ports[0]), "-U", "super", "--createdb", "--createrole",
                 "tarn")
        pair.save()
        environment = dict(os.environ, TARN_TEST_PAIR=",".join(f"127.0.0.1:{port}" for port in pair.ports),
                           TARN_TEST_FAIL_OVER=f"{sys.executable} {os.path.abspath(__file__)} --fail-over {folder}")
        return subprocess.run(sys.argv[1:], env=environment, check=False).returncode
    finally:
        if os.path.exists(os.path.join(folder, "state.json")):
            pair.load()
        for node in (0, 1):
            if pair.pids[node]:
                pair.kill(node)
        shutil.rmtree(folder, ignore_errors=True)


if __name__ == "__main__":
    sys.exit(main())
