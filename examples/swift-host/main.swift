// A host in Swift: samples once a second and prints what it may show.
import Foundation
import HalvermonteSensorsEngine

func show(_ readings: [AnyHashable: Any], _ unit: String) {
    for (name, value) in readings.sorted(by: { "\($0.key)" < "\($1.key)" }) {
        print("\(name): \(value) \(unit)")
    }
}

// Takes seconds: the processor's name comes from a system tool.
let engine: HalvermonteSensorsEngine = HalvermonteSensorsEngine()
let record: StatisticsData = StatisticsData()
while true {
    autoreleasepool {
        _ = engine.getSensorsInfo(record)
        show(record.sensors, "degrees C")
        show(record.fans, "rpm")
        print("read \(record.diskIO_speedReadText!), write \(record.diskIO_speedWriteText!)\n")
    }
    Thread.sleep(forTimeInterval: 1)
}
