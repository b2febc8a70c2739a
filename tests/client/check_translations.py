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
WORDS = {"en": (re.compile(r"\bplans?\b", re.I), re.compile(r"\bviews?\b", re.I)),
         "zh_CN": (re.compile("预案"), re.compile("视图"))}  # what is played, in either wording
CHOSEN_BY_CODE = ("View", "view", "%n view(s)", "SaveView", "SaveAsView", "TheUserCurrentlyHasAwlMLoHj")  # sources for one wording only
PLAIN_ENGLISH = ("TarnClient::", "MarUIControl::", "WidgetKit::", "Q")  # contexts whose sources are texts, not keys


def messages(path, wording=None):
    for context in tree.parse(path).getroot().iter("context"):
        for message in context.iter("message"):
            if message.findtext("comment") != wording:
                continue
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


def faults_of_wording(language, plans, views):
    """Where the site says plan no text says view, and the other way round."""
    if language not in WORDS:
        yield f"{language}: WORDS does not say how it calls plans and views"
        return
    plan, view = WORDS[language]
    for (context, source), forms in sorted(plans.items()):
        text, other = "\n".join(forms), "\n".join(views.get((context, source), []))
        if view.search(text) and source not in CHOSEN_BY_CODE:
            yield f"{language}: {context}: {source}: '{text}' says view where the site says plan"
        if plan.search(text) and (plan.search(other) or not view.search(other)):
            yield f"{language}: {context}: {source}: '{other}' does not say view; see scripts/add_view_texts.py"
        if other and sorted(PLACES.findall(other)) != sorted(PLACES.findall(text)):
            yield f"{language}: {context}: {source}: other places in '{other}' than in '{text}'"
    for context, source in sorted(views.keys() - plans.keys()):
        yield f"{language}: {context}: {source}: only the wording with views has a text"


def main():
    lupdate, root = sys.argv[1], pathlib.Path(sys.argv[2])
    wanted = texts_of_sources(lupdate, root)
    found = [] if len(wanted) > 10 else [f"only {len(wanted)} texts found in the sources"]
    folder = root / "client" / "translations"
    languages = [file.stem[len("tarn_"):] for file in folder.glob("tarn_*.ts")]
    catalogues = {language: dict(messages(folder / f"tarn_{language}.ts")) for language in languages}
    for language, known in catalogues.items():
        found += faults(language, wanted, known, catalogues["en"])
        views = dict(messages(folder / f"tarn_{language}.ts", "view"))
        found += faults_of_wording(language, known, views)
    print("\n".join(found) or f"{len(wanted)} texts, {len(languages)} languages complete")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
