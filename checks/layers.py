#!/usr/bin/env python3
"""Checks that includes point down: every folder may include only itself and the folders listed for it.

    checks/layers.py [ROOT]

Prints each include that breaks a rule as FILE:LINE: message, and exits with 1 when there is one.
"""
import re
import sys
from pathlib import Path

# What each folder may include, besides itself and the headers of the system and of libraries.
CORE_MODEL = {"include/Ozmira", "include/Ozmira/SVG"}
APPLE = {
    "platform/include/CoreGraphics",
    "platform/include/CoreFoundation",
}
APPLE_OBJC = APPLE | {
    "platform/include",
    "platform/include/CoreImage",
    "platform/include/Foundation",
    "platform/include/UIKit",
    "platform/include/dispatch",
    "platform/include/objc",
}

DRAWING = APPLE | {"support"}


def below(root, *folders):
    return {f"{root}/{folder}" for folder in folders}


CG = "platform/coregraphics"
CONFORM_MODEL = {"include/OzmiraConform"}
TOOL = "tools/ozmira"
ALLOWED = {
    # The public headers, and the stand-ins for Apple's.
    "include/Ozmira": CORE_MODEL | APPLE_OBJC,
    "include/Ozmira/SVG": CORE_MODEL,
    "platform/include/CoreFoundation": set(),
    "platform/include/CoreGraphics": {"platform/include/CoreFoundation"},
    "platform/include/CoreImage": APPLE_OBJC,
    "platform/include/Foundation": APPLE_OBJC,
    "platform/include/UIKit": APPLE_OBJC,
    "platform/include/dispatch": set(),
    "platform/include/objc": {"platform/include"},
    "platform/include": set(),
    # What every layer may use; it knows neither SVG nor drawing.
    "support": set(),
    # The parser and the document model.
    "core/numbers": CORE_MODEL,
    "core/memory": CORE_MODEL | {"support"},
    "core/references": CORE_MODEL,
    "core/path_data": CORE_MODEL | {"support"} | below("core", "numbers"),
    "core/svg": CORE_MODEL | below("core", "numbers", "path_data"),
    "core": CORE_MODEL | below("core", "numbers", "memory", "references", "path_data", "svg"),
    # The drawing library.
    f"{CG}/base": DRAWING,
    f"{CG}/values": DRAWING | below(CG, "base"),
    f"{CG}/path": DRAWING | below(CG, "base", "values"),
    f"{CG}/stroke": DRAWING | below(CG, "base", "values", "path"),
    f"{CG}/raster": DRAWING | below(CG, "base", "values", "path", "stroke"),
    f"{CG}/image": DRAWING | below(CG, "base", "values"),
    f"{CG}/paint": DRAWING | below(CG, "base", "values", "path", "stroke", "raster", "image"),
    f"{CG}/context": DRAWING | below(CG, "base", "values", "path", "stroke", "raster", "image", "paint"),
    # The stand-ins for Apple's other frameworks.
    "platform/foundation": APPLE_OBJC,
    "platform/dispatch": APPLE_OBJC,
    "platform/coreimage": APPLE_OBJC,
    "platform/uikit": APPLE_OBJC,
    # The renderer uses CoreGraphics through its public headers only.
    "render": CORE_MODEL | APPLE,
    "api": CORE_MODEL | APPLE_OBJC,
    # Checking and rewriting: it knows the parser, and nothing of drawing.
    "include/OzmiraConform": {"include/Ozmira"},
    "conform/base": CORE_MODEL,
    "conform/geometry": CORE_MODEL,
    "conform/source": CORE_MODEL | below("conform", "base"),
    "conform/rules": CONFORM_MODEL | below("conform", "base", "source"),
    "conform/style": CORE_MODEL | below("conform", "base", "geometry", "source"),
    "conform/subset": CORE_MODEL | below("conform", "base", "geometry", "source", "style"),
    "conform/scene": below("conform", "base", "geometry", "source", "style"),
    "conform/split": below("conform", "base", "geometry", "source", "rules", "style", "scene"),
    "conform/resolve": CORE_MODEL
    | below("conform", "base", "geometry", "source", "rules", "style", "subset", "scene", "split"),
    "conform/write": CONFORM_MODEL | below("conform", "base", "geometry", "source", "style", "scene", "split"),
    "conform": CONFORM_MODEL
    | below("conform", "base", "geometry", "source", "rules", "style", "subset", "scene", "split", "resolve", "write"),
    # The command-line tool.
    f"{TOOL}/base": CORE_MODEL,
    f"{TOOL}/files": CORE_MODEL | below(TOOL, "base"),
    f"{TOOL}/picture": CORE_MODEL | APPLE | below(TOOL, "base"),
    f"{TOOL}/report": CORE_MODEL | CONFORM_MODEL | below(TOOL, "base", "files"),
    f"{TOOL}/page": CORE_MODEL | CONFORM_MODEL | below(TOOL, "base", "files", "report"),
    f"{TOOL}/catalogue": CORE_MODEL | CONFORM_MODEL | APPLE | below(TOOL, "base", "files", "picture", "report"),
    f"{TOOL}/compare": CORE_MODEL
    | CONFORM_MODEL
    | APPLE
    | below(TOOL, "base", "files", "picture", "report", "page"),
    f"{TOOL}/commands": CORE_MODEL
    | CONFORM_MODEL
    | APPLE
    | below(TOOL, "base", "files", "picture", "report", "page", "catalogue", "compare"),
    # The module of the npm package.
    "npm/module": CORE_MODEL | CONFORM_MODEL | APPLE | below(TOOL, "base", "commands", "files", "picture", "report"),
    TOOL: below(TOOL, "base", "files", "picture", "report", "page", "catalogue", "compare", "commands"),
}
# The public headers of the parser and the model, which know neither drawing nor Objective-C.
CORE_HEADER = re.compile(r"include/Ozmira/(SVG/)?(ozm|Ozmira(Color|Export|Version)\.h)")
ROOTS = ["core", CG, TOOL, "render", "api", "conform", "npm/module"]
INCLUDE = re.compile(r'^\s*#\s*(?:include|import)\s*([<"])([^>"]+)[>"]')


def resolve(root, file, quote, name):
    """The file of this repository that an include names, or None for headers of the system and of libraries."""
    folders = ["include", "platform/include"]
    if quote == '"':
        folders = [str(file.parent)] + [r for r in ROOTS if str(file).startswith(r + "/")] + ["."]
    for folder in folders:
        if (root / folder / name).is_file():
            return Path(folder) / name
    return None


def violations(root):
    for pattern in ("support", "core", "platform", "render", "api", "conform", "tools", "include", "npm/module"):
        for path in sorted((root / pattern).rglob("*")):
            if path.suffix not in {".h", ".cpp", ".m", ".mm"}:
                continue
            file = path.relative_to(root)
            folder = str(file.parent)
            if folder not in ALLOWED:
                yield f"{file}:1: {folder}/ has no rule; add one to checks/layers.py"
                continue
            for number, line in enumerate(path.read_text().splitlines(), 1):
                match = INCLUDE.match(line)
                if not match:
                    continue
                quote, name = match.groups()
                target = resolve(root, file, quote, name)
                if target is None:
                    if quote == '"':
                        yield f'{file}:{number}: "{name}" is not found from {folder}/ or its component\'s root'
                    continue
                if str(target.parent) != folder and str(target.parent) not in ALLOWED[folder]:
                    yield f"{file}:{number}: {folder}/ must not include {target}"
                is_core = folder.startswith("core") or CORE_HEADER.match(str(file))
                if is_core and str(target).startswith("include/") and not CORE_HEADER.match(str(target)):
                    yield f"{file}:{number}: the core must not include {target}, which belongs to a layer above"


def main():
    root = Path(sys.argv[1]) if len(sys.argv) > 1 else Path(__file__).resolve().parent.parent
    found = list(violations(root))
    print("\n".join(found) if found else "Every include points down.")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
