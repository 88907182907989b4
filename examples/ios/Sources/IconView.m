#import "IconView.h"

@implementation IconView

- (void)setDocument:(OZMDocument*)document {
    _document = document;
    [self setNeedsDisplay];
}

- (void)drawRect:(CGRect)rect {
    [super drawRect:rect];
    CGContextRef context = UIGraphicsGetCurrentContext();
    // The context's y axis points down, and the document draws upright where it points up.
    CGContextTranslateCTM(context, 0, self.bounds.size.height);
    CGContextScaleCTM(context, 1, -1);
    [self.document drawInRect:self.bounds inContext:context defaultFillColor:self.tintColor];
}

@end
