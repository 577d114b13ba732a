"""The sensors engine in Python, over its C interface.

    with Engine() as engine:
        for snapshot in engine.snapshots(interval=1.0):
            for name, number, unit in snapshot.temperatures:
                print(f"{name}: {number} {unit}")
            print(snapshot["diskIO_readText"])

Run as a program, it shows the temperatures and the disk traffic of this computer, or of the simulated
one that a machine file describes.
"""
from __future__ import annotations

import ctypes
import ctypes.util
import itertools
import os
import sys
import time
from datetime import datetime, timedelta, timezone
from types import TracebackType
from typing import Dict, Iterator, List, NamedTuple, Optional, Type, Union

Value = Union[None, str, int, float, datetime, List["Value"], Dict[str, "Value"]]

_NOT_AVAILABLE = 8
_TEXT, _NUMBER, _ARRAY, _DICTIONARY, _DATE = 1, 2, 3, 4, 5
_UINT64 = 2
_READ, _WRITE = 0, 1


class Error(Exception):
    """A call of the library failed. `status` is its halvermonte_status."""

    def __init__(self, status: int, reason: str) -> None:
        super().__init__(reason)
        self.status = status


class Reading(NamedTuple):
    """A temperature in whole degrees Celsius, or a fan in revolutions per minute."""

    name: str
    number: int
    unit: str


class Traffic(NamedTuple):
    """What all drives together read or wrote: bytes per second, and bytes since they started."""

    rate: float
    total: int
    history: List[float]


class _Library:
    """The shared library: the file at the path, or at that of HALVERMONTE_LIBRARY, or the installed one."""

    def __init__(self, path: Optional[str]) -> None:
        found = path or os.environ.get("HALVERMONTE_LIBRARY") or ctypes.util.find_library("halvermonte")
        self._library = ctypes.CDLL(found or "libhalvermonte.so.0")
        self._library.halvermonte_last_error.restype = ctypes.c_char_p

    def call(self, function: str, *arguments: object) -> None:
        status = self._library["halvermonte_" + function](*arguments)
        if status != 0:
            raise Error(status, _decoded(self._library.halvermonte_last_error()))

    def free(self, function: str, handle: ctypes.c_void_p) -> None:
        self._library["halvermonte_" + function](handle)


def _decoded(text: Optional[bytes]) -> str:
    return (text or b"").decode("utf-8", "replace")


class Snapshot:
    """The record after a pass. It does not change."""

    def __init__(self, library: _Library, handle: ctypes.c_void_p) -> None:
        self._library = library
        self._handle = handle
        self.temperatures, self.short_temperatures, self.fans = (
            list(self._readings(list_number)) for list_number in range(3))
        self.read, self.write = self._traffic(_READ), self._traffic(_WRITE)

    def __del__(self) -> None:
        self._library.free("snapshot_free", self._handle)

    def __getitem__(self, name: str) -> Value:
        """The record's property of the name, such as "hostName"; None if it is absent, or a picture."""
        value = ctypes.c_void_p()
        self._library.call("snapshot_property", self._handle, name.encode(), ctypes.byref(value))
        return self._converted(value)

    def _readings(self, list_number: int) -> Iterator[Reading]:
        count = ctypes.c_size_t()
        self._library.call("snapshot_reading_count", self._handle, list_number, ctypes.byref(count))
        for index in range(count.value):
            name, number, unit = ctypes.c_char_p(), ctypes.c_int32(), ctypes.c_char_p()
            self._library.call("snapshot_reading", self._handle, list_number, ctypes.c_size_t(index),
                               ctypes.byref(name), ctypes.byref(number), ctypes.byref(unit))
            yield Reading(_decoded(name.value), number.value, _decoded(unit.value))

    def _traffic(self, direction: int) -> Traffic:
        rate, total = ctypes.c_double(), ctypes.c_uint64()
        rates, count = ctypes.POINTER(ctypes.c_double)(), ctypes.c_size_t()
        self._library.call("snapshot_disk_rate", self._handle, direction, ctypes.byref(rate))
        self._library.call("snapshot_disk_total", self._handle, direction, ctypes.byref(total))
        self._library.call("snapshot_disk_history", self._handle, direction, ctypes.byref(rates),
                           ctypes.byref(count))
        return Traffic(rate.value, total.value, rates[:count.value])

    def _converted(self, value: ctypes.c_void_p) -> Value:
        kind = ctypes.c_int32()
        self._library.call("value_kind", value, ctypes.byref(kind))
        if kind.value == _TEXT:
            return self._text(value)
        if kind.value == _NUMBER:
            return self._number(value)
        if kind.value == _DATE:
            return self._date(value)
        if kind.value == _ARRAY:
            return [self._converted(element) for element in self._elements(value)]
        if kind.value == _DICTIONARY:
            return {self._text(key): self._converted(entry) for key, entry in self._entries(value)}
        return None

    def _text(self, value: ctypes.c_void_p) -> str:
        text, size = ctypes.c_void_p(), ctypes.c_size_t()
        self._library.call("value_text", value, ctypes.byref(text), ctypes.byref(size))
        return _decoded(ctypes.string_at(text, size.value))

    def _number(self, value: ctypes.c_void_p) -> Union[int, float]:
        form, integer = ctypes.c_int32(), ctypes.c_int64()
        self._library.call("value_number_form", value, ctypes.byref(form))
        if form.value > _UINT64:
            number = ctypes.c_double()
            self._library.call("value_double", value, ctypes.byref(number))
            return number.value
        if form.value == _UINT64:
            natural = ctypes.c_uint64()
            self._library.call("value_uint64", value, ctypes.byref(natural))
            return natural.value
        self._library.call("value_int64", value, ctypes.byref(integer))
        return integer.value

    def _date(self, value: ctypes.c_void_p) -> datetime:
        seconds = ctypes.c_double()
        self._library.call("value_date", value, ctypes.byref(seconds))
        return datetime(1970, 1, 1, tzinfo=timezone.utc) + timedelta(seconds=seconds.value)

    def _count(self, value: ctypes.c_void_p) -> int:
        count = ctypes.c_size_t()
        self._library.call("value_count", value, ctypes.byref(count))
        return count.value

    def _elements(self, array: ctypes.c_void_p) -> Iterator[ctypes.c_void_p]:
        for index in range(self._count(array)):
            element = ctypes.c_void_p()
            self._library.call("value_element", array, ctypes.c_size_t(index), ctypes.byref(element))
            yield element

    def _entries(self, dictionary: ctypes.c_void_p) -> Iterator[tuple[ctypes.c_void_p, ctypes.c_void_p]]:
        for index in range(self._count(dictionary)):
            key, entry = ctypes.c_void_p(), ctypes.c_void_p()
            self._library.call("value_entry", dictionary, ctypes.c_size_t(index), ctypes.byref(key),
                               ctypes.byref(entry))
            yield key, entry


class Engine:
    """Samples this computer, or the simulated one of a machine file. For one thread at a time."""

    def __init__(self, machine_file: Optional[str] = None, library: Optional[str] = None) -> None:
        self._library = _Library(library)
        self._handle = ctypes.c_void_p()
        if machine_file is None:
            self._library.call("engine_create", ctypes.byref(self._handle))
        else:
            self._library.call("engine_create_from_file", os.fsencode(machine_file),
                               ctypes.byref(self._handle))

    def __enter__(self) -> Engine:
        return self

    def __exit__(self, kind: Optional[Type[BaseException]], error: Optional[BaseException],
                 traceback: Optional[TracebackType]) -> None:
        self.close()

    def close(self) -> None:
        """Ends the engine. Its snapshots stay."""
        self._library.free("engine_free", self._handle)
        self._handle = ctypes.c_void_p()

    def snapshots(self, interval: float = 1.0) -> Iterator[Snapshot]:
        """Makes a pass each interval, in seconds, and yields a snapshot of it. Does not end by itself.
        A simulated computer goes through its ticks instead of waiting."""
        for number in itertools.count():
            if number > 0 and not self._next_tick():
                time.sleep(interval)
            self._library.call("engine_pass", self._handle)
            snapshot = ctypes.c_void_p()
            self._library.call("engine_snapshot", self._handle, ctypes.byref(snapshot))
            yield Snapshot(self._library, snapshot)

    @property
    def processor_name(self) -> str:
        name = ctypes.c_char_p()
        self._library.call("engine_processor_name", self._handle, ctypes.byref(name))
        return _decoded(name.value)

    @property
    def physical_cores(self) -> int:
        cores = ctypes.c_int32()
        self._library.call("engine_physical_cores", self._handle, ctypes.byref(cores))
        return cores.value

    def process_cpu(self, identifier: int) -> float:
        """Returns a process's CPU use in percent of one core, on average since it began."""
        percent = ctypes.c_float()
        self._library.call("engine_process_cpu", self._handle, identifier, ctypes.byref(percent))
        return percent.value

    def _next_tick(self) -> bool:
        try:
            self._library.call("engine_next_tick", self._handle)
        except Error as error:
            if error.status == _NOT_AVAILABLE:
                return False
            raise
        return True


def main(arguments: List[str]) -> None:
    with Engine(*arguments[:1]) as engine:
        _, snapshot = itertools.islice(engine.snapshots(), 2)  # a rate needs two passes
        for name, number, unit in snapshot.temperatures:
            print(f"{name}: {number} {unit}")
        print(f"read {snapshot.read.rate:.0f} bytes/s, write {snapshot.write.rate:.0f} bytes/s")


if __name__ == "__main__":
    try:
        main(sys.argv[1:])
    except Error as failure:
        sys.exit(str(failure))
