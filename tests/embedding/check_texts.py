"""check_texts.py CATALOGUE OUTPUT: the embedding program, which has written OUTPUT, has played a plan, and its panel shows texts
of the catalogue and no keys."""
import re
import sys
import xml.etree.ElementTree as ElementTree

FEWEST = 10


def forms_of(message):
    translation = message.find("translation")
    return [form.text or "" for form in translation.findall("numerusform") or [translation]]


def main(catalogue, output_file):
    texts, keys = set(), set()
    for message in ElementTree.parse(catalogue).getroot().iter("message"):
        texts.update(" ".join(form.split()) for form in forms_of(message))
        keys.add(" ".join(message.findtext("source").split()))
    with open(output_file, encoding="utf-8") as file:
        output = file.read()
    shown = {line[len("text: "):] for line in output.splitlines() if line.startswith("text: ")}
    if not re.search(r": [1-9]\d* cameras$", output, re.M):
        sys.exit(f"No plan has played: {output}")
    raw = shown & (keys - texts)
    if raw or len(shown & texts) < FEWEST:
        sys.exit(f"Keys: {sorted(raw)}; of the catalogue: {sorted(shown & texts)}; all: {sorted(shown)}")
    print(f"The panel shows {len(shown & texts)} texts of the catalogue, and no keys")


if __name__ == "__main__":
    main(*sys.argv[1:])
