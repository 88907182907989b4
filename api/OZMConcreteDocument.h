// The loaded form of an OZMDocument.
#pragma once

#include "OZMDocumentState.h"

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

/// Owns the parsed content of one file.
@interface OZMConcreteDocument : NSObject {
@private
    OZMDocumentState _documentState;
}
/// Parses the file at the URL's path; nil if it can't be opened.
- (nullable instancetype)initWithContentsOfURL:(NSURL*)url NS_DESIGNATED_INITIALIZER;
- (instancetype)init NS_UNAVAILABLE;

/// Borrowed: valid as long as the receiver lives.
- (OZMDocumentState*)documentState NS_RETURNS_INNER_POINTER;
@end

NS_ASSUME_NONNULL_END
