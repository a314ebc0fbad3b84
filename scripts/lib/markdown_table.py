#!/usr/bin/python3
"""Tables in Markdown for the scripts: `table`, or as a program rows from standard input.

As a program it reads a row a line, its cells between tabs, the titles of the columns first.
"""
import re
import sys


def table(titles, rows):
    lines = ["| " + " | ".join(titles) + " |", "|" + "---|" * len(titles)]
    return "\n".join(lines + ["| " + " | ".join(str(cell) for cell in row) + " |" for row in rows])


def insert(page, tables):
    """Replaces the text between the marks of each table (name: content) in a page (a Path)."""
    text = page.read_text(encoding="utf-8")
    for name, content in tables.items():
        print(f"{name}\n{content}\n")
        pattern = re.compile(rf"(<!-- {name} -->\n).*?(<!-- end -->)", re.DOTALL)
        if not pattern.search(text):
            raise ValueError(f"{page} has no marks for {name}")
        text = pattern.sub(lambda m, new=content: m[1] + new + "\n" + m[2], text)
    page.write_text(text, encoding="utf-8")


if __name__ == "__main__":
    first, *others = [line.rstrip("\n").split("\t") for line in sys.stdin]
    print(table(first, others))
