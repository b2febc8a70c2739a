#!/usr/bin/env python3
"""What idle desks, and one that writes ten times a second, cost a PostgreSQL server of their own: a table on standard
output. desk_costs.py MANY_DESKS [--desks 20,50,100,200] [--seconds 20] [--json FILE]

MANY_DESKS is the program of that name among the built ones. The desks are sessions of one process on this machine;
only what the server's processes need is counted.
"""
import argparse
import json
import os
import pathlib
import re
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parents[1]
sys.path.insert(0, str(ROOT / "tests" / "store"))
import with_postgres  # noqa: E402

OPTIONS = ("-c max_connections=300 -c shared_preload_libraries=pg_stat_statements -c fsync=on"
           " -c pg_stat_statements.track=top")
TICKS = os.sysconf("SC_CLK_TCK")


def ask(database, statement, who="TARN_TEST_POSTGRES_SUPERUSER"):
    url = f"{os.environ[who]}/{database}"
    return subprocess.run([with_postgres.tool("psql"), "-qAt", url, "-c", statement], check=True, capture_output=True,
                          text=True).stdout.strip()


def processor_seconds(server):
    """Of the server's processes, those that have ended included."""
    seconds = 0
    for process in with_postgres.processes_of(server):
        try:
            fields = pathlib.Path(f"/proc/{process}/stat").read_text().rpartition(")")[2].split()
        except OSError:
            continue
        seconds += sum(map(int, fields[11:15 if process == server else 13])) / TICKS
    return seconds


def bytes_over_lines(port):
    """That the server has sent and received over the connections that are open."""
    lines = subprocess.run(["ss", "-tinH", "sport", "=", f":{port}"], check=True, capture_output=True, text=True).stdout
    return sum(int(count) for count in re.findall(r"\bbytes_(?:acked|received):(\d+)", lines))


def megabytes_a_session(server):
    """Pages shared with others are counted in parts."""
    shares = []
    for process in with_postgres.processes_of(server)[1:]:
        try:
            command = pathlib.Path(f"/proc/{process}/cmdline").read_text()
            rollup = pathlib.Path(f"/proc/{process}/smaps_rollup").read_text()
        except OSError:
            continue
        if " desks " in command:
            shares.append(int(re.search(r"^Pss:\s+(\d+)", rollup, re.M)[1]) / 1024)
    return sum(shares) / max(1, len(shares))


class Meter:
    def __init__(self, server, port):
        self.server, self.port = server, port
        self.before = self.now()

    def now(self):
        statements = ask("postgres", "SELECT coalesce(sum(calls), 0) FROM pg_stat_statements s JOIN pg_database d"
                                     " ON d.oid = s.dbid WHERE datname = 'desks'")
        return time.monotonic(), processor_seconds(self.server), float(statements), bytes_over_lines(self.port)

    def rates(self):
        after = self.now()
        seconds = after[0] - self.before[0]
        cpu, statements, sent = ((new - old) / seconds for old, new in zip(self.before[1:], after[1:]))
        return {"cpu_percent": 100 * cpu, "statements": statements, "bytes": sent}


def measure(program, desks, seconds):
    server = int(os.environ["TARN_TEST_POSTGRES_PID"])
    port = os.environ["TARN_TEST_POSTGRES"].rpartition(":")[2]
    ask("postgres", "CREATE DATABASE desks", "TARN_TEST_POSTGRES")
    process = subprocess.Popen([program, f"{os.environ['TARN_TEST_POSTGRES']}/desks", str(desks)], text=True,
                               stdin=subprocess.PIPE, stdout=subprocess.PIPE, env=dict(os.environ, QT_QPA_PLATFORM="offscreen"))
    started = time.monotonic()
    assert process.stdout.readline() == "ready\n"
    result = {"desks": desks, "start_seconds": time.monotonic() - started}
    time.sleep(8)  # connections of the start are closed by then
    result["sessions"] = int(ask("postgres", "SELECT count(*) FROM pg_stat_activity WHERE datname = 'desks'"))
    meter = Meter(server, port)
    time.sleep(seconds)
    result["idle"] = meter.rates()
    result["megabytes"] = megabytes_a_session(server)
    meter = Meter(server, port)
    process.stdin.write(f"write {seconds}\n")
    process.stdin.flush()
    result["changes"] = int(process.stdout.readline().split()[1]) / seconds
    result["writing"] = meter.rates()
    result["load"] = os.getloadavg()[0]
    process.stdin.write("quit\n")
    process.stdin.flush()
    process.wait(60)
    ask("postgres", "DROP DATABASE desks WITH (FORCE)")
    return result


def table(results):
    yield "| Desks | Sessions | MB a session | idle: statements/s | bytes/s | % of a core | one writes: changes/s | statements/s | kB/s | % of a core | load |"
    yield "|" + "---|" * 11
    for r in results:
        idle, writing = r["idle"], r["writing"]
        yield (f"| {r['desks']} | {r['sessions']} | {r['megabytes']:.1f} | {idle['statements']:.1f} | {idle['bytes']:.0f} |"
               f" {idle['cpu_percent']:.1f} | {r['changes']:.1f} | {writing['statements']:.0f} |"
               f" {writing['bytes'] / 1000:.0f} | {writing['cpu_percent']:.0f} | {r['load']:.1f} |")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("program")
    parser.add_argument("--desks", default="20,50,100,200")
    parser.add_argument("--seconds", type=int, default=20)
    parser.add_argument("--json")
    arguments = parser.parse_args()
    if "TARN_TEST_POSTGRES" not in os.environ:
        return subprocess.run([str(ROOT / "tests" / "store" / "with_postgres.py"), *sys.argv],
                              env=dict(os.environ, TARN_TEST_POSTGRES_OPTIONS=OPTIONS)).returncode
    ask("postgres", "CREATE EXTENSION pg_stat_statements")
    results = [measure(arguments.program, int(count), arguments.seconds) for count in arguments.desks.split(",")]
    print("\n".join(table(results)))
    if arguments.json:
        pathlib.Path(arguments.json).write_text(json.dumps(results, indent=1) + "\n")
    return 0


if __name__ == "__main__":
    sys.exit(main())
