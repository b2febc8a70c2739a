"""check_man_page.py PROGRAM PAGE: the page names the options of --help, all of them and no other, and man can show it."""
import re
import subprocess
import sys


def main(program, page):
    text = subprocess.run([program, "--help"], check=True, capture_output=True, text=True).stdout
    offered = set(re.findall(r"^  (?:-\w, )?(--[\w-]+)", text, re.M))
    named = set(re.findall(r"--[a-z][\w-]+", open(page, encoding="utf-8").read().replace("\\-", "-")))
    shown = subprocess.run(["man", "--warnings", "-l", page], check=True, capture_output=True, text=True)
    if not offered or offered != named or shown.stderr:
        sys.exit(f"not in the page: {sorted(offered - named)}; not in the program: {sorted(named - offered)}\n{shown.stderr}")


if __name__ == "__main__":
    main(*sys.argv[1:])
