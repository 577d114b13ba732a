"""Number and text rules that the engine and the machine share."""

import math
import re
import struct
from fractions import Fraction

INT32_MIN, INT32_MAX = -(2**31), 2**31 - 1
INT64_MAX = 2**63 - 1
UINT64_MASK = 2**64 - 1

# What the bytes 0x80 to 0xFF of a fan's name mean; the two last are unassigned.
NEXTSTEP_HIGH = (
  "\u00a0ÀÁÂÃÄÅÇÈÉÊËÌÍÎ"
  "ÏÐÑÒÓÔÕÖÙÚÛÜÝÞµ×÷"
  "©¡¢£\u2044¥ƒ§¤\u2019\u201c«\u2039\u203a\ufb01\ufb02"
  "®\u2013†‡·¦¶•\u201a\u201e\u201d»…‰¬¿"
  "¹\u02cb\u00b4\u02c6\u02dc\u00af\u02d8\u02d9\u00a8²\u02da\u00b8³\u02dd\u02db\u02c7"
  "\u2014±¼½¾àáâãäåçèéêë"
  "ìÆíªîïðñŁØŒºòóôõ"
  "öæùúûıüýłøœßþÿ\ufffd\ufffd"
)


def float32(value):
  """A number rounded once to the nearest 32-bit float, ties to even, integers exactly."""
  if isinstance(value, int):
    return float32_of_integer(value)
  try:
    return struct.unpack("=f", struct.pack("=f", value))[0]
  except OverflowError:
    return math.copysign(math.inf, value)


def float32_of_integer(value):
  magnitude = abs(value)
  shift = max(magnitude.bit_length() - 24, 0)
  quotient = round(Fraction(magnitude, 1 << shift))  # Python rounds halves to even
  return math.copysign(float(quotient << shift), value) if value else 0.0


def truncated(value, lowest, highest):
  """Toward zero; what does not fit becomes the nearest end of the range, no number becomes 0."""
  if math.isnan(value):
    return 0
  if value <= lowest:
    return lowest
  if value >= highest:
    return highest
  return int(value)


def int32(value):
  return truncated(value, INT32_MIN, INT32_MAX)


def round_half_away(value):
  """The nearest integer, halves away from zero, judged on the exact value."""
  whole = math.floor(abs(Fraction(value)) + Fraction(1, 2))
  return -whole if value < 0 else whole


def byte_count_text(count):
  if count < 0:
    return "-" + byte_count_text(-count)
  if count == 0:
    return "Zero KB"
  if count == 1:
    return "1 byte"
  if count < 1000:
    return f"{count} bytes"
  unit_size = 1000
  for unit, digits in (("KB", 0), ("MB", 1), ("GB", 2), ("TB", 2), ("PB", 2), ("EB", 2)):
    scaled = round(Fraction(count * 10**digits, unit_size))  # halves to even
    if scaled < 1000 * 10**digits:
      return f"{decimal_text(scaled, digits)} {unit}"
    unit_size *= 1000
  raise ValueError(f"{count} is no 64-bit count")


def decimal_text(scaled, digits):
  text = str(scaled).rjust(digits + 1, "0")
  if digits == 0:
    return text
  return f"{text[:-digits]}.{text[-digits:]}".rstrip("0").rstrip(".")


def standard_order(text):
  """Sort key of display names: case ignored in ASCII, runs of digits by value, the rest by code
  point. Of names that are equal then, more leading zeros come first, then the lower code point."""
  parts, zeros = [], []
  for run in re.findall(r"[0-9]+|[^0-9]", text):
    if run[0] in "0123456789":
      parts.append((ord("0"), int(run)))
      zeros.append(len(run.lstrip("0")) - len(run))
    else:
      parts.append((ord(run.lower() if run.isascii() else run), 0))
  return parts, zeros, text


def nextstep_text(raw):
  """The text before the first NUL."""
  return "".join(
    chr(byte) if byte < 0x80 else NEXTSTEP_HIGH[byte - 0x80] for byte in raw.split(b"\0")[0]
  )
