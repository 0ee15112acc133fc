#!/usr/bin/env python3
"""Compares each file's includes with the modules that its own module uses.

check_includes.py SOURCE_DIR MODULES_TXT

All modules share one include root, so the compiler would find any header: this check is what keeps the layers.
"""
import os
import re
import sys

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.M)
LAYERS = ["plain", "core", "gui", "widgets"]
WIDGET_HEADERS = re.compile(r"^(QtWidgets/|QtPrintSupport/|Q[A-Z]\w*(Widget|Dialog|Button|View|Layout|Box|Window|Menu|Edit|Splitter|Slider)$|QApplication$)")
GUI_HEADERS = re.compile(r"^(QtGui/|QtSvg/|Q(Image|Painter|Color|Font|Pixmap|GuiApplication|Icon|Brush|Pen)$)")
ANY_QT = re.compile(r"^(Q[A-Z]|Qt)")


def layer_of_system_header(name):
    if WIDGET_HEADERS.match(name):
        return 3
    if GUI_HEADERS.match(name):
        return 2
    return 1 if ANY_QT.match(name) else 0


def read_modules(path):
    modules, owner = {}, {}
    for line in filter(None, open(path, encoding="utf-8").read().splitlines()):
        name, layer, uses, files = line.split("|")
        modules[name] = (LAYERS.index(layer), [u for u in uses.split(",") if u])
        for file in files.split(","):
            owner[file] = name
    return modules, owner


def reachable(modules, name):
    seen, todo = set(), [name]
    while todo:
        for used in modules[todo.pop()][1]:
            if used in modules and used not in seen:
                seen.add(used)
                todo.append(used)
    return seen | {name}


def faults(source_dir, modules, owner):
    for file, module in sorted(owner.items()):
        allowed = reachable(modules, module)
        text = open(os.path.join(source_dir, file), encoding="utf-8").read()
        for kind, included in INCLUDE.findall(text):
            if kind == "<":
                if layer_of_system_header(included) > modules[module][0]:
                    yield f"{file}: <{included}> is above the layer of {module}"
                continue
            if os.path.basename(included) == included and not os.path.exists(os.path.join(source_dir, included)):
                if included.endswith(".moc") or included.startswith("moc_"):
                    continue
                yield f"{file}: \"{included}\" is not written from the project's root"
            elif included not in owner:
                yield f"{file}: \"{included}\" belongs to no module"
            elif owner[included] not in allowed:
                yield f"{file}: \"{included}\" is in {owner[included]}, which {module} does not use"


def main():
    modules, owner = read_modules(sys.argv[2])
    found = list(faults(sys.argv[1], modules, owner))
    print("\n".join(found) or f"{len(owner)} files of {len(modules)} modules keep to their layers")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
