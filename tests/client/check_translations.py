#!/usr/bin/env python3
"""check_translations.py LUPDATE SOURCE_DIR: every text that the sources translate has a display text in each language,
and no key of the plug-in is shown raw."""
import pathlib
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as tree

FOLDERS = ["base", "config", "data", "service", "tree", "dialogs", "panel", "client", "host", "hostkit", "resources/forms"]
ORDINARY_WORD = re.compile(r"[A-Za-z][a-z]*(-[a-z]+)*(\.\.\.)?")
PLACES = re.compile(r"%[\dn]")
PLAIN_ENGLISH = ("TarnClient::", "MarUIControl::", "WidgetKit::", "Q")  # contexts whose sources are texts, not keys


def messages(path):
    for context in tree.parse(path).getroot().iter("context"):
        for message in context.iter("message"):
            key = (context.findtext("name"), message.findtext("source"))
            text = message.find("translation")
            if text is None or text.get("type") is not None:
                yield key, [""]
            else:
                # One form for each number that the language tells apart.
                forms = text.findall("numerusform") or [text]
                yield key, [form.text or "" for form in forms]


def texts_of_sources(lupdate, root):
    with tempfile.TemporaryDirectory() as folder:
        fresh = pathlib.Path(folder) / "fresh.ts"
        sources = [str(root / name) for name in FOLDERS if (root / name).is_dir()]
        subprocess.run([lupdate, "-silent", "-locations", "none", *sources, "-ts", str(fresh)], check=True)
        return {key for key, _ in messages(fresh)}


def is_key(context, source):
    return not context.startswith(PLAIN_ENGLISH) and " " not in source and not ORDINARY_WORD.fullmatch(source)


def faults(language, wanted, known, english):
    for context, source in sorted(wanted):
        key = is_key(context, source)
        model = english.get((context, source), [""])[0] if key else source  # a key does not show its places
        for text in known.get((context, source), [""]):
            if not text:
                yield f"{language}: no text for {context}: {source}"
            elif key and text == source:
                yield f"{language}: {context}: {source} would be shown raw"
            elif sorted(PLACES.findall(text)) != sorted(PLACES.findall(model)):
                yield f"{language}: {context}: {source}: other places than in '{text}'"


def main():
    lupdate, root = sys.argv[1], pathlib.Path(sys.argv[2])
    wanted = texts_of_sources(lupdate, root)
    found = [] if len(wanted) > 10 else [f"only {len(wanted)} texts found in the sources"]
    folder = root / "client" / "translations"
    languages = [file.stem[len("tarn_"):] for file in folder.glob("tarn_*.ts")]
    catalogues = {language: dict(messages(folder / f"tarn_{language}.ts")) for language in languages}
    for language, known in catalogues.items():
        found += faults(language, wanted, known, catalogues["en"])
    print("\n".join(found) or f"{len(wanted)} texts, {len(languages)} languages complete")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
