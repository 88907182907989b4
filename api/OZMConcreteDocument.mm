#import "OZMConcreteDocument.h"

#include "manual_retain_release.h"

#include <Ozmira/SVG/ozmSVGParser.h>

#include <utility>

@implementation OZMConcreteDocument

- (instancetype)initWithContentsOfURL:(NSURL*)url {
    if (!(self = [super init])) return nil;
    std::unique_ptr<ozm::Document> document;
    if (const char* path = url.path.UTF8String) {
        ozm::SVGParser parser; // reports nothing, because it has no log
        document = parser.CreateDocumentWithContentsOfSVGFile(path);
    }
    if (!document) {
        [self release];
        return nil;
    }
    _documentState.m_log = std::make_unique<ozm::Log>();
    _documentState.m_document = std::move(document);
    _documentState.m_renderer.SetDocument(_documentState.m_document.get());
    return self;
}

- (OZMDocumentState*)documentState {
    return &_documentState;
}

@end
