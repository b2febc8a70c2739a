"""A display, a session bus and a home of their own, and the client in them."""
import json
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile

END_SECONDS = 60


def run_inside(main):
    """Runs `main()` in a session of its own, which ends with it; its answer is the exit code."""
    if os.environ.get("TARN_OWN_SESSION"):
        sys.exit(main())
    with tempfile.TemporaryDirectory(prefix="tarn-reader-") as home:
        display, number = _start_display()
        try:
            command = ["dbus-run-session", "--", sys.executable, *sys.argv]
            code = subprocess.run(command, env=_environment(home, number), check=False).returncode
        finally:
            display.terminate()
            display.wait()
    sys.exit(code)


def _start_display():
    read_end, write_end = os.pipe()
    display = subprocess.Popen(["Xvfb", "-displayfd", str(write_end), "-screen", "0", "1600x900x24", "-nolisten", "tcp", "-noreset"],
                               pass_fds=[write_end], stderr=subprocess.DEVNULL)
    os.close(write_end)
    with os.fdopen(read_end) as answer:
        number = answer.readline().strip()
    if not number:
        raise RuntimeError("Xvfb did not start")
    return display, number


def _environment(home, display):
    runtime = pathlib.Path(home, "runtime")
    temporary = pathlib.Path(home, "tmp")
    for folder in (runtime, temporary):
        folder.mkdir(mode=0o700)
    own = {"HOME": home, "DISPLAY": f":{display}", "XDG_RUNTIME_DIR": str(runtime), "TARN_OWN_SESSION": "1",
           "QT_QPA_PLATFORM": "xcb", "QT_XCB_GL_INTEGRATION": "none",  # nothing is drawn by it, and it takes half of a start
           "LC_ALL": "C.UTF-8",
           "GSETTINGS_BACKEND": "memory", "TMPDIR": str(temporary)}
    for kind in ("DATA", "CONFIG", "CACHE", "STATE"):
        own[f"XDG_{kind}_HOME"] = str(pathlib.Path(home, kind.lower()))
    kept = {name: value for name, value in os.environ.items() if name not in ("WAYLAND_DISPLAY", "SESSION_MANAGER")}
    return {**kept, **own}


def new_store(client):
    """The file of a demo site's store that no client has open."""
    file = pathlib.Path(os.environ["HOME"], "new.sqlite")
    subprocess.run([client, "--store", f"sqlite:{file}", "--quit-after", "0.1"], check=True, stdout=subprocess.DEVNULL)
    return file


class Program:
    """The client at work, on a demo site of its own unless a store is named. `store` is a file to take a copy of, which is
    quicker than a new site. To be used with `with`: a clean end without a complaint of the toolkit is part of each
    test."""

    def __init__(self, path, arguments=(), store=None):
        folder = pathlib.Path(os.environ["HOME"])
        self.log = folder / f"client-{len(list(folder.glob('client-*.log')))}.log"
        if "--store" not in arguments:
            own = self.log.with_suffix(".sqlite")
            if store:
                shutil.copyfile(store, own)
            arguments = ["--store", f"sqlite:{own}", *arguments]
        self._process = subprocess.Popen([path, "--log", str(self.log), *arguments], stdout=subprocess.PIPE,
                                         stderr=subprocess.PIPE, text=True)
        self.pid = self._process.pid

    def is_running(self):
        return self._process.poll() is None

    def has_logged(self, text, times=1):
        return self.log.exists() and self.log.read_text(errors="replace").count(text) >= times

    def wait(self):
        """The last line of the output as JSON, when the client ends by itself."""
        output, errors = self._process.communicate(timeout=END_SECONDS)
        self._check_end(errors)
        lines = output.splitlines()
        return json.loads(lines[-1]) if lines else {}

    def _check_end(self, errors):
        complaints = [line for line in self.log.read_text(errors="replace").splitlines() if " W Qt " in line]
        if self._process.returncode != 0 or errors.strip() or complaints:
            raise AssertionError(f"the client ended with {self._process.returncode}: {errors} {complaints}")

    def __enter__(self):
        return self

    def __exit__(self, kind, error, trace):
        if not self.is_running() or kind is None:
            if self.is_running():
                self._process.send_signal(signal.SIGTERM)
            self.wait()
            return
        print(self.log.read_text(errors="replace")[-4000:], file=sys.stderr)
        self._process.kill()
        self._process.wait()
