// What platform/apple/Foundation.mm calls beyond what GNUstep's Foundation.h declares. The two
// methods GNUstep does not have: they are declared for the compiler alone.
#import <Foundation/Foundation.h>
#import <Foundation/NSByteCountFormatter.h>

@interface NSTask (Newer)
- (BOOL)launchAndReturnError:(NSError**)error;
@end

@interface NSString (Newer)
- (NSComparisonResult)localizedStandardCompare:(NSString*)string;
@end
