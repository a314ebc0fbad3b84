"""Makes the models of the examples for the scripts and runs quillane-batch on them.

Takes the program from QUILLANE_BATCH or from the release build, which also has quillane-make-examples.
"""

import json
import os
import subprocess
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
PROGRAM = os.environ.get("QUILLANE_BATCH", ROOT / "build/release/src/batch/quillane-batch")
MAKE_EXAMPLES = ROOT / "build/release/examples/quillane-make-examples"
IMAGES = ROOT / "docs/images"
LOOK = ("--fit", "--no-grid", "--size", "900x600")


def make(folder, start, refinement, *names):
    """Writes the models of the named examples, or of all, into the folder and returns it."""
    folder.mkdir(exist_ok=True)
    subprocess.run([MAKE_EXAMPLES, folder, start, str(refinement), *names], check=True)
    return folder


def run(models, *options):
    """Returns the summary of a run of the first model with the others as load cases."""
    others = [word for model in models[1:] for word in ("--load-case", model)]
    output = subprocess.run([PROGRAM, models[0], *others, "--quiet", "--json", "-", *options],
                            check=True, capture_output=True, text=True).stdout
    return json.loads(output)
