#!/usr/bin/env python3
"""Runs a program with a PostgreSQL server of its own: with_postgres.py PROGRAM [ARGUMENT...]

The server listens on 127.0.0.1 alone, keeps its data in a folder that goes with it, and does not run as root. It asks
no user for a password but one called "guarded" and members of "asks_for_password". The program finds it in
TARN_TEST_POSTGRES, under a plain role that may make databases and roles, in TARN_TEST_POSTGRES_SUPERUSER under one that
may do anything, its process in TARN_TEST_POSTGRES_PID. The server gets the options in TARN_TEST_POSTGRES_OPTIONS, too.
Exit code 77, for a test that was skipped, when PostgreSQL is not installed; 1 where TARN_REQUIRE_POSTGRES is set.
"""
import glob
import os
import pwd
import shutil
import signal
import socket
import subprocess
import sys
import tempfile


def tool(name):
    found = sorted(glob.glob(f"/usr/lib/postgresql/*/bin/{name}"))
    return found[-1] if found else shutil.which(name)


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


def unprivileged():
    if os.geteuid() != 0:
        return {}
    account = pwd.getpwnam("nobody")
    return {"user": account.pw_uid, "group": account.pw_gid, "extra_groups": []}


def processes_of(server):
    """The server's own process and those that it has started."""
    found = [server]
    for stat in glob.glob("/proc/[0-9]*/stat"):
        try:
            with open(stat) as file:
                text = file.read()
        except OSError:
            continue
        if int(text.rpartition(")")[2].split()[1]) == server:
            found.append(int(stat.split("/")[2]))
    return found


def go_on(server):
    """A program that stopped the server and died would leave it so."""
    for process in processes_of(server):
        try:
            os.kill(process, signal.SIGCONT)
        except ProcessLookupError:
            pass


def ask_for_password(rules):
    with open(rules, "r+", encoding="utf-8") as file:
        others = file.read()
        file.seek(0)
        file.write(f"host all guarded,+asks_for_password 127.0.0.1/32 scram-sha-256\n{others}")


def main():
    initdb, server, ready = tool("initdb"), tool("postgres"), tool("pg_isready")
    if not (initdb and server and ready):
        print("PostgreSQL is not installed: nothing is tested against a server.")
        return 1 if os.environ.get("TARN_REQUIRE_POSTGRES") else 77
    folder = tempfile.mkdtemp(prefix="tarn-postgres-")
    account = unprivileged()
    if account:
        os.chown(folder, account["user"], account["group"])
    data, port = os.path.join(folder, "data"), str(free_port())
    process = None
    try:
        subprocess.run([initdb, "-D", data, "-U", "super", "-A", "trust", "-E", "UTF8", "--locale=C", "--no-sync"],
                       check=True, stdout=subprocess.DEVNULL, cwd=folder, **account)
        ask_for_password(os.path.join(data, "pg_hba.conf"))
        process = subprocess.Popen(
            [server, "-D", data, "-p", port, "-c", "listen_addresses=127.0.0.1", "-c", f"unix_socket_directories={folder}",
             "-c", "log_min_messages=panic", "-c", "fsync=off", "-c", "max_connections=250",
             *os.environ.get("TARN_TEST_POSTGRES_OPTIONS", "").split()], cwd=folder, **account)
        subprocess.run(f"for i in $(seq 100); do '{ready}' -q -h 127.0.0.1 -p {port} && exit 0; "
                       f"kill -0 {process.pid} || exit 1; sleep 0.1; done; exit 1", shell=True, check=True)
        for role in (["--createdb", "--createrole", "tarn"], ["--no-login", "asks_for_password"]):
            subprocess.run([tool("createuser"), "-h", "127.0.0.1", "-p", port, "-U", "super", *role], check=True)
        environment = dict(os.environ, TARN_TEST_POSTGRES=f"postgresql://tarn@127.0.0.1:{port}",
                           TARN_TEST_POSTGRES_SUPERUSER=f"postgresql://super@127.0.0.1:{port}",
                           TARN_TEST_POSTGRES_PID=str(process.pid))
        return subprocess.run(sys.argv[1:], env=environment).returncode
    finally:
        if process is not None:
            go_on(process.pid)
            process.send_signal(signal.SIGINT)
            process.wait()
        shutil.rmtree(folder, ignore_errors=True)


if __name__ == "__main__":
    sys.exit(main())
