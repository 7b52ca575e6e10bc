/// Data from URLs as Cocoa reads it: afresh each time, and nil for whatever cannot be read. Base
/// keeps the content of every file that it ever read from a URL, and raises for a URL without a
/// path.

#import <Foundation/Foundation.h>

@implementation NSData (ContentsOfURL)

- (id)initWithContentsOfURL:(NSURL*)url {
    if ([url isFileURL] && [[url path] length]) return [self initWithContentsOfFile:[url path]];
    NSData* data = [url isFileURL] ? nil : [url resourceDataUsingCache:NO];
    if (data) return [self initWithData:data];
    [self release];
    return nil;
}

+ (id)dataWithContentsOfURL:(NSURL*)url {
    return [[[self alloc] initWithContentsOfURL:url] autorelease];
}

@end
