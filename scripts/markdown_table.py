#!/usr/bin/env python3
"""Tables in Markdown for the scripts: `table`, or as a program rows from standard input.

As a program it reads a row a line, its cells between tabs, the titles of the columns first.
"""
import sys


def table(titles, rows):
    lines = ["| " + " | ".join(titles) + " |", "|" + "---|" * len(titles)]
    return "\n".join(lines + ["| " + " | ".join(str(cell) for cell in row) + " |" for row in rows])


if __name__ == "__main__":
    first, *others = [line.rstrip("\n").split("\t") for line in sys.stdin]
    print(table(first, others))
