#!/usr/bin/env python3
"""add_view_texts.py: gives each text of the catalogues that says "plan", and has none for sites that say "view", a second
one with that word in its place. Read what it has written: it knows words, not sentences."""
import pathlib
import re

WORDS = {
    "en": [(r"\bplans\b", "views"), (r"\bplan\b", "view"), (r"\bPlans\b", "Views"), (r"\bPlan\b", "View")],
    "zh_CN": [("预案", "视图")],
}
MESSAGE = re.compile(r"    <message[^>]*>\n.*?    </message>\n", re.S)
SOURCE = re.compile(r"<source>(.*?)</source>", re.S)
TRANSLATION = re.compile(r"<translation.*?</translation>", re.S)
COMMENT = "<comment>view</comment>"


def with_views(context, words):
    sources = {SOURCE.search(one).group(1) for one in MESSAGE.findall(context) if COMMENT in one}

    def add(match):
        message = match.group(0)
        source = SOURCE.search(message)
        if "<comment>" in message or source.group(1) in sources:
            return message
        text = TRANSLATION.search(message).group(0)
        changed = text
        for word, other in words:
            changed = re.sub(word, other, changed)
        if changed == text:
            return message
        second = message.replace(text, changed).replace(source.group(0), f"{source.group(0)}\n        {COMMENT}")
        return message + second

    return MESSAGE.sub(add, context)


def main():
    folder = pathlib.Path(__file__).resolve().parent.parent / "client" / "translations"
    for language, words in WORDS.items():
        path = folder / f"tarn_{language}.ts"
        path.write_text(with_views_of(path.read_text(encoding="utf-8"), words), encoding="utf-8")


def with_views_of(catalogue, words):
    return re.sub(r"<context>.*?</context>", lambda one: with_views(one.group(0), words), catalogue, flags=re.S)


main()
