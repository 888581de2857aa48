#!/usr/bin/env python3
"""Checks the rules of the house: who may include whom, no circles, no widgets in the window-free half, one format.

Prints one line per fault, `FILE:LINE: what is wrong`, and exits with 1 when there is any."""
import re
import shutil
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
ALLOWED = {
    "exchange": {"exchange"},
    "engines": {"engines", "exchange"},
    "platform": {"platform", "exchange"},
    "programs": {"programs", "platform", "exchange"},
    "cli": {"cli", "programs", "platform", "engines", "exchange"},
    "shell": {"shell", "programs", "platform"},
}
# Engines are plain C++: standard library, SuiteSparse and SQLite. Exchange takes the standard library only.
ENGINE_LIBRARIES = re.compile(r"^(klu|amd|colamd|btf|sqlite3|SuiteSparse_config|cs)\.h$")
WIDGETS = re.compile(r"^(QtWidgets/|QWidget|QDialog|QApplication$|QMainWindow|QTable|QPushButton|QMessageBox|QProgressDialog"
                     r"|QComboBox|QLineEdit|QLabel$|QMenu|QGraphics|QPrint)")
INCLUDE = re.compile(r'^\s*#\s*include\s*(["<])([^">]+)[">]')
TABOO = re.compile(r"\bspec\.md\b|\bthe spec(ification)?\b|\bspec-annex\b|\bPart [1-7]\.[0-9]|\bannex [A-H]\b|\bH ?\d{1,3}\b(?= (of|in) the)", re.I)
MACHINE_PATH = re.compile(r"(^|[^A-Za-z0-9_.$}])/(work|root|farm|home/[a-z])/")


def tracked():
    """Files of the tree as git would commit them."""
    out = subprocess.run(["git", "ls-files", "--cached", "--others", "--exclude-standard"], cwd=ROOT, capture_output=True,
                         text=True, check=True).stdout.split("\n")
    return [ROOT / f for f in out if f and (ROOT / f).is_file()]


def includes(path):
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        found = INCLUDE.match(line)
        if found:
            yield number, found.group(1), found.group(2)


def check_include(path, room, number, kind, target, faults):
    where = f"{path.relative_to(ROOT)}:{number}"
    first = target.split("/")[0]
    if kind == '"' and first in ALLOWED and room in ALLOWED and first not in ALLOWED[room]:
        faults.append(f"{where}: {room} may not include {first}")
    if kind == '"' and "/" not in target and not (ROOT / target).exists() and not target.endswith(".moc"):
        faults.append(f"{where}: include by the full path from the root")
    if room in ("exchange", "engines") and kind == "<":
        if re.match(r"^Q[A-Z]", target) or target.startswith("Qt"):
            faults.append(f"{where}: {room} knows no Qt")
        elif target.endswith(".h") and not (room == "engines" and ENGINE_LIBRARIES.match(target)) \
                and target not in ("fcntl.h", "unistd.h"):
            faults.append(f"{where}: {room} does not use {target}")
    windows = path.name.startswith(("WinDlg", "WinDLg")) or path.parent.name in ("ui", "diagram", "recordform")
    if room in ("platform", "programs", "cli") and not windows and WIDGETS.match(target):
        faults.append(f"{where}: widgets belong into windows")


def check_circles(graph, faults):
    state, stack = {}, []

    def visit(node):
        state[node] = 1
        stack.append(node)
        for other in graph.get(node, ()):
            if state.get(other) == 1:
                circle = stack[stack.index(other):] + [other]
                faults.append(f"{node}:1: include circle {' -> '.join(circle)}")
            elif other not in state:
                visit(other)
        stack.pop()
        state[node] = 2

    for node in sorted(graph):
        if node not in state:
            visit(node)


def check_words(files, faults):
    for path in files:
        if path.suffix in (".png", ".zip", ".csv") or path.name in ("LICENSE", "check_house.py"):
            continue
        try:
            text = path.read_text(encoding="utf-8")
        except UnicodeDecodeError:
            continue
        for number, line in enumerate(text.splitlines(), 1):
            if TABOO.search(line) or MACHINE_PATH.search(line):
                faults.append(f"{path.relative_to(ROOT)}:{number}: words that do not belong here: {line.strip()[:80]}")


def check_format(sources, faults):
    tool = shutil.which("clang-format")
    if not tool:
        print("check_house: clang-format is not installed, the format is not checked")
        return
    done = subprocess.run([tool, "--dry-run", "-Werror", *map(str, sources)], capture_output=True, text=True)
    for line in done.stderr.splitlines():
        if "error:" in line:
            faults.append(line.replace(str(ROOT) + "/", ""))


def main():
    sys.setrecursionlimit(10000)
    faults, graph = [], {}
    files = tracked()
    sources = [f for f in files if f.suffix in (".cpp", ".h")]
    for path in sources:
        relative = path.relative_to(ROOT)
        room = relative.parts[0]
        for number, kind, target in includes(path):
            check_include(path, room, number, kind, target, faults)
            if kind == '"' and (ROOT / target).exists():
                graph.setdefault(str(relative), set()).add(target)
    check_circles(graph, faults)
    check_words(files, faults)
    check_format(sources, faults)
    for fault in faults:
        print(fault)
    print(f"check_house: {len(sources)} sources, {len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
