#!/usr/bin/env python3
"""fleet_test.py MONITOR: the fleet prints its table, and leaves no process and no file behind, however it ends."""
import os
import pathlib
import re
import signal
import subprocess
import sys
import tempfile

SCRIPTS = pathlib.Path(__file__).resolve().parents[3] / "scripts"
sys.path.append(str(SCRIPTS))
import exporters  # noqa: E402

EXPORTERS = 3


def expect(condition, complaint):
    if not condition:
        sys.exit(f"FAIL: {complaint}")


def start(monitor, seconds, folder):
    command = [SCRIPTS / "fleet", "--monitor", monitor, "--node-exporter", "", str(EXPORTERS), str(seconds)]
    return subprocess.Popen(command, stdout=subprocess.PIPE, text=True, env={**os.environ, "TMPDIR": folder})


def children_of(process):
    children = pathlib.Path(f"/proc/{process.pid}/task/{process.pid}/children").read_text().split()
    return children if len(children) == EXPORTERS + 1 else None  # and Prometheus


def runs(number):
    try:
        return pathlib.Path(f"/proc/{number}/stat").read_text().rpartition(")")[2].split()[0] != "Z"
    except FileNotFoundError:
        return False


def check_table(monitor, folder):
    printed = start(monitor, 2, folder).communicate()[0].splitlines()
    expect(len(printed) == 3, f"a table with one row was expected: {printed}")
    name, count, *figures = re.split(r" *\| *", printed[2].strip("| "))
    expect((name, count) == ("halvermonte", str(EXPORTERS)), f"the row is {printed[2]}")
    median, nearly_all, memory, shared, processor = map(float, figures)
    expect(0 < median <= nearly_all < 1000, f"a scrape takes {median} ms, 99 % of them {nearly_all} ms")
    expect(1 < memory < 100 and 0 < shared < memory, f"{memory} MB of memory, {shared} MB of it shared")
    expect(0 < processor < 100, f"{processor} % of a core")


def check_end(monitor, folder, number, status):
    process = start(monitor, 600, folder)
    children = exporters.await_value(lambda: children_of(process), "the fleet to start")
    process.send_signal(number)
    process.communicate()
    expect(process.returncode == status, f"{number!r}: it ends with status {process.returncode}")
    exporters.await_value(lambda: not any(map(runs, children)), f"{number!r}: its programs to end")


def main():
    [_, monitor] = sys.argv
    with tempfile.TemporaryDirectory() as folder:
        check_table(monitor, folder)
        check_end(monitor, folder, signal.SIGINT, 128 + signal.SIGINT)
        check_end(monitor, folder, signal.SIGTERM, 128 + signal.SIGTERM)
        expect(not os.listdir(folder), f"it leaves {os.listdir(folder)}")
        check_end(monitor, folder, signal.SIGKILL, -signal.SIGKILL)


main()
