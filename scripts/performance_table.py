#!/usr/bin/python3
"""Prints tables in Markdown that compare the time of steps with library solvers on the same systems.

Usage: performance_table.py [repetitions, default 3]
The first table has whole optimizations of the example sketches, in shipped size and finer: our whole
step where it changes the layout, against factorization and solution alone by the libraries. The second
has single plates. All run on one core, interleaved; the smallest processor time of the repetitions counts.
"""
import json
import os
import subprocess
import sys

from lib.examples import ROOT
from lib.markdown_table import table

SHIPPED = ["bridge", "two-bar-truss", "cantilever", "bolted-lever", "half-mbb-beam", "l-bracket"]
COURSES = [f"{name}:1" for name in SHIPPED]
COURSES += [f"{name}:{k}" for name, k in zip(SHIPPED, (3, 3, 4, 3, 4, 4))]
COURSES += ["cantilever:5"]  # towards 32767 equations
COURSE_LIBRARIES = {"ldlt": "sparse LDLT", "llt": "sparse LLT", "cholmod": "supernodal LLT"}

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


def on_one_core(command):
    core = {max(os.sched_getaffinity(0))}
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                          preexec_fn=lambda: os.sched_setaffinity(0, core)).stdout


def courses(program, repetitions):
    rows = []
    for line in on_one_core([program, str(repetitions), *COURSES]).splitlines():
        run = json.loads(line)
        name = run["example"] + (f", refined {run['refinement']}" if run["refinement"] > 1 else "")
        per_iteration = 1000 * run["ours"] / run["iterations"]
        rows.append([name, f"{run['equations']:.0f}", f"{run['iterations']:.0f}",
                     f"{run['changed']} of {run['steps']}", f"{run['ours']:.2f}",
                     f"{per_iteration:.1f}", f"{1000 * per_iteration / run['equations']:.1f}"]
                    + [f"{run[key]:.2f}" if run[key] < 1e4 else "-" for key in COURSE_LIBRARIES]
                    + [f"{run['fastest']:.2f}", f"{run['fastest'] / run['ours']:.2f}"])
    titles = ["example", "equations", "iterations", "changed layouts", "our step, ms",
              "us per iteration", "ns per iteration and equation"]
    titles += [f"{name}, ms" for name in COURSE_LIBRARIES.values()]
    return table(titles + ["fastest, ms", "fastest library / step"], rows)


def plates(program, repetitions):
    command = [program, f"--benchmark_repetitions={repetitions}", "--benchmark_format=json",
               "--benchmark_min_time=0.05", "--benchmark_enable_random_interleaving=true"]
    times, counters = {}, {}
    for run in json.loads(on_one_core(command))["benchmarks"]:
        if run["run_type"] != "iteration" or run.get("error_occurred"):
            continue
        name = run["run_name"]
        times[name] = min(times.get(name, float("inf")), run["cpu_time"] / 1000)
        counters[name] = run
    rows = []
    for layout, title in LAYOUTS.items():
        step = times[f"Step/{layout}"]
        libraries = [times.get(f"{name}/{layout}", float("inf")) for name in LIBRARIES]
        cells = [title, f"{counters[f'Step/{layout}']['equations']:.0f}",
                 f"{counters[f'Step/{layout}']['iterations']:.0f}", f"{step:.2f}",
                 f"{times[f'PlainStep/{layout}']:.2f}"]
        cells += [f"{time:.2f}" for time in libraries] + [f"{min(libraries) / step:.1f}"]
        rows.append(cells)
    titles = ["cells", "equations", "iterations", "step, ms", "plain step, ms"]
    titles += [f"{title}, ms" for title in LIBRARIES.values()] + ["fastest library / step"]
    return table(titles, rows)


def main():
    repetitions = int(sys.argv[1]) if len(sys.argv) > 1 else 3
    subprocess.run([ROOT / "scripts/build_benchmarks.sh", "course_bench", "solver_bench"],
                   check=True, stdout=sys.stderr)
    folder = ROOT / "build/release/bench"
    print(courses(folder / "course_bench", repetitions), end="\n\n")
    print(plates(folder / "solver_bench", repetitions))


if __name__ == "__main__":
    main()
