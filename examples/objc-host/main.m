// A host in Objective-C: samples once a second and prints what it may show.
#import <HalvermonteSensorsEngine/HalvermonteSensorsEngine.h>

static void show(NSDictionary<NSString*, NSString*>* readings, const char* unit) {
  NSArray<NSString*>* names =
      [readings.allKeys sortedArrayUsingSelector:@selector(localizedStandardCompare:)];
  for (NSString* name in names) {
    printf("%-40s %6s %s\n", name.UTF8String, readings[name].UTF8String, unit);
  }
}

int main(void) {
  // Takes seconds: the processor's name comes from a system tool.
  HalvermonteSensorsEngine* engine = [[HalvermonteSensorsEngine alloc] init];
  StatisticsData* record = [[StatisticsData alloc] init];
  for (;;) {
    @autoreleasepool {
      [engine getSensorsInfo:record];
      show(record.sensors, "degrees C");
      show(record.fans, "rpm");
      printf("read %s, write %s\n\n", record.diskIO_speedReadText.UTF8String,
             record.diskIO_speedWriteText.UTF8String);
    }
    [NSThread sleepForTimeInterval:1];
  }
}
