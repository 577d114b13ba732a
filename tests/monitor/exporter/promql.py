"""Which metrics and labels an expression of Prometheus uses."""
import re

OPERATORS = {"and", "or", "unless", "offset", "bool", "by", "without", "on", "ignoring", "group_left", "group_right"}
NAME = r"[a-zA-Z_:][\w:]*"


def names_in(expression):
    """Returns its metrics and its labels."""
    rest = re.sub(r'"(\\.|[^"\\])*"', '""', expression)
    labels = set(re.findall(rf'({NAME})\s*(?:=~|!~|!=|=)\s*""', rest))
    rest = re.sub(r"\{[^}]*\}|\[[^]]*\]", "", rest)
    lists = r"\b(?:by|without|on|ignoring|group_left|group_right)\s*\(([^)]*)\)"
    for words in re.findall(lists, rest):
        labels.update(re.findall(NAME, words))
    rest = re.sub(lists, "", rest)
    metrics = set(re.findall(rf"\b({NAME})\b(?!\s*\()", rest)) - OPERATORS
    return metrics, labels


def names_of(scrape):
    """Returns the metrics and the labels of a scrape."""
    metrics, labels = set(), set()
    for line in scrape.splitlines():
        if line.startswith("#"):
            continue
        name, _, rest = re.match(rf"({NAME})(\{{(.*)\}})? ", line).groups()
        metrics.add(name)
        labels.update(re.findall(rf'(?:^|,)({NAME})="', rest or ""))
    return metrics, labels
