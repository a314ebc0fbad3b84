#!/usr/bin/env python3
"""Prints how long one optimization step takes beside library solvers on the same systems.

Usage: performance_table.py [path of solver_bench] [repetitions]
Each time is the smallest processor time of the repetitions, which run interleaved in one process on
one core; the step is everything from a new layout to its stresses, the libraries' times are their
factorization and solution alone.
"""
import json
import os
import subprocess
import sys
from pathlib import Path

from markdown_table import table

ROOT = Path(__file__).resolve().parent.parent

LAYOUTS = {
    "20/20/0": "20 x 20",
    "40/20/0": "40 x 20",
    "63/63/0": "63 x 63",
    "127/126/0": "127 x 126",
    "127/126/1": "127 x 126, a third optimized away",
    "127/126/2": "127 x 126, a third cut out as holes",
}
LIBRARIES = {
    "EigenLDLT": "sparse LDLT",
    "EigenLLT": "sparse LLT",
    "EigenIncompleteCholeskyCG": "IC CG",
    "EigenJacobiCG": "Jacobi CG",
}


def measure(program, repetitions):
    """Smallest time in ms, and the counters, of every benchmark."""
    command = [program, f"--benchmark_repetitions={repetitions}", "--benchmark_format=json",
               "--benchmark_min_time=0.05", "--benchmark_enable_random_interleaving=true"]
    core = {min(os.sched_getaffinity(0))}
    output = subprocess.run(command, check=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                            preexec_fn=lambda: os.sched_setaffinity(0, core)).stdout
    times, counters = {}, {}
    for run in json.loads(output)["benchmarks"]:
        if run["run_type"] != "iteration" or run.get("error_occurred"):
            continue
        name = run["run_name"]
        times[name] = min(times.get(name, float("inf")), run["cpu_time"] / 1000)
        counters[name] = run
    return times, counters


def build():
    """Builds solver_bench and returns its path."""
    subprocess.run([ROOT / "scripts/build_benchmarks.sh", "solver_bench"], check=True,
                   stdout=sys.stderr)
    return ROOT / "build/release/bench/solver_bench"


def main():
    program = sys.argv[1] if len(sys.argv) > 1 else build()
    times, counters = measure(program, int(sys.argv[2]) if len(sys.argv) > 2 else 5)
    titles = ["cells", "equations", "iterations", "step, ms", "plain step, ms"]
    titles += [f"{title}, ms" for title in LIBRARIES.values()] + ["fastest library / step"]
    rows = []
    for layout, title in LAYOUTS.items():
        step = times[f"Step/{layout}"]
        libraries = [times.get(f"{name}/{layout}", float("inf")) for name in LIBRARIES]
        cells = [title, f"{counters[f'Step/{layout}']['equations']:.0f}",
                 f"{counters[f'Step/{layout}']['iterations']:.0f}", f"{step:.2f}",
                 f"{times[f'PlainStep/{layout}']:.2f}"]
        cells += [f"{time:.2f}" for time in libraries] + [f"{min(libraries) / step:.1f}"]
        rows.append(cells)
    print(table(titles, rows))


if __name__ == "__main__":
    main()
