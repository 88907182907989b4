#!/usr/bin/env python3
"""Checks an asset catalogue: every description against the schema, and every file against its description.

    check_catalogue.py SCHEMA CATALOGUE

Prints each fault on a line and exits with 1 when there is one.
"""
import json
import sys
from pathlib import Path

from jsonschema import Draft202012Validator


def faults(schema, catalogue):
    Draft202012Validator.check_schema(schema)
    for folder in [catalogue, *(path for path in sorted(catalogue.rglob("*")) if path.is_dir())]:
        description = folder / "Contents.json"
        if not description.is_file():
            yield f"{folder} has no description"
            continue
        contents = json.loads(description.read_text())
        is_set = folder.suffix == ".imageset"
        kind = {"$ref": "#/$defs/" + ("imageSet" if is_set else "folder"), "$defs": schema["$defs"]}
        for error in Draft202012Validator(kind).iter_errors(contents):
            yield f"{description}: {error.json_path}: {error.message}"
        listed = [image["filename"] for image in contents.get("images", [])]
        present = [path.name for path in folder.iterdir() if path.is_file() and path != description]
        if sorted(listed) != sorted(present):
            yield f"{folder} lists {listed} and holds {present}"
        if is_set and any(path.is_dir() for path in folder.iterdir()):
            yield f"{folder} holds a folder"


def main():
    found = list(faults(json.loads(Path(sys.argv[1]).read_text()), Path(sys.argv[2])))
    print("\n".join(found) if found else "sound")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
