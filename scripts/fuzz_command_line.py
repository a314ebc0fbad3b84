#!/usr/bin/env python3
"""Runs quillane-batch with random command lines: several options at a time, odd values, odd files.

A finding is a crash, a sanitizer's report, an undocumented exit status, a run that takes too
long, a leftover .part file, or an error without a message.
Usage: fuzz_command_line.py PROGRAM [SECONDS, default 600] [SEED]
"""
import os
import pathlib
import random
import subprocess
import sys
import tempfile
import time

STATUSES = {0, 1, 2, 3, 4, 129, 130, 143}
LONGEST = 120  # seconds
NUMBERS = ["0", "1", "3", "-1", "0.5", "1e-3", "1e308", "-1e308", "1e-320", "nan", "inf", "", " ", "+5", "+-5",
           "050", "0x10", "24,5", "abc", "32767", "32768", "-32768", "99999999999999999999", "5\x1b[31m", "\xff"]
NAMES = ["a", "b.csv", "link", "dangling", "hard", "folder", "folder/x", "none/x", "-", "/dev/stdout",
         "/dev/stderr", "/dev/fd/1", "/dev/null", "/dev/full", "plate.model", ".", "", "x" * 300, "n\x07\n",
         "frames/frame-00001.png", "shape.svg", "shape.DXF", "shape.stl", "field.vtu", "field.vtk", "--steps"]
MODELS = ["plate.model", "plate.model", "plate.model", "cut.model", "empty.model", "odd.model", "-", "/dev/null",
          "folder", "none.model", "/dev/stdin"]
VALUES = {
    "--steps": ["0", "1", "2", "7"] + NUMBERS[:3] + NUMBERS[5:12],
    "--volume-fraction": ["0.5", "0.9", "0.05", "1", "0.999"] + NUMBERS,
    "--stress-target": NUMBERS,
    "--epsilon": ["5", "10", "11", "-3"] + NUMBERS,
    "--lambda": ["0.1", "0.5", "1", "2"] + NUMBERS,
    "--jobs": ["1", "2", "300"] + NUMBERS,
    "--resume": NAMES,
    "--load-case": MODELS,
    "--map": ["stress", "potential", "model", "colours", ""],
    "--size": ["2x2", "1x1", "64x48", "3000x2", "2x3000", "16384x2", "99999x9", "x", "64", "-5x5", "0x0"],
    "--range": ["0,9", "9,0", "-1e300,1e300", "-3e38,3e38", "1,1.0000000001", "0", ",", "nan,1"],
    "--outline-format": ["svg", "dxf", "stl", "pdf"],
    "--smooth-edges": ["design", "all", "some"],
}
FILES = ["--save", "--json", "--course", "--history", "--cells", "--nodes", "--image", "--frames", "--outline",
         "--vtu"]
FLAGS = ["--check", "--quiet", "--strict", "--until-steady", "--fit", "--label", "--no-grid", "--smooth",
         "--no-keep", "--drop-loose", "--help", "--version", "--none"]


def command(chance):
    """Returns the arguments of a random command line."""
    line = [chance.choice(MODELS)] if chance.random() < 0.95 else []
    for _ in range(chance.choice([0, 1, 2, 2, 2, 3, 5, 9])):
        option = chance.choice(list(VALUES) + 2 * FILES + FLAGS)
        line.append(option)
        if option in FLAGS or chance.random() < 0.02:
            continue
        line.append(chance.choice(VALUES.get(option, NAMES)))
    if "--until-steady" in line or any(option in line for option in ("--frames",)):
        line += ["--steps", "5"] * (line.count("--steps") == 0)
    return [part.encode("latin-1") for part in line]


def prepare(folder, plate):
    """Creates the files and folders that the names refer to."""
    (folder / "plate.model").write_bytes(plate)
    (folder / "cut.model").write_bytes(plate[:len(plate) // 2])
    (folder / "empty.model").write_bytes(b"")
    lines = plate.split(b"\r\n")
    lines[4] = b"-1,0.9,1e300"
    (folder / "odd.model").write_bytes(b"\r\n".join(lines))
    (folder / "folder").mkdir()
    (folder / "link").symlink_to("plate.model")
    (folder / "dangling").symlink_to("later")
    os.link(folder / "plate.model", folder / "hard")


def fault(run, folder, line):
    """Returns what is wrong with a run that has ended, or an empty text."""
    told = run.stderr.decode(errors="replace")
    if run.returncode not in STATUSES:
        return f"exit status {run.returncode}"
    if "Sanitizer" in told or "runtime error" in told:
        return "a sanitizer's report"
    if run.returncode in (1, 2) and not told and not run.stdout:
        return "no message"
    if b"/dev/stderr" not in line and any(ord(c) < 32 and c != "\n" for c in told):
        return "control characters"
    if list(folder.rglob("*.part")):
        return "a leftover .part"
    return ""


def main():
    program = os.path.abspath(sys.argv[1])
    end = time.monotonic() + float(sys.argv[2] if len(sys.argv) > 2 else 600)
    seed = int(sys.argv[3] if len(sys.argv) > 3 else time.time())
    chance = random.Random(seed)
    seeds = pathlib.Path(__file__).resolve().parent.parent / "fuzz/seeds"  # small, so runs are short
    plate = (seeds / "cantilever.model").read_bytes()
    runs, findings, statuses = 0, 0, {}
    while time.monotonic() < end:
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            prepare(folder, plate)
            line = command(chance)
            try:
                run = subprocess.run([program, *line], cwd=folder, capture_output=True, timeout=LONGEST,
                                     input=plate, check=False)
                what = fault(run, folder, line)
                told = run.stderr.decode(errors="replace")
                statuses[run.returncode] = statuses.get(run.returncode, 0) + 1
            except subprocess.TimeoutExpired:
                what, told = f"still running after {LONGEST} s", ""
        runs += 1
        if what:
            findings += 1
            print(f"{what}: {line}\n{told[:2000]}", flush=True)
    print(f"seed {seed}: {runs} runs, {findings} findings, exit statuses {dict(sorted(statuses.items()))}")
    return findings > 0


if __name__ == "__main__":
    sys.exit(main())
