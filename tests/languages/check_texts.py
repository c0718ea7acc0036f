"""Compares the files of texts in src/res/languages/ with the built-in texts: the same names, each once
and in the same order, asking for the same things, none left in English without need, no letter that
chooses two things of one menu or dialog, no characters that the device's fonts have in one form only.

usage: check_texts.py ROOT
"""
import pathlib
import re
import sys
import unicodedata

TEXT = re.compile(r'^#define (TEXT_\w+) "((?:[^"\\]|\\.|"")*)"$')
WIDTHS = {"BUTTON_WIDTH", "TAG_LABEL_WIDTH", "POSITION_LABEL_WIDTH"}
WIDTH = re.compile(r"^#define (\w+) \d+$")
SPECIFIER = re.compile(r"%\d*(.)")
MNEMONIC = re.compile(r"&(.)")
# So many texts may be what they are in English: names, "OK", "Album", "Genre".
SAME_AS_ENGLISH = 8
# A tip longer than this is cut off.
TIP_LENGTH = 79


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


def groups_of(scripts):
    """The names of the texts that are seen side by side: of each popup, menu and dialog."""
    groups, open_groups = [], []
    for script in scripts:
        is_shown = False
        for line in script.read_text(encoding="utf-8").splitlines():
            word = line.split()[0] if line.split() else ""
            if word == "BEGIN":
                open_groups.append([])
                if is_shown:
                    groups.append(open_groups[-1])
            elif word == "END":
                open_groups.pop()
            elif open_groups:
                open_groups[-1] += re.findall(r"\bTEXT_\w+", line)
            else:
                is_shown = is_shown and not word.startswith(("STRINGTABLE", "ID"))
                is_shown = is_shown or " MENU" in line or " DIALOG " in line
    return groups


def check(path, english, groups, tips):
    texts, errors = texts_of(path)
    names = [name for name, _ in texts]
    for name in sorted(set(names) - {name for name, _ in english}):
        errors.append(f"{path.name}: {name} is no text of the library")
    if not errors and names != [name for name, _ in english]:
        errors.append(f"{path.name}: not the texts of english.h in their order, each once")
    same = [name for (name, text), (_, other) in zip(texts, english) if text == other]
    if path.name != "english.h" and len(same) > SAME_AS_ENGLISH:
        errors.append(f"{path.name}: English in {', '.join(same)}")
    for (name, text), (_, other) in zip(texts, english):
        if SPECIFIER.findall(text) != SPECIFIER.findall(other):
            errors.append(f"{path.name}: {name} asks for other things than the built-in text")
        if not text or (name in tips and len(text) > TIP_LENGTH):
            errors.append(f"{path.name}: {name} is empty or longer than a tip can be")
        if name == "TEXT_NEW_PRESET" and re.search(r'[\\/:*?"<>|]', text):
            errors.append(f"{path.name}: {name} is not the name of a file")
    by_name = dict(texts)
    for group in groups:
        letters = [letter.upper() for name in group
                   for letter in MNEMONIC.findall(by_name.get(name, "").replace("&&", ""))]
        for letter in sorted({letter for letter in letters if letters.count(letter) > 1}):
            errors.append(f"{path.name}: {letter} chooses two of {', '.join(group)}")
    return errors


def main():
    res = pathlib.Path(sys.argv[1]) / "src" / "res"
    english, errors = texts_of(res / "english.h")
    languages = sorted((res / "languages").glob("*.rc"))
    groups = groups_of(sorted(res.glob("*.rc")))
    tips = set(re.findall(r"STRING\(ID_\w+, (\w+)\)", (res / "strings.rc").read_text(encoding="utf-8")))
    if len(english) < 50 or len(groups) < 15 or len(tips) < 10 or not languages:
        errors.append("the texts are not where they were")
    for path in [res / "english.h"] + languages:
        errors += check(path, english, groups, tips)
    for error in errors:
        print(error)
    print(f"{len(languages)} languages, {len(english)} texts, {len(errors)} errors")
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
