#!/usr/bin/python3
"""Makes tables in Markdown, for other scripts or, as a program, from standard input.

The program reads one row per line, with tabs between the cells and the titles in the first row.
"""
import re
import sys


def table(titles, rows):
    lines = ["| " + " | ".join(titles) + " |", "|" + "---|" * len(titles)]
    return "\n".join(lines + ["| " + " | ".join(str(cell) for cell in row) + " |" for row in rows])


def insert(page, tables):
    """Replaces the text between the marks of each table (name: content) in a page, a Path."""
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
