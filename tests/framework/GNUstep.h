// What platform/apple/Foundation.mm calls beyond what GNUstep's Foundation.h declares. GNUstep has
// neither of the two methods: the first is never called there, for the second a test stands in.
#import <Foundation/Foundation.h>
#import <Foundation/NSByteCountFormatter.h>

@interface NSTask (Newer)
- (BOOL)launchAndReturnError:(NSError**)error;
@end

@interface NSString (Newer)
- (NSComparisonResult)localizedStandardCompare:(NSString*)string;
@end
