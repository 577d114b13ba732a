#!/usr/bin/env python3
"""scrapes.py MONITOR COUNT: scrapes an exporter that many times, over connections that are kept and new ones.
Fails if its memory or the number of its descriptors grows. Prints how long a scrape took."""
import http.client
import os
import re
import statistics
import subprocess
import sys
import time

PER_CONNECTION = 50
MOST_GROWTH = 1024  # KiB; the allocator's own play is a few hundred


def memory(pid):
    with open(f"/proc/{pid}/status") as status:
        return int(re.search(r"^VmRSS:\s+(\d+)", status.read(), re.M).group(1))


def descriptors(pid):
    return len(os.listdir(f"/proc/{pid}/fd"))


def scrape(port, count):
    """Returns the seconds that each scrape took."""
    times = []
    while len(times) < count:
        connection = http.client.HTTPConnection("127.0.0.1", port, timeout=60)
        connection.connect()
        for _ in range(min(PER_CONNECTION, count - len(times))):
            start = time.perf_counter()
            connection.request("GET", "/metrics")
            answer = connection.getresponse()
            text = answer.read()
            times.append(time.perf_counter() - start)
            if answer.status != 200 or b"hw_temperature_celsius{" not in text:
                sys.exit(f"a scrape gave {answer.status}: {text[:200]}")
        connection.close()
    return times


def await_descriptors(pid, port, most):
    """The connection that was closed last may be open there for a moment."""
    deadline = time.monotonic() + 60
    while descriptors(pid) > most:
        if time.monotonic() > deadline:
            sys.exit(f"{descriptors(pid)} descriptors are open, {most} before")
        scrape(port, 1)


def main():
    monitor, count = sys.argv[1], int(sys.argv[2])
    exporter = subprocess.Popen([monitor, "--listen", "0", "--machine", "M3 Max", "--interval", "0.1"],
                                stderr=subprocess.PIPE, text=True)
    try:
        port = int(re.search(r":(\d+)/$", exporter.stderr.readline().strip()).group(1))
        scrape(port, max(count // 10, 200))  # what is kept for good is there from then on
        before = memory(exporter.pid), descriptors(exporter.pid)
        times = sorted(scrape(port, count))
        await_descriptors(exporter.pid, port, before[1])
        grown = memory(exporter.pid) - before[0]
        print(f"{count} scrapes: median {statistics.median(times) * 1e3:.3f} ms, "
              f"99 % within {times[int(count * 0.99)] * 1e3:.3f} ms; memory {before[0]} KiB, grown by {grown} KiB")
        if grown > MOST_GROWTH:
            sys.exit(f"the memory has grown by {grown} KiB")
    finally:
        exporter.terminate()
    if exporter.wait(60) != 0:
        sys.exit(f"the exporter ended with status {exporter.returncode}")


main()
