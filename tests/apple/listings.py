"""Makes programs of the Objective-C listings in the documentation."""
import re

PREAMBLE = "#import <Ozmira/Ozmira.h>\n#import <UIKit/UIKit.h>\n"
METHODS = ("@interface Listing : UIView\n@property (nonatomic, strong) OZMDocument* document;\n@end\n"
           "@implementation Listing\n", "\n@end\n")
STATEMENTS = ("void listing(UIImageView* imageView);\nvoid listing(UIImageView* imageView) {\n", "\n}\n")


def programs(page):
    """Pairs of a place and a program that contains the listing there."""
    text = page.read_text()
    for match in re.finditer(r"^```objc\n(.*?)^```", text, flags=re.M | re.S):
        lines = match.group(1).splitlines()
        imports = [line for line in lines if line.startswith(("@import", "#import"))]
        code = "\n".join("" if line in imports else line for line in lines)
        before, after = METHODS if code.lstrip().startswith("- (") else STATEMENTS
        line = text.count("\n", 0, match.start(1)) + 1
        yield f"{page.name}:{line}", "\n".join([PREAMBLE, *imports, before, f'#line {line} "{page.name}"', code, after])
