"""Compares the files of texts in src/res/languages/ with the built-in texts: the same names, each once and in the
same order, none left in English without need, no characters that the device's fonts have in one form only.

usage: check_texts.py ROOT
"""
import pathlib
import re
import sys
import unicodedata

TEXT = re.compile(r'^#define (TEXT_\w+) "((?:[^"\\]|\\.|"")*)"$')
WIDTHS = {"BUTTON_WIDTH", "TAG_LABEL_WIDTH", "POSITION_LABEL_WIDTH"}
WIDTH = re.compile(r"^#define (\w+) \d+$")
# So many texts may be what they are in English: names, "OK", "Album", "Genre".
SAME_AS_ENGLISH = 8


def texts_of(path):
    """[(name, text)], and what is wrong with the lines of definitions."""
    texts, errors = [], []
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        found = TEXT.match(line)
        width = WIDTH.match(line)
        if found:
            texts.append(found.groups())
        elif line.startswith("#define") and not (width and width.group(1) in WIDTHS):
            errors.append(f"{path.name}:{number}: not a text, nor a width that can be set")
        if unicodedata.normalize("NFC", line) != line:
            errors.append(f"{path.name}:{number}: accents as characters of their own")
    return texts, errors


def check(path, english):
    texts, errors = texts_of(path)
    names = [name for name, _ in texts]
    for name in sorted(set(names) - {name for name, _ in english}):
        errors.append(f"{path.name}: {name} is no text of the library")
    if not errors and names != [name for name, _ in english]:
        errors.append(f"{path.name}: not the texts of english.h in their order, each once")
    same = [name for (name, text), (_, other) in zip(texts, english) if text == other]
    if len(same) > SAME_AS_ENGLISH:
        errors.append(f"{path.name}: English in {', '.join(same)}")
    return errors


def main():
    root = pathlib.Path(sys.argv[1])
    english, errors = texts_of(root / "src" / "res" / "english.h")
    languages = sorted((root / "src" / "res" / "languages").glob("*.rc"))
    if len(english) < 50 or not languages:
        errors.append("the texts are not where they were")
    for path in languages:
        errors += check(path, english)
    for error in errors:
        print(error)
    print(f"{len(languages)} languages, {len(english)} texts, {len(errors)} errors")
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
