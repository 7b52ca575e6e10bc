/// URLs as Cocoa reads them: a scheme is the same in capitals. Base knows files by a small "file"
/// alone.

#import <Foundation/Foundation.h>

@implementation NSURL (SchemesInCapitals)

- (BOOL)isFileURL {
    NSString* scheme = [self scheme];
    return scheme && [scheme caseInsensitiveCompare:@"file"] == NSOrderedSame;
}

@end
