#!/usr/bin/env python3
"""Fails when a file under src/ includes a folder its library may not use.

The allowed folders of each core library are its link list in src/CMakeLists.txt
(set(AMPORA_LAYER_USES_<folder> ...)); a folder may always include itself. The programs on
top, cli and ui, may include any core folder; ui never includes cli, and of cli only the
report helper program, which draws with the window's code, includes ui.
"""
import pathlib
import re
import sys

src = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else pathlib.Path(__file__).parent.parent / "src")
cmake = (src / "CMakeLists.txt").read_text()
layers = re.search(r"set\(AMPORA_CORE_LAYERS ([^)]*)\)", cmake).group(1).split()
uses = {layer: {layer} for layer in layers}
for layer, used in re.findall(r"set\(AMPORA_LAYER_USES_(\w+) ([^)]*)\)", cmake):
    uses[layer] |= set(used.split())
uses["cli"] = set(layers) | {"cli"}
uses["ui"] = set(layers) | {"ui"}

wrong = []
for path in sorted(src.rglob("*")):
    if path.suffix not in (".h", ".cpp"):
        continue
    folder = path.relative_to(src).parts[0]
    allowed = set(uses.get(folder, ()))
    if path.relative_to(src).parts[:2] == ("cli", "report_helper") or path.name.startswith("report_helper"):
        allowed.add("ui")
    for number, line in enumerate(path.read_text(errors="replace").splitlines(), 1):
        match = re.match(r'\s*#\s*include\s*"(\w+)/', line)
        if match and (src / match.group(1)).is_dir() and match.group(1) not in allowed:
            wrong.append(f"{path.relative_to(src)}:{number}: {folder} may not include {match.group(1)}/")

print("\n".join(wrong) if wrong else f"every include of {src} runs down its layers")
sys.exit(1 if wrong else 0)
