// Documents as an application uses them: loading, purging, sizes, images and the parse log.
#include "api_test_support.h"
#include "OZMConcreteDocument.h"

#import <Ozmira/Ozmira.h>

#include <unistd.h>

namespace {

class DocumentTest : public ApiTest {
public:
    DocumentTest() { [OZMImageCache.sharedImageCache purgeCache]; }

    OZMDocument* document(std::string_view text) const {
        return [OZMDocument documentWithURL:write("a.svg", text)];
    }
};

#define EXPECT_SIZE(size, w, h)                                                                              \
    EXPECT_PRED2([](CGSize a, CGSize b) { return CGSizeEqualToSize(a, b); }, (size), CGSizeMake(w, h))       \
        << (size).width << " by " << (size).height

TEST_F(DocumentTest, LoadsByURLAndByBundleName) {
    OZMDocument* const byURL = document(redOverBlue(20, 10));
    EXPECT_TRUE([byURL.url isEqual:url("a.svg")]);
    EXPECT_SIZE(byURL.documentSize, 20, 10);
    EXPECT_FALSE(byURL.debugRenderLogging);

    OZMDocument* const byName = [OZMDocument documentWithName:@"icon"];
    EXPECT_TRUE(byName.url.isFileURL);
    EXPECT_SIZE(byName.viewPortSize, 24, 12);
    EXPECT_TRUE(CGRectEqualToRect(byName.viewBox, CGRectMake(0, 0, 48, 24)));

    OZMDocument* const byPath = [OZMDocument documentWithName:url("a.svg").path];
    EXPECT_FALSE(byPath.url.isFileURL);
    EXPECT_SIZE(byPath.documentSize, 20, 10);
}

TEST_F(DocumentTest, MissingFilesReturnNil) {
    for (NSURL* missing in @[
             url("missing.svg"), url("a.svg/b.svg"), [NSURL URLWithString:@"mailto:a@b.c"],
             [NSURL URLWithString:@""], [NSURL URLWithString:@"http://localhost/missing.svg"]
         ])
        EXPECT_EQ([OZMDocument documentWithURL:missing], nil) << missing.description.UTF8String;
    EXPECT_EQ([OZMDocument documentWithURL:nil], nil);
    for (NSString* name in
         @[ @"missing", @"", @"icon.svg", @"../icon", @"/missing.svg", @"/not a URL.svg", @"/%" ])
        EXPECT_EQ([OZMDocument documentWithName:name], nil) << name.UTF8String;
    EXPECT_EQ([OZMDocument documentWithName:nil], nil);
}

TEST_F(DocumentTest, MalformedFilesReturnAnEmptyDocument) {
    std::filesystem::create_directory(path("folder.svg"));
    for (NSURL* file in @[ write("broken.svg", "<svg><g>"), write("empty.svg", ""), url("folder.svg") ]) {
        OZMDocument* const empty = [OZMDocument documentWithURL:file];
        ASSERT_NE(empty, nil) << file.description.UTF8String;
        EXPECT_SIZE(empty.documentSize, 0, 0);
        EXPECT_EQ([empty image], nil);
        EXPECT_EQ([empty imageFitToSize:CGSizeMake(10, 0) scale:1], nil);
        EXPECT_EQ([empty parseLog].length, 0u);
    }
}

TEST_F(DocumentTest, UnreadableFilesReturnNil) {
    using std::filesystem::perms;
    write("a.svg", kUnfilled);
    std::filesystem::permissions(path(""), perms::owner_all | perms::group_exec | perms::others_exec);
    const uid_t user = geteuid();
    for (const perms mode : {perms{0444}, perms::none}) {
        std::filesystem::permissions(path("a.svg"), mode);
        if (user == 0) ASSERT_EQ(seteuid(65534), 0); // because root can read everything
        OZMDocument* const document = [OZMDocument documentWithURL:url("a.svg")];
        ASSERT_EQ(seteuid(user), 0);
        EXPECT_EQ(document != nil, mode != perms::none);
    }
}

TEST_F(DocumentTest, PurgedDocumentIsLoadedAgainOnDemand) {
    OZMDocument* const document = this->document(redOverBlue(20, 10));
    OZMConcreteDocument* const first = [document concreteDocument];
    EXPECT_EQ([document reloadDocument], first);
    [document purgeDocument];
    write("a.svg", redOverBlue(40, 30));
    EXPECT_SIZE(document.documentSize, 20, 10);
    EXPECT_SIZE([document imageSizeFitToSize:CGSizeMake(10, 0) scale:1], 10, 5);
    EXPECT_NE([document concreteDocument], first);
    EXPECT_SIZE(document.viewPortSize, 40, 30);
    EXPECT_SIZE([document imageFitToSize:CGSizeZero scale:1].size, 40, 30);
    EXPECT_SIZE(document.documentSize, 20, 10);
}

TEST_F(DocumentTest, DeletionAndDamageShowAfterAPurge) {
    OZMDocument* const document = this->document(redOverBlue(20, 10));
    std::filesystem::remove(path("a.svg"));
    EXPECT_SIZE(document.viewPortSize, 20, 10);
    [document purgeDocument];
    EXPECT_EQ([document concreteDocument], nil);
    EXPECT_SIZE(document.viewPortSize, 0, 0);
    EXPECT_TRUE(CGRectEqualToRect(document.viewBox, CGRectZero));
    EXPECT_EQ([document image], nil);
    EXPECT_EQ([document createCGImageFitToSize:CGSizeZero scale:1 defaultFillColor:nullptr], nullptr);
    EXPECT_EQ([document parseLog].length, 0u);
    const Canvas canvas(4, 4);
    [document drawInRect:CGRectMake(0, 0, 4, 4) inContext:canvas.context()];
    EXPECT_EQ(canvas.pixel(2, 2), 0u);

    write("a.svg", "<svg");
    EXPECT_SIZE(document.viewPortSize, 0, 0);
    [document purgeDocument];
    write("a.svg", redOverBlue(6, 6));
    EXPECT_SIZE([document image].size, 6, 6); // the failure was not cached
}

TEST_F(DocumentTest, FitsImagesIntoSizes) {
    OZMDocument* const document = this->document(redOverBlue(50, 25));
    struct {
        CGSize size;
        CGFloat scale;
        CGSize expected;
    } const cases[] = {
        {{0, 0}, 1, {50, 25}},      {{-1, -1}, 2, {50, 25}},    {{100, 0}, 1, {100, 50}},
        {{0, 100}, 1, {200, 100}},  {{100, 100}, 1, {100, 50}}, {{10.1, 0}, 2, {10.5, 5.5}},
        {{7, 0}, 3, {7, 11.0 / 3}},
    };
    for (const auto& test : cases) {
        EXPECT_SIZE([document imageSizeFitToSize:test.size scale:test.scale], test.expected.width,
                    test.expected.height);
        UIImage* const image = [document imageFitToSize:test.size scale:test.scale];
        EXPECT_SIZE(image.size, test.expected.width, test.expected.height);
        EXPECT_EQ(image.scale, test.scale);
    }
    EXPECT_SIZE([document imageWithHeight:10 scale:2].size, 20, 10);
    for (const CGFloat scale : {3.0, 1.0, 2.0}) {
        UIScreen.mainScreen.scale = scale;
        EXPECT_EQ(CGImageGetWidth([document image].CGImage), static_cast<size_t>(50 * scale));
        EXPECT_EQ([document image].scale, scale);
    }
    for (const CGSize size : {CGSizeMake(1e300, 0), CGSizeMake(INFINITY, INFINITY)})
        EXPECT_EQ([document imageFitToSize:size scale:1], nil);
    EXPECT_EQ([document imageFitToSize:CGSizeZero scale:NAN], nil);
}

TEST_F(DocumentTest, DefaultFillColorAppliesWhereNoFillIsNamed) {
    OZMDocument* const document = this->document(kUnfilled);
    const auto pixel = [&](UIColor* color) {
        return pixelOf([document imageFitToSize:CGSizeZero scale:1 defaultFillColor:color].CGImage, 4, 4);
    };
    EXPECT_EQ(pixel(nil), 0x000000FFu);
    EXPECT_EQ(pixel(UIColor.redColor), 0xFF0000FFu);
    EXPECT_EQ(pixel([UIColor colorWithWhite:0.2 alpha:1]), 0x333333FFu);
    EXPECT_EQ(pixel([UIColor colorWithRed:0 green:1 blue:0 alpha:0.2]), 0x00330033u);
    CGColorRef blue = CGColorCreateSRGB(0, 0, 1, 1);
    EXPECT_EQ(pixel([UIColor colorWithCGColor:blue]), 0x0000FFFFu);
    CGImageRef image = [document createCGImageFitToSize:CGSizeZero scale:2 defaultFillColor:blue];
    EXPECT_EQ(pixelOf(image, 15, 15), 0x0000FFFFu);
    CGImageRelease(image);
    CGColorRelease(blue);
    OZMDocument* const filled = this->document(redOverBlue(8, 8));
    EXPECT_EQ(
        pixelOf([filled imageFitToSize:CGSizeZero scale:1 defaultFillColor:UIColor.grayColor].CGImage, 4, 1),
        0xFF0000FFu);
}

TEST_F(DocumentTest, SameImageIsRenderedOnce) {
    OZMDocument* const document = this->document(kUnfilled);
    const auto image = [document](CGSize size, CGFloat scale, UIColor* color) {
        return [document imageFitToSize:size scale:scale defaultFillColor:color];
    };
    UIImage* const first = image({16, 0}, 2, UIColor.redColor);
    EXPECT_EQ(image({16, 0}, 2, UIColor.redColor), first);
    OZMDocument* const again = [OZMDocument documentWithURL:url("a.svg")];
    EXPECT_EQ([again imageFitToSize:CGSizeMake(16, 0) scale:2 defaultFillColor:UIColor.redColor], first);
    for (UIImage* other : {image({0, 16}, 2, UIColor.redColor), image({16, 0}, 3, UIColor.redColor),
                           image({16, 0}, 2, UIColor.grayColor), image({16, 0}, 2, nil)}) {
        EXPECT_NE(other, first);
        EXPECT_NE(other, nil);
    }
    [document purgeDocument];
    std::filesystem::remove(path("a.svg"));
    EXPECT_EQ(image({16, 0}, 2, UIColor.redColor), first);
    postMemoryWarning();
    EXPECT_EQ(image({16, 0}, 2, UIColor.redColor), nil);
}

TEST_F(DocumentTest, ParseLogColorsItsLinesByLevel) {
    OZMDocument* const document = this->document(kUnfilled);
    EXPECT_EQ([document parseLog].length, 0u);
    ozm::Log& log = *[document concreteDocument].documentState->m_log;
    struct {
        uint32_t level;
        const char* message;
        NSString* line;
        UIColor* color;
    } const cases[] = {
        {1, "first", @"[Error]     first\n", UIColor.redColor},
        {2, "", @"[Warning]   \n", UIColor.orangeColor},
        {3, "a%sb", @"[Info]      a%sb\n", UIColor.blackColor},
        {4, "d\xC3\xA9j\xC3\xA0", @"[Debug]     déjà\n", UIColor.grayColor},
        {0, "none", @"[Unknown]   none\n", nil},
        {5, "none", @"[Unknown]   none\n", nil},
    };
    for (const auto& test : cases) log.Append(static_cast<ozm::Log::Level>(test.level), test.message);

    NSAttributedString* const text = [document parseLog];
    NSUInteger start = 0;
    for (const auto& test : cases) {
        ASSERT_LE(start + test.line.length, text.length);
        const NSRange line = NSMakeRange(start, test.line.length);
        EXPECT_TRUE([[text.string substringWithRange:line] isEqualToString:test.line])
            << text.string.UTF8String;
        for (const NSUInteger index : {line.location, NSMaxRange(line) - 1}) {
            NSDictionary* const attributes = [text attributesAtIndex:index effectiveRange:nullptr];
            EXPECT_EQ(attributes.count, test.color ? 1u : 0u);
            id const color = [attributes objectForKey:NSForegroundColorAttributeName];
            EXPECT_TRUE(color == test.color || [color isEqual:test.color]) << test.level;
        }
        start = NSMaxRange(line);
    }
    EXPECT_EQ(start, text.length);
    [document purgeDocument];
    EXPECT_EQ([document parseLog].length, 0u);
}

TEST_F(DocumentTest, DebugRenderingDrawsFrames) {
    OZMDocument* const document = this->document(kUnfilled);
    UIImage* const plain = [document imageFitToSize:CGSizeMake(16, 0) scale:1];
    OZMDocument.debugRendering = NO;
    EXPECT_EQ([document imageFitToSize:CGSizeMake(16, 0) scale:1], plain); // still cached
    OZMDocument.debugRendering = YES;
    UIImage* const framed = [document imageFitToSize:CGSizeMake(16, 0) scale:1];
    EXPECT_EQ(pixelOf(framed.CGImage, 0, 8), 0x0000FFFFu);
    EXPECT_EQ(pixelOf(framed.CGImage, 8, 8), 0x000000FFu);

    const Canvas canvas(16, 16);
    [document drawInRect:CGRectMake(0, 0, 16, 16) inContext:canvas.context()];
    EXPECT_FALSE(OZMDocument.debugRendering);
    EXPECT_EQ(canvas.pixel(0, 8), 0x000000FFu);
    EXPECT_EQ(pixelOf([document imageFitToSize:CGSizeMake(16, 0) scale:1].CGImage, 0, 8), 0x000000FFu);
}

TEST_F(DocumentTest, LoadingAndPurgingOnSeveralThreads) {
    OZMDocument* const document = this->document(redOverBlue(20, 10));
    onThreads(3, [document] {
        for (int i = 0; i < 300; ++i) {
            EXPECT_SIZE(document.viewPortSize, 20, 10);
            if (i % 5 == 0) [document purgeDocument];
        }
    });
}

} // namespace
