/* HalvermonteSensorsEngine: samples the computer's sensors and disk traffic into a host's record.
 *
 * A host makes one engine and hands it a record on each tick. The engine has no lock and no thread:
 * its passes must not overlap. The record's properties may be read from any thread meanwhile.
 *
 * The engine sends itself askSytemInfoForProcessorName, then physicalCores in init, and
 * returnThermalValues in each pass: a subclass may override them. */
#ifdef __OBJC__
#import <Foundation/Foundation.h>
#endif

#include <HalvermonteSensorsEngine/DiskCounters.h>
#include <HalvermonteSensorsEngine/Export.h>
#include <HalvermonteSensorsEngine/HIDSensors.h>
#include <HalvermonteSensorsEngine/SMC.h>
#include <HalvermonteSensorsEngine/StatisticsData.h>
#include <HalvermonteSensorsEngine/Version.h>

#ifdef __OBJC__
NS_ASSUME_NONNULL_BEGIN

HALVERMONTE_EXPORT
@interface HalvermonteSensorsEngine : NSObject {
 @private
  struct HalvermonteEngine* engine_;
}

/* Asks for the processor's name, which takes seconds, and the number of cores, and matches the
 * drives: none of these is asked for again. */
- (instancetype)init NS_DESIGNATED_INITIALIZER;

/* One pass: fills the record's sensor and disk properties through its setters and returns the same
 * record, which is kept only for the length of the pass. Raises an NSRangeException if the HID
 * event system names more sensors than it gives values; what a setter of the record raises passes
 * as well. */
- (StatisticsData*)getSensorsInfo:(StatisticsData*)record;

/* Returns the processor's name from the hardware report, or "" if it has none. Runs a command. */
- (NSString*)askSytemInfoForProcessorName;

/* Returns the number of physical cores as the kernel counts them, or 1 if it does not say. */
- (int)physicalCores;

/* Returns the process's CPU use in percent of one core. 0.0 if ps could not be started or prints no
 * number, -1.0 if its output cannot be read. Runs a command. */
- (float)askSystemPS:(int)processIdentifier;

/* Names and readings of the HID sensors, aligned by index: strings, and 64-bit floats in amperes,
 * volts or degrees Celsius. If the event system returns no list,
 * names are nil, and current and voltage readings end the process. */
- (nullable NSMutableArray<NSString*>*)currentArray;
- (nullable NSMutableArray<NSString*>*)voltageArray;
- (nullable NSMutableArray<NSString*>*)thermalArray;
- (NSMutableArray<NSNumber*>*)returnCurrentValues;
- (NSMutableArray<NSNumber*>*)returnVoltageValues;
- (NSMutableArray<NSNumber*>*)returnThermalValues;

@end

NS_ASSUME_NONNULL_END
#endif
