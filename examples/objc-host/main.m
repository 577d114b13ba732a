// A host in Objective-C: samples once a second and prints what it may show, as often as its
// argument says, or until it is stopped.
#import <HalvermonteSensorsEngine/HalvermonteSensorsEngine.h>

static void show(NSDictionary<NSString*, NSString*>* readings, const char* unit) {
  NSArray<NSString*>* names =
      [readings.allKeys sortedArrayUsingSelector:@selector(localizedStandardCompare:)];
  for (NSString* name in names) {
    printf("%-40s %6s %s\n", name.UTF8String, readings[name].UTF8String, unit);
  }
}

int main(int count, char** arguments) {
  const int passes = count > 1 ? atoi(arguments[1]) : INT_MAX;
  // Takes seconds: the processor's name comes from a system tool.
  HalvermonteSensorsEngine* engine = [[HalvermonteSensorsEngine alloc] init];
  StatisticsData* record = [[StatisticsData alloc] init];
  for (int pass = 0; pass < passes; ++pass) {
    if (pass > 0) [NSThread sleepForTimeInterval:1];
    @autoreleasepool {
      [engine getSensorsInfo:record];
      show(record.sensors, "degrees C");
      show(record.fans, "rpm");
      printf("read %s, write %s\n\n", record.diskIO_speedReadText.UTF8String,
             record.diskIO_speedWriteText.UTF8String);
    }
  }
}
