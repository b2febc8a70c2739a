"""What comes up by itself is said: tips, errors, offers, the conflict bar, the wait page, empty states."""
import argparse
import sys

import session
from reader import Reader

NEWS = {
    "wait": "Loading the plans",
    "search-empty": "No plan is called or shows",
    "cameras-empty": "No hit",
    "history-empty": "No plan was played yet",
    "tip-success": "Renamed to",
    "tip-error": "The service does not answer",
    "tip-warning": "The name is longer",
    "tip-hint": "Choose at least one user",
    "refusal": "Not saved",
    "undo-deletion": "Deleted Gates",
    "stopped": "Stopped Gate overview",
    "play-failed": "could not be played",
    "plan-editor-conflict": "while you were editing",
    "creation-info": "Creation information",
    "desk-locked": "Locked by",
    "log-in-wrong": "password is wrong",
}


def main():
    reader = Reader()
    silent = []
    for place, text in NEWS.items():
        arguments = ["--scene", place, "--set", "timed_play=0", "--lang", "en"]
        if place == "wait":
            arguments += ["--delay", "3000"]
        with session.Program(OPTIONS.client, arguments) as program:
            reader.attach(program)
            try:
                reader.await_news(text)
            except AssertionError as error:
                silent.append(f"{place}: {error}; heard were {reader.announced()}")
            print(place, reader.announced(), flush=True)
    print(*silent, sep="\n")
    return len(silent)


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("client")
    OPTIONS = parser.parse_args()
    sys.exit(session.run_inside(main))
