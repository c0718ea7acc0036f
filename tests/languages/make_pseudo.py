#!/usr/bin/env python3
"""Makes a language that nobody speaks from the built-in texts: each a third longer and with accents on
its letters, so that what is not translated, not in the right code page or without room to grow shows.

    make_pseudo.py ENGLISH.h OUT.rc
"""
import re
import sys

DEFINITION = re.compile(r'^#define (TEXT_\w+) "((?:[^"\\]|\\.|"")*)"$', re.MULTILINE)
# What stays as it is: escapes, quotes, what is filled in, the letters that choose items.
KEPT = re.compile(r'(\\.|""|%\d*[a-z]|&.)')
ACCENTED = str.maketrans("aceinouyACEINOUYlsz", "àçéîñöûýÀÇÉÎÑÖÛÝłśž")
GROWTH = 0.35


def pseudo(text):
    parts = KEPT.split(text)
    parts[::2] = [part.translate(ACCENTED) for part in parts[::2]]
    length = sum(len(part) for part in parts[::2])
    return "".join(parts) + "é" * round(length * GROWTH)


def main():
    source, target = sys.argv[1:3]
    with open(source, encoding="utf-8") as file:
        definitions = DEFINITION.findall(file.read())
    if not definitions:
        sys.exit(f"{source}: no texts")
    with open(target, "w", encoding="utf-8") as file:
        for name, text in definitions:
            file.write(f'#define {name} "{pseudo(text)}"\n')
        file.write('\n#define TAG_LABEL_WIDTH 50\n')
        file.write('#include "res/language_set.rc"\n')


if __name__ == "__main__":
    main()
