// A host in Swift: samples once a second and prints what it may show, as often as its argument says, or
// until it is stopped.
import Foundation
import HalvermonteSensorsEngine

func show(_ readings: [String: String], _ unit: String) {
    for (name, value) in readings.sorted(by: { $0.key < $1.key }) {
        print("\(name): \(value) \(unit)")
    }
}

let arguments = CommandLine.arguments
let passes = arguments.count > 1 ? Int(arguments[1]) ?? 0 : Int.max
// Takes seconds: the processor's name comes from a system tool.
let engine = HalvermonteSensorsEngine()
let record = StatisticsData()
for pass in 0..<passes {
    if pass > 0 { Thread.sleep(forTimeInterval: 1) }
    autoreleasepool {
        _ = engine.getSensorsInfo(record)
        show(record.sensors, "degrees C")
        show(record.fans, "rpm")
        print("read \(record.diskIO_speedReadText), write \(record.diskIO_speedWriteText)\n")
    }
}
