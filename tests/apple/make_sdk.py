#!/usr/bin/env python3
"""Makes a folder that compilers and linkers take for an SDK of Apple's, out of the declarations in sdk/.

    tests/apple/make_sdk.py FOLDER

The stub libraries define what the headers declare and what runtime_symbols.txt lists. That of the C++ library
defines what LLVM's own on this machine exports, since both have one interface. usr/bin holds links to LLVM's tools,
which everything else here uses.
"""
import json
import re
import shutil
import subprocess
import sys
from pathlib import Path

SOURCE = Path(__file__).resolve().parent / "sdk"
# Packages whose headers the sources include.
PACKAGES = ["rapidxml", "hwy", "CLI", "polyclipping", "expat.h", "expat_external.h", "libdeflate.h", "spng.h"]
# The libraries that linking a framework brings along.
REEXPORTED = {"Foundation": ["/usr/lib/libobjc.A.dylib",
                             "/System/Library/Frameworks/CoreFoundation.framework/CoreFoundation"]}
TARGETS = ["arm64-ios", "arm64-ios-simulator", "x86_64-ios-simulator", "arm64-macos"]
LLVM = Path("/usr/lib/llvm-19")
TOOLS = ["clang", "clang++", "clang-installapi", "ld64.lld", "llvm-ar", "llvm-install-name-tool", "llvm-libtool-darwin",
         "llvm-nm", "llvm-ranlib"]


def statements(header):
    """The declarations of a header: no comments, directives, inline functions or bodies."""
    text = re.sub(r"//[^\n]*|/\*.*?\*/", "", header.read_text(), flags=re.S)
    text = re.sub(r"^#(?:[^\n]*\\\n)*[^\n]*", "", text, flags=re.M)
    text = re.sub(r"@(?:interface|protocol)\b.*?@end|__(?:BEGIN|END)_DECLS", "", text, flags=re.S)
    text = re.sub(r"CF_EXTERN_C_(?:BEGIN|END)|NS_ASSUME_NONNULL_(?:BEGIN|END)", "", text)
    text = re.sub(r"(?:CG_INLINE|static inline)[^{]*\{.*?\n\}", "", text, flags=re.S)
    text = re.sub(r"\{[^{}]*\}", "", re.sub(r"\{[^{}]*\}", "", text))
    return [statement.strip() for statement in text.split(";")]


def symbols(header):
    """The functions and variables that a header declares, as the linker names them."""
    text = header.read_text()
    macros = set(re.findall(r"^#define (\w+)\(", text, flags=re.M))
    for statement in statements(header):
        if statement.startswith(("typedef", "struct", "@", "enum")) or not statement:
            continue
        function = re.search(r"(\w+)\(", re.sub(r"__attribute__\(\(.*?\)\)\)?", "", statement))
        variable = re.search(r"(\w+)$", statement)
        if function and function.group(1) in macros:
            # Some declare functions for three types at once: F adds the suffix of a type to a name.
            names = re.findall(r"\bF\((\w+)\)", text)
            if not names:
                sys.exit(f"{header}: cannot tell which functions {function.group(1)} declares")
            yield from ("_" + name + suffix for name in names for suffix in ("", "f", "l"))
        elif function or "extern" in statement.lower():
            yield "_" + (function or variable).group(1)


def classes(header):
    return sorted(set(re.findall(r"^@interface (\w+)(?!.*\(NS)", header.read_text(), flags=re.M)))


def runtime_symbols():
    found, name = {}, None
    for line in (SOURCE / "runtime_symbols.txt").read_text().splitlines():
        if match := re.fullmatch(r"\[(.*)\]", line):
            name = match.group(1)
        elif line and not line.startswith("#"):
            found.setdefault(name, set()).add(line)
    return found


def exports(library):
    listed = subprocess.run([LLVM / "bin/llvm-nm", "-D", "--defined-only", "--format=just-symbols", library],
                            stdout=subprocess.PIPE, text=True, check=True).stdout
    return {"_" + line.split("@")[0] for line in listed.split()}


def write_stub(path, install_name, names, objc_classes=(), reexported=()):
    def quoted(items):
        return "[ " + ", ".join(f"'{item}'" for item in sorted(items)) + " ]"

    targets = quoted(TARGETS)
    text = f"--- !tapi-tbd\ntbd-version: 4\ntargets: {targets}\ninstall-name: '{install_name}'\n"
    if reexported:
        text += f"reexported-libraries:\n  - targets: {targets}\n    libraries: {quoted(reexported)}\n"
    text += f"exports:\n  - targets: {targets}\n    symbols: {quoted(names)}\n"
    if objc_classes:
        text += f"    objc-classes: {quoted(objc_classes)}\n"
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text + "...\n")


def main():
    if len(sys.argv) != 2 or sys.argv[1].startswith("-"):
        print(__doc__, file=sys.stderr)
        return 2
    sdk = Path(sys.argv[1])
    if sdk.exists() and not (sdk / "SDKSettings.json").exists():
        sys.exit(f"{sdk} is there already and is no SDK; name another folder, or remove it first")
    shutil.rmtree(sdk, ignore_errors=True)
    shutil.copytree(SOURCE / "usr", sdk / "usr")
    (sdk / "SDKSettings.json").write_text(json.dumps({"Version": "18.0", "MaximumDeploymentTarget": "18.99"}))

    (sdk / "usr/bin").mkdir()
    for name, tool in [("lipo", "llvm-lipo"), *zip(TOOLS, TOOLS)]:
        if not (LLVM / "bin" / tool).exists():
            sys.exit(f"{LLVM / 'bin' / tool} is missing; ./dev check apple installs the packages")
        (sdk / "usr/bin" / name).symlink_to(LLVM / "bin" / tool)
    # So that the compiler refuses what the C++ library of the oldest system does not have.
    settings = (LLVM / "include/c++/v1/__config_site").read_text()
    (sdk / "usr/include/availability").mkdir()
    (sdk / "usr/include/availability/__config_site").write_text(
        settings.replace("#define _LIBCPP_HAS_NO_VENDOR_AVAILABILITY_ANNOTATIONS", ""))
    local = sdk / "usr/local/include"
    local.mkdir(parents=True)
    for package in PACKAGES:
        (local / package).symlink_to(Path("/usr/include") / package)

    runtime = runtime_symbols()
    for header in sorted((SOURCE / "frameworks").glob("*.h")):
        framework = sdk / f"System/Library/Frameworks/{header.stem}.framework"
        (framework / "Headers").mkdir(parents=True)
        (framework / "Modules").mkdir()
        shutil.copy2(header, framework / "Headers")
        (framework / "Modules/module.modulemap").write_text(
            f'framework module {header.stem} [system] {{\n  umbrella header "{header.name}"\n  export *\n}}\n')
        write_stub(framework / f"{header.stem}.tbd",
                   f"/System/Library/Frameworks/{header.stem}.framework/{header.stem}",
                   set(symbols(header)) | runtime.get(header.stem, set()),
                   [name for name in classes(header) if name != "NSObject"],
                   REEXPORTED.get(header.stem, []))

    system = set(runtime["libSystem"])
    for header in (SOURCE / "usr/include").rglob("*.h"):
        system |= set(symbols(header))
    write_stub(sdk / "usr/lib/libSystem.tbd", "/usr/lib/libSystem.B.dylib", system)
    for name in ("c", "m", "pthread"):
        shutil.copy(sdk / "usr/lib/libSystem.tbd", sdk / f"usr/lib/lib{name}.tbd")
    write_stub(sdk / "usr/lib/libobjc.A.tbd", "/usr/lib/libobjc.A.dylib", runtime["libobjc"], ["NSObject"])
    cxx = exports(LLVM / "lib/libc++.so.1") | exports(LLVM / "lib/libc++abi.so.1")
    write_stub(sdk / "usr/lib/libc++.tbd", "/usr/lib/libc++.1.dylib", cxx)
    return 0


if __name__ == "__main__":
    sys.exit(main())
