/// The Objective-C runtime lets other threads use a class while one of them is still inside its
/// +initialize: two first uses at once may find a class cluster half set up. So the classes that
/// background work uses are initialized here, when the library is loaded and nobody else runs.

#import <Foundation/Foundation.h>

@interface CocoaClassInitialization : NSObject
@end

@implementation CocoaClassInitialization

+ (void)load {
    NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
    [NSThread class];
    [NSNull null];
    [NSString string];
    [NSMutableString string];
    [NSData data];
    [NSMutableData data];
    [NSValue valueWithPointer:nullptr];
    [NSNumber numberWithInt:0];
    [NSArray array];
    [[NSMutableArray array] objectEnumerator];
    [NSDictionary dictionary];
    [[NSMutableDictionary dictionary] objectEnumerator];
    [NSSet set];
    [NSMutableSet set];
    [NSDate class];
    [NSCalendarDate class];
    [NSTimeZone class];
    [NSURL class];
    [NSError class];
    [NSException class];
    [NSFileManager class];
    [pool release];
}

@end
