#!/usr/bin/env python3
"""Puts frameworks together as Xcode's `xcodebuild -create-xcframework` does, for systems without Xcode.

    apple/make_xcframework.py OUTPUT.xcframework FRAMEWORK...

The platform of each framework is read from its Info.plist, the processors from its binary with the program lipo, for
which LLVM's llvm-lipo will do. An earlier OUTPUT.xcframework is replaced.
"""
import plistlib
import shutil
import subprocess
import sys
from pathlib import Path


def describe(framework):
    info = plistlib.loads((framework / "Info.plist").read_bytes())
    binary = framework / info["CFBundleExecutable"]
    lipo = shutil.which("lipo") or shutil.which("llvm-lipo")
    if not lipo:
        sys.exit("lipo was not found: install LLVM, or name its folder in PATH")
    architectures = sorted(subprocess.run([lipo, "-archs", binary], stdout=subprocess.PIPE, text=True,
                                          check=True).stdout.split())
    is_simulator = info["CFBundleSupportedPlatforms"] == ["iPhoneSimulator"]
    entry = {
        "BinaryPath": f"{framework.name}/{binary.name}",
        "LibraryIdentifier": f"ios-{'_'.join(architectures)}" + ("-simulator" if is_simulator else ""),
        "LibraryPath": framework.name,
        "SupportedArchitectures": architectures,
        "SupportedPlatform": "ios",
    }
    if is_simulator:
        entry["SupportedPlatformVariant"] = "simulator"
    return entry


def main():
    if len(sys.argv) < 3 or not sys.argv[1].endswith(".xcframework"):
        print(__doc__, file=sys.stderr)
        return 2
    output, frameworks = Path(sys.argv[1]), [Path(argument) for argument in sys.argv[2:]]
    for framework in frameworks:
        if not (framework / "Info.plist").is_file():
            sys.exit(f"{framework} is no framework for iOS: it has no Info.plist; see ./dev xcframework")
    entries = [describe(framework) for framework in frameworks]
    if len({entry["LibraryIdentifier"] for entry in entries}) < len(entries):
        sys.exit("two frameworks are for the same system and processors; join them with lipo, or leave one out")
    # The old result stays until the new one is whole.
    new = output.with_suffix(".new")
    shutil.rmtree(new, ignore_errors=True)
    for framework, entry in zip(frameworks, entries):
        shutil.copytree(framework, new / entry["LibraryIdentifier"] / framework.name)
    (new / "Info.plist").write_bytes(plistlib.dumps({
        "AvailableLibraries": entries,
        "CFBundlePackageType": "XFWK",
        "XCFrameworkFormatVersion": "1.0",
    }))
    shutil.rmtree(output, ignore_errors=True)
    new.rename(output)
    return 0


if __name__ == "__main__":
    sys.exit(main())
