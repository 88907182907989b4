// The umbrella header, from Objective-C++ here and from plain Objective-C in plain_objc.m.
#include "ApiTestSupport.h"

#import <Ozmira/Ozmira.h>

extern "C" double OzmiraPlainObjectiveCGreen(UIColor* color);

namespace {

using HeadersTest = ApiTest;

TEST_F(HeadersTest, ColorHasOneLayoutInBothLanguages) {
    EXPECT_EQ(OzmiraPlainObjectiveCGreen([UIColor colorWithRed:0.1 green:0.7 blue:0.2 alpha:1]), 0.7);
}

TEST_F(HeadersTest, NeedNoOtherHeader) { EXPECT_EQ(OzmiraVersionNumber, 1.0); }

} // namespace
