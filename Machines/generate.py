#!/usr/bin/env python3
"""Writes the machine files of this folder, or checks them.

    generate.py            write every file
    generate.py --check    the files are what would be written, are valid and obey their physics; so do
                           the examples of docs/machine-files.md, which names every machine
"""

import argparse
import re
import sys
from pathlib import Path

sys.dont_write_bytecode = True

from generator import contract, machines, physics  # noqa: E402
from generator.writer import document  # noqa: E402

FOLDER = Path(__file__).resolve().parent
GUIDE = FOLDER.parent / "docs" / "machine-files.md"


def text_problems(name, text):
    """Problems of one machine file's text; `name` without extension, or None for an example."""
    try:
        machine = contract.parse(text)
    except ValueError as error:
        return [str(error)]
    problems = contract.problems_of(machine)
    if problems:
        return problems
    return machines.problems_of(name, machine) if name else physics.Physics(machine).run()


def folder_problems():
    expected = {name + ".json": document(build()) for name, build in machines.BUILDERS.items()}
    for path in sorted(FOLDER.glob("*.json")):
        if path.name not in expected:
            yield path.name, "no machine of this generator"
    for name, text in expected.items():
        path = FOLDER / name
        if not path.exists():
            yield name, "missing"
            continue
        found = path.read_text(encoding="utf-8")
        if found != text:
            yield name, "is not what generate.py writes; run it"
        for problem in text_problems(path.stem, found):
            yield name, problem


def guide_problems():
    guide = GUIDE.read_text(encoding="utf-8")
    for name in machines.BUILDERS:
        if f"`{name}`" not in guide:
            yield GUIDE.name, f"does not name {name}"
    examples = [
        text
        for text in re.findall(r"^```json\n(.*?)^```", guide, re.M | re.S)
        if '"frames"' in text
    ]
    if len(examples) < 2:
        yield GUIDE.name, "has fewer than two complete examples"
    for number, text in enumerate(examples, 1):
        for problem in text_problems(None, text):
            yield f"{GUIDE.name}, example {number}", problem


def main():
    parser = argparse.ArgumentParser(description="Writes the machine files of this folder.")
    parser.add_argument("--check", action="store_true", help="write nothing; check what is there")
    if parser.parse_args().check:
        problems = [*folder_problems(), *guide_problems()]
        for place, problem in problems:
            print(f"{place}: {problem}", file=sys.stderr)
        return 1 if problems else 0
    for name, build in machines.BUILDERS.items():
        (FOLDER / (name + ".json")).write_text(document(build()), encoding="utf-8")
    return 0


if __name__ == "__main__":
    sys.exit(main())
