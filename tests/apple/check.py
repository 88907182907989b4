#!/usr/bin/env python3
"""Checks the framework for iOS, as far as Debian's clang can on Linux.

    tests/apple/check.py SDK FRAMEWORK

SDK is what make_sdk.py has made; FRAMEWORK is Ozmira.framework built for devices.
Prints every fault and exits with 1 when there is one.
"""
import os
import plistlib
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

import listings
import swift_names

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent.parent
IOS, MACOS, VISIONOS = "arm64-apple-ios13.0", "arm64-apple-macos13.4", "arm64-apple-xros1.0"
# What the analyzer looks for: leaks of objects, nulls, and mistakes with Core Foundation.
ANALYZER = ["--analyze", "-Xclang", "-analyzer-output=text",
            "-Xclang", "-analyzer-checker=core,cplusplus,nullability,optin.osx,osx"]
# The functions that Apple wants a reason for, by the categories of the privacy manifest, and one class.
REQUIRED_REASONS = {
    "NSPrivacyAccessedAPICategoryFileTimestamp": {
        "_fgetattrlist", "_fstat", "_fstatat", "_getattrlist", "_getattrlistat", "_getattrlistbulk", "_lstat", "_stat"},
    "NSPrivacyAccessedAPICategorySystemBootTime": {"_mach_absolute_time"},
    "NSPrivacyAccessedAPICategoryDiskSpace": {"_fstatfs", "_fstatvfs", "_statfs", "_statvfs"},
    "NSPrivacyAccessedAPICategoryUserDefaults": {"_OBJC_CLASS_$_NSUserDefaults"},
}
faults = []


def check(condition, fault):
    if not condition:
        faults.append(fault)


def clang(sdk, target, *arguments):
    """The exit code and the messages of a compiler. One SDK serves all systems here."""
    command = [sdk / "usr/bin/clang", "-target", target, "-Wno-incompatible-sysroot", "-isysroot", sdk,
               "-isystem", sdk / "usr/include/availability", *arguments]
    done = subprocess.run(command, stderr=subprocess.STDOUT, stdout=subprocess.PIPE, text=True, cwd=ROOT)
    return done.returncode, done.stdout


def sources(*folders):
    return [path for folder in folders for path in sorted((ROOT / folder).rglob("*")) if path.suffix in (".cpp", ".mm")]


def symbols(sdk, framework, which):
    return subprocess.run([sdk / "usr/bin/llvm-nm", which, "--format=just-symbols", framework / "Ozmira"],
                          stdout=subprocess.PIPE, text=True, check=True).stdout


def exported(sdk, framework):
    """The framework exports what applications use and nothing else."""
    listed = symbols(sdk, framework, "-gU")
    expected = (HERE / "exports.txt").read_text()
    check(listed == expected, f"Ozmira.framework exports\n{listed}instead of\n{expected}")


def declared(sdk, framework):
    """Everything that the framework exports is declared in its headers, and the other way round."""
    with tempfile.TemporaryDirectory() as folder:
        done = subprocess.run(
            # It looks for the compiler's own headers beside the path that it is called by.
            [(sdk / "usr/bin/clang-installapi").resolve(), "-target", IOS, "-isysroot", sdk, "-F", framework.parent, "-x", "objective-c",
             "-fapplication-extension", "-install_name", "@rpath/Ozmira.framework/Ozmira", "-current_version", "1.0.0",
             "-compatibility_version", "1.0.0", "--verify-mode=Pedantic", f"--verify-against={framework / 'Ozmira'}",
             framework, "-o", f"{folder}/Ozmira.tbd"],
            stderr=subprocess.STDOUT, stdout=subprocess.PIPE, text=True)
        check(done.returncode == 0 and not done.stdout, f"headers and exports differ:\n{done.stdout}")


def imported(sdk, framework):
    """Applications in every language import the framework, as headers and as a module, without a warning."""
    with tempfile.TemporaryDirectory() as cache:
        modules = ["-fmodules", "-fcxx-modules", f"-fmodules-cache-path={cache}",
                   "-Werror=non-modular-include-in-framework-module"]
        for language in (["objective-c", "-std=c11"], ["objective-c", "-std=c11", "-fobjc-arc"],
                         ["objective-c++", "-std=c++17", "-fobjc-arc"], ["objective-c++", "-std=c++20"]):
            for name, options in (("import.m", []), ("module.m", modules)):
                code, messages = clang(sdk, IOS, "-fsyntax-only", "-Wall", "-Wextra", "-Wpedantic", "-Werror",
                                       "-Wno-pedantic-macros", "-F", framework.parent, *options, "-x", *language,
                                       HERE / "consumers" / name)
                check(code == 0, f"{name} does not compile as {' '.join(language)}:\n{messages}")


def example(sdk, framework):
    """The example and the listings of the documentation compile."""
    options = ["-fsyntax-only", "-fobjc-arc", "-Wall", "-Werror", "-F", framework.parent]
    code, messages = clang(sdk, IOS, *options, "-Wextra", "examples/ios/Sources/IconView.m")
    check(code == 0, f"the example does not compile:\n{messages}")
    with tempfile.TemporaryDirectory() as folder:
        source, count = Path(folder) / "listing.m", 0
        for page in (ROOT / "README.md", *sorted((ROOT / "docs").glob("*.md"))):
            for place, program in listings.programs(page):
                count += 1
                source.write_text(program)
                code, messages = clang(sdk, IOS, *options, "-fmodules", f"-fmodules-cache-path={folder}", source)
                check(code == 0, f"the listing at {place} does not compile:\n{messages}")
    check(count > 0, "no listing was found in the documentation")


def named(framework):
    """Swift sees every method under a name of its own."""
    faults.extend(swift_names.faults(sorted((framework / "Headers").glob("*.h"))))


def refused(sdk):
    """What must not compile does not, for the right reason."""
    code, messages = clang(sdk, IOS, "-fsyntax-only", "-Werror", HERE / "consumers/wrong_name.m")
    check(code != 0 and "swift_name" in messages, f"a wrong name for Swift is not found:\n{messages}")
    for source in sources("api"):
        code, messages = clang(sdk, IOS, "-fsyntax-only", "-fobjc-arc", "-std=c++20", "-Iapi", "-Iinclude", "-I.", source)
        check("compile this file with -fno-objc-arc" in messages,
              f"{source.name} does not refuse automatic reference counting")


def on_visionos(sdk):
    """The object layer compiles where UIKit has no UIScreen."""
    for source in sources("api"):
        code, messages = clang(sdk, VISIONOS, "-fsyntax-only", "-Wall", "-Wextra", "-Werror", "-std=c++20", "-Iapi",
                               "-Iinclude", "-I.", source)
        check(code == 0, f"{source.name} does not compile for visionOS:\n{messages}")


def property_lists(sdk, framework):
    info = plistlib.loads((framework / "Info.plist").read_bytes())
    for key, value in {"CFBundleExecutable": "Ozmira", "CFBundlePackageType": "FMWK", "MinimumOSVersion": "13.0",
                       "CFBundleSupportedPlatforms": ["iPhoneOS"]}.items():
        check(info.get(key) == value, f"Info.plist: {key} is {info.get(key)!r} instead of {value!r}")
    version = info["CFBundleShortVersionString"]
    for name, line in (("Ozmira.podspec", f"spec.version = '{version}'"),
                       ("vcpkg.json", f'"version-string": "{version}"')):
        check(line in (ROOT / name).read_text(), f"{name} does not have the version {version}")
    manifest = plistlib.loads((framework / "PrivacyInfo.xcprivacy").read_bytes())
    expected = {"NSPrivacyTracking": False, "NSPrivacyTrackingDomains": [], "NSPrivacyCollectedDataTypes": [],
                "NSPrivacyAccessedAPITypes": [{"NSPrivacyAccessedAPIType": "NSPrivacyAccessedAPICategoryFileTimestamp",
                                               "NSPrivacyAccessedAPITypeReasons": ["C617.1"]}]}
    check(manifest == expected, f"PrivacyInfo.xcprivacy declares {manifest}")
    needed = set(symbols(sdk, framework, "-u").split())
    declared = {entry["NSPrivacyAccessedAPIType"] for entry in manifest["NSPrivacyAccessedAPITypes"]}
    for category, functions in REQUIRED_REASONS.items():
        used = sorted(functions & needed)
        check(bool(used) == (category in declared), f"PrivacyInfo.xcprivacy: the framework uses {used} of {category}")


def joined(sdk, framework):
    """An XCFramework can be made of the framework."""
    with tempfile.TemporaryDirectory() as folder:
        result = Path(folder) / "Ozmira.xcframework"
        subprocess.run([ROOT / "apple/make_xcframework.py", result, framework], check=True,
                       env={**os.environ, "PATH": f"{sdk / 'usr/bin'}:{os.environ['PATH']}"})
        library = plistlib.loads((result / "Info.plist").read_bytes())["AvailableLibraries"][0]
        check(library["SupportedArchitectures"] == ["arm64"] and library["SupportedPlatform"] == "ios"
              and (result / library["LibraryIdentifier"] / library["BinaryPath"]).is_file(),
              f"the XCFramework holds {library}")


def analyzed(sdk, framework):
    """The analyzer finds nothing in the object layer and the renderer, but does find a leak made on purpose."""
    def messages(source):
        return clang(sdk, IOS, *ANALYZER, "-std=c++20", "-Iinclude", "-I.", f"-I{source.parent}", source)[1]

    with ThreadPoolExecutor(os.cpu_count()) as pool:
        for source, found in zip(files := sources("api", "render"), pool.map(messages, files)):
            check(not found, f"the analyzer on {source.name}:\n{found}")
    _, found = clang(sdk, IOS, *ANALYZER, "-F", framework.parent, HERE / "consumers/leak.m")
    check("leak" in found, f"the analyzer does not find a leak:\n{found}")


def tool(sdk):
    """The tool compiles for a Mac."""
    def messages(source):
        return clang(sdk, MACOS, "-fsyntax-only", "-Wall", "-Wextra", "-Wshadow", "-Wconversion", "-Werror", "-std=c++20",
                     '-DOZMIRA_TOOL_VERSION="0"', "-Iinclude", "-Itools/ozmira", "-I.", source)[1]

    with ThreadPoolExecutor(os.cpu_count()) as pool:
        for source, found in zip(files := sources("tools/ozmira"), pool.map(messages, files)):
            check(not found, f"{source.name} does not compile for a Mac:\n{found}")


def main():
    if len(sys.argv) != 3 or sys.argv[1].startswith("-"):
        print(__doc__, file=sys.stderr)
        return 2
    sdk, framework = (Path(argument).absolute() for argument in sys.argv[1:3])
    for file in (sdk / "usr/bin/clang", framework / "Ozmira"):
        if not file.exists():
            sys.exit(f"{file} is missing; ./dev check apple makes it")
    exported(sdk, framework)
    declared(sdk, framework)
    imported(sdk, framework)
    example(sdk, framework)
    named(framework)
    refused(sdk)
    on_visionos(sdk)
    property_lists(sdk, framework)
    joined(sdk, framework)
    analyzed(sdk, framework)
    tool(sdk)
    print("\n".join(faults) or "The framework exports, declares and imports what it should; the tool compiles for a Mac.")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
