#!/usr/bin/env python3
"""Runs the monitor over machine files and compares each field of each line with the model's.

With FILEs: those. Without: random machines, numbered from the seed on. A machine that shows a
difference is kept, and the exit status is 1.
"""

import argparse
import json
import multiprocessing
import os
import re
import shutil
import subprocess
import sys
import tempfile
from datetime import datetime, timedelta, timezone

import machines
import model
from values import float32

FLOAT32_PROPERTIES = {"diskIO_speedRead", "diskIO_speedWrite", "diskIO_activitiesMax"}
SORTED_PROPERTIES = {"sensors", "fans", "bluetooth_devices", "bluetooth_devicesTypes"}
PASSES_AFTER_THE_LAST_TICK = 2
SHOWN_DIFFERENCES = 5
LONGEST_RUN = 120  # seconds
WRONG_USE = 2  # exit status
EPOCH = datetime(1970, 1, 1, tzinfo=timezone.utc)
TIMESTAMP = re.compile(r"\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z")


def object_without_duplicates(pairs):
  members = dict(pairs)
  if len(members) != len(pairs):
    raise ValueError("an object has a member twice")
  return members


def output_of(monitor, path, passes):
  command = [monitor, "--machine", path, "--format", "json", "--ticks", str(passes)]
  return subprocess.run(command + ["--interval", "0"], capture_output=True, timeout=LONGEST_RUN)


def differences(monitor, path, processor):
  """One line for each field in which the monitor and the model differ."""
  with open(path, encoding="utf-8") as file:
    description = json.load(file)
  passes = len(description["ticks"]) + PASSES_AFTER_THE_LAST_TICK
  expected = model.run(description, passes, processor)
  try:
    ran = output_of(monitor, path, passes)
  except subprocess.TimeoutExpired:
    return [f"still running after {LONGEST_RUN} s"]
  text = ran.stdout.decode()
  if text and not text.endswith("\n"):
    return [f"the last line has no end: {text[-200:]!r}"]
  try:
    lines = [
      json.loads(line, object_pairs_hook=object_without_duplicates)
      for line in text.split("\n")[:-1]
    ]
  except ValueError as error:
    return [f"output is not JSON lines: {error}"]
  found = list(ending_differences(expected, lines, ran))
  for want, got in zip(expected, lines):
    if "record" in want:
      found += line_differences(want, got)
  return found


def ending_differences(expected, lines, ran):
  # A pass that would end the process makes the monitor refuse the whole file.
  ends = "ends" in expected[-1]
  status = WRONG_USE if ends else 0
  if ran.returncode != status:
    message = ran.stderr.decode(errors="replace").strip().splitlines()[-1:]
    yield f"exit status: expected {status}, found {ran.returncode} {message}"
  count = 0 if ends else len(expected)
  if len(lines) != count:
    yield f"lines: expected {count}, found {len(lines)}"


def line_differences(want, got):
  tick = want["tick"]
  if list(got) != ["tick", "record"] or got["tick"] != tick:
    yield f"tick {tick}: expected a record, found {json.dumps(got)[:200]}"
    return
  if list(got["record"]) != list(want["record"]):
    yield f"tick {tick}: the record's properties or their order differ"
  for name, value in want["record"].items():
    found = got["record"].get(name, "no such property")
    if not same(name, value, found):
      yield f"tick {tick}: {name}: expected {value!r}, found {found!r}"


def same(name, want, got):
  if name == "appsUpdateTime":
    return same_time(want, got)
  if name in FLOAT32_PROPERTIES:
    return type(got) in (int, float) and float32(float(got)) == want
  if name in SORTED_PROPERTIES and list(got) != sorted(got, key=lambda key: key.encode()):
    return False
  return same_value(want, got)


def same_value(want, got):
  """Equal, and of one type: false is not 0, and 1 is not 1.0."""
  if isinstance(want, list) and isinstance(got, list):
    return len(want) == len(got) and all(map(same_value, want, got))
  return type(want) is type(got) and want == got


def same_time(want, got):
  """To the millisecond, rounded or cut off."""
  if not TIMESTAMP.fullmatch(got):
    return False
  found = datetime.fromisoformat(got.replace("Z", "+00:00")) - EPOCH
  return abs(found - timedelta(seconds=want)) <= timedelta(milliseconds=1)


def check_file(task):
  path, arguments = task
  return path, differences(arguments.monitor, path, arguments.processor)


def check_seed(task):
  """The path of the machine where it differs; it is removed where it does not."""
  seed, arguments = task
  path = os.path.join(arguments.keep, f"machine-{seed}.json")
  machines.write(machines.machine(seed), path)
  found = differences(arguments.monitor, path, arguments.processor)
  if not found:
    os.remove(path)
  return path, found


def report(path, found, arguments):
  print(f"{path}: {len(found)} differences")
  for difference in found[:SHOWN_DIFFERENCES]:
    print(f"  {difference}")
  print(
    f"  again: {sys.argv[0]} --monitor {arguments.monitor} --processor {arguments.processor} {path}"
  )


def parse_arguments():
  parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
  parser.add_argument("--monitor", default="halvermonte-monitor", help="the program to run")
  parser.add_argument("--processor", default="x86_64", choices=["x86_64", "arm64"])
  parser.add_argument("--count", type=int, default=300, help="how many random machines")
  parser.add_argument("--seed", type=int, default=0, help="the number of the first one")
  parser.add_argument("--keep", help="folder for machines that differ (default: a new one)")
  parser.add_argument("files", nargs="*", metavar="FILE", help="machine files instead")
  arguments = parser.parse_args()
  if not shutil.which(arguments.monitor):
    parser.error(f"{arguments.monitor}: no such program")
  if not arguments.keep:
    arguments.keep = tempfile.mkdtemp(prefix="model-")
  os.makedirs(arguments.keep, exist_ok=True)
  return arguments


def main():
  arguments = parse_arguments()
  check, inputs = check_file, arguments.files
  if not inputs:
    check, inputs = check_seed, range(arguments.seed, arguments.seed + arguments.count)
  differing = 0
  with multiprocessing.Pool(2) as pool:
    for path, found in pool.imap(check, [(each, arguments) for each in inputs]):
      if found:
        differing += 1
        report(path, found, arguments)
  if not os.listdir(arguments.keep):
    os.rmdir(arguments.keep)
  print(f"{len(inputs)} machines, {differing} differ")
  return 1 if differing else 0


if __name__ == "__main__":
  sys.exit(main())
