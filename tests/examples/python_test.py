"""What halvermonte.py makes of the values of a machine file."""
import datetime
import itertools
import json
import pathlib
import tempfile
import unittest

import halvermonte

DESK = str(pathlib.Path(__file__).parent.parent / "capi" / "desk.machine")


def snapshot_after(passes: int) -> halvermonte.Snapshot:
    with halvermonte.Engine(DESK) as engine:
        return next(itertools.islice(engine.snapshots(), passes - 1, None))


class ReadingsTest(unittest.TestCase):
    def test_fans_are_readings(self) -> None:
        self.assertEqual(snapshot_after(2).fans, [("Left", 1250, "rpm"), ("Right", 0, "rpm")])

    def test_the_short_list_is_a_list_of_its_own(self) -> None:
        self.assertEqual(snapshot_after(1).short_temperatures, [("Wi-Fi", 41, "°C")])

    def test_traffic_has_rate_total_and_history(self) -> None:
        read = snapshot_after(2).read
        self.assertEqual(read.rate, 2500000)
        self.assertEqual(read.total, 5002500001)
        self.assertEqual(read.history[-3:], [-1, 0, 2500000])
        self.assertEqual(len(read.history), 75)
        self.assertEqual(snapshot_after(2).write.rate, 40000)

    def test_a_property_may_be_larger_than_signed_numbers(self) -> None:
        drive = {"Bytes (Read)": 9 * 10**18}
        with tempfile.NamedTemporaryFile("w", suffix=".json") as file:
            json.dump({"name": "Large", "ticks": [{"drives": [drive, drive]}]}, file)
            file.flush()
            with halvermonte.Engine(file.name) as engine:
                self.assertEqual(next(engine.snapshots())["diskIO_read"], 18 * 10**18)

    def test_a_snapshot_outlives_its_engine_and_stays_as_it_is(self) -> None:
        with halvermonte.Engine(DESK) as engine:
            first, second = itertools.islice(engine.snapshots(), 2)
        self.assertEqual(first.fans[0].number, 1200)
        self.assertEqual(second.fans[0].number, 1250)
        self.assertEqual(first["sensors_fansData"], "1200\n0\n")


class PropertiesTest(unittest.TestCase):
    def test_each_kind_has_a_type_of_python(self) -> None:
        snapshot = snapshot_after(2)
        self.assertEqual(snapshot["hostName"], "Ada's desk – ÄÖ")
        self.assertEqual(snapshot["diskIO_speedRead"], 2500000.0)
        self.assertIsInstance(snapshot["diskIO_speedRead"], float)
        self.assertEqual(snapshot["diskIO_read"], 5002500001)
        self.assertIsInstance(snapshot["diskIO_read"], int)
        self.assertEqual(snapshot["network_connectedToInternet"], -1)
        self.assertEqual(snapshot["fans"], {"Left": "1250", "Right": "0"})
        self.assertEqual([len(side) for side in snapshot["diskIO_activities"]], [75, 75])
        self.assertEqual(snapshot["appsUpdateTime"],
                         datetime.datetime(1970, 1, 12, 13, 46, 40, tzinfo=datetime.timezone.utc))
        self.assertIsNone(snapshot["cpu_userActivities"])


class HostTest(unittest.TestCase):
    def test_the_computer_has_a_processor_and_processes(self) -> None:
        with halvermonte.Engine(DESK) as engine:
            self.assertEqual(engine.processor_name, "Apple M9")
            self.assertEqual(engine.physical_cores, 6)
            self.assertEqual(engine.process_cpu(4711), 12.5)


class ErrorsTest(unittest.TestCase):
    def test_an_error_has_the_librarys_status_and_reason(self) -> None:
        with self.assertRaises(halvermonte.Error) as raised:
            snapshot_after(1)["Fans"]
        self.assertEqual(raised.exception.status, 4)
        self.assertEqual(str(raised.exception), 'no property is called "Fans"')

    def test_a_closed_engine_is_refused(self) -> None:
        engine = halvermonte.Engine(DESK)
        engine.close()
        engine.close()
        with self.assertRaises(halvermonte.Error) as raised:
            engine.process_cpu(4711)
        self.assertEqual(raised.exception.status, 1)

    def test_a_library_that_is_not_there_is_an_error(self) -> None:
        with self.assertRaises(OSError):
            halvermonte.Engine(DESK, library="/absent/libhalvermonte.so.0")


if __name__ == "__main__":
    unittest.main()
