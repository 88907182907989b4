"""What Swift makes of the framework's headers, as far as it can be told without Swift's compiler."""
import re


def declarations(text):
    """Pairs of a class and a method that Swift can call."""
    for name, body in re.findall(r"@interface (\w+)(.*?)@end", text, flags=re.S):
        for declaration in re.findall(r"^[-+][^;]*;", body, flags=re.M):
            if "UNAVAILABLE" not in declaration:
                yield name, " ".join(declaration.split())


def faults(headers):
    """Methods that Swift would name by itself, that share a name, or that return what Swift does not know.

    Clang counts arguments, too, but takes a last one that points to a structure for an error.
    """
    text = re.sub(r"//[^\n]*", "", "\n".join(header.read_text() for header in headers))
    defined = set(re.findall(r"@interface (\w+)", text))
    unknown = set(re.findall(r"@class (\w+);", text)) - defined
    seen = set()
    for owner, declaration in declarations(text):
        given = re.search(r"NS_SWIFT_NAME\((.*)\);$", declaration)
        if ":" in declaration and not given:
            yield f"{owner}: NS_SWIFT_NAME is missing in {declaration}"
        if given:
            name = given.group(1)
            selector = re.sub(r"\([^()]*\)", "", declaration.partition("NS_")[0])
            if name.count(":") != selector.count(":") - ("error:" in selector):
                yield f"{owner}: {name} has not as many arguments as {selector}"
            # Swift makes initialisers of class methods, too.
            key = (owner, name, None if name.startswith("init(") else declaration[0])
            if key in seen:
                yield f"{owner}: two methods are {name} in Swift"
            seen.add(key)
        for name in unknown:
            if re.search(rf"\b{name}\b", declaration):
                yield f"{owner}: NS_SWIFT_UNAVAILABLE is missing in {declaration}, because no header defines {name}"
