#!/usr/bin/env python3
"""expressions_test.py MONITOR: whoever watches the exporter with the dashboard, the alerts or the page finds
what they name. A Prometheus that scrapes every bundled machine answers each expression."""
import json
import pathlib
import re
import socket
import sys

import yaml

SOURCE = pathlib.Path(__file__).resolve().parents[3]
sys.path.append(str(SOURCE / "scripts"))
import exporters  # noqa: E402
import promql  # noqa: E402

DASHBOARD = json.loads((SOURCE / "packaging/grafana/halvermonte-dashboard.json").read_text())
RULES = yaml.safe_load((SOURCE / "packaging/prometheus/halvermonte.rules.yml").read_text())
PAGE = (SOURCE / "docs/metrics.md").read_text()
# What Prometheus itself adds.
ITS_METRICS, ITS_LABELS = {"up"}, {"job", "instance"}
GROUPS = {"CPU", "GPU", "Memory", "Drives", "Power", "Air and board", "Other"}
# A fan that stands still, and a sensor that gives no reading after the first pass.
FAILING = {"name": "Failing", "ticks": [
    {"smc": {"keys": {"TC0P": {"type": "sp78", "value": 80}, "FNum": {"type": "ui8 ", "value": 1},
                      "F0Ac": {"type": "fpe2", "value": 0}}},
     "drives": [{"Bytes (Read)": 1000, "Bytes (Write)": 2000}]},
    {"smc": {"keys": {"TC0P": None, "FNum": {"type": "ui8 ", "value": 1}, "F0Ac": {"type": "fpe2", "value": 0}}}}]}

failures = []


def expect(condition, complaint):
    if not condition:
        failures.append(complaint)


def stop_if_failed():
    if failures:
        sys.exit("\n".join(f"FAIL: {complaint}" for complaint in failures))


def filled_in(text):
    """The text with the dashboard's variables as Grafana fills them in when all computers are chosen."""
    values = {"__rate_interval": "10s"}
    for variable in DASHBOARD["templating"]["list"]:
        values[variable["name"]] = variable["query"] if variable["type"] == "constant" else ".+"
    return re.sub(r"\$\{?(\w+)\}?", lambda found: values[found[1]], text)


def panels():
    """The expressions of each panel, by its title."""
    return {panel["title"]: [filled_in(target["expr"]) for target in panel["targets"]]
            for panel in DASHBOARD["panels"]}


def alerts():
    return {rule["alert"]: [rule["expr"]] for group in RULES["groups"] for rule in group["rules"]}


def page():
    """The right-hand column of the table for those who come from other metrics."""
    table = re.search(r"\| there \| here \|\n(?:\|.*\n)+", PAGE)[0]
    return [re.findall(r"`([^`]*)`", row.split(" | ")[1]) for row in table.splitlines()[2:]]


def asked_for():
    """What variables, legends and messages ask for: a metric, if there is one, and its label."""
    for variable in DASHBOARD["templating"]["list"]:
        if variable["type"] == "query":
            yield re.fullmatch(r"label_values\((.*), (\w+)\)", filled_in(variable["query"]["query"])).groups()
    for panel in DASHBOARD["panels"]:
        for target in panel["targets"]:
            for label in re.findall(r"\{\{(\w+)\}\}", target.get("legendFormat", "")):
                yield "up", label
    for group in RULES["groups"]:
        for rule in group["rules"]:
            for label in re.findall(r"\$labels\.(\w+)", rule["annotations"]["summary"]):
                yield "up", label


def check_names(scrape):
    metrics, labels = promql.names_of(scrape)
    metrics |= ITS_METRICS
    labels |= ITS_LABELS
    expressions = [("dashboard", e) for all_of in panels().values() for e in all_of]
    expressions += [("alerts", e) for all_of in alerts().values() for e in all_of]
    expressions += [("what is shown", f"count by ({label}) ({metric})") for metric, label in asked_for()]
    for where, expression in expressions:
        used_metrics, used_labels = promql.names_in(expression)
        expect(used_metrics <= metrics, f"{where}: not exported: {used_metrics - metrics} of {expression}")
        expect(used_labels <= labels, f"{where}: no label: {used_labels - labels} of {expression}")
        expect(used_metrics, f"{where}: no metric is found in {expression}")
    for row in page():
        expect(row, "docs/metrics.md: a row names nothing that is here")
        for text in row:
            used_metrics, used_labels = promql.names_in(text)
            expect(used_metrics <= metrics | labels and used_labels <= labels, f"docs/metrics.md: not exported: {text}")


def check_answers(prometheus):
    """Every expression of the dashboard finds something, and those of the alerts do not fail."""
    for title, expressions in panels().items():
        for expression in expressions:
            itself = expression.removesuffix(" or vector(0)")
            exporters.await_value(lambda: prometheus.query(itself), f"the panel {title}: {itself}")
    for expressions in alerts().values():
        for expression in expressions:
            prometheus.query(expression)


def check_groups(prometheus, addresses):
    """Each temperature is in the panel of its group, and in no other."""
    for address in addresses:
        temperatures = json.loads(exporters.get(address, "/readings"))["temperatures"]
        for group in GROUPS:
            shown = [sample["metric"]["hw_id"] for expression in panels()[group]
                     for sample in prometheus.query(expression) if sample["metric"]["instance"] == address]
            wanted = [each["id"] for each in temperatures if each["group"] == group and each["read"]]
            expect(sorted(shown) == sorted(wanted),
                   f"{address}: the panel {group}, too many or too few: {set(shown) ^ set(wanted)}")


def check_layout():
    """No panel covers another or is beyond the edge, and none has the number of another."""
    covered = [(x, y) for panel in DASHBOARD["panels"] for place in [panel["gridPos"]]
               for x in range(place["x"], place["x"] + place["w"])
               for y in range(place["y"], place["y"] + place["h"])]
    expect(len(covered) == len(set(covered)), "the dashboard: a panel covers another")
    expect(max(x for x, _ in covered) < 24, "the dashboard: a panel is beyond the edge")
    numbers = [panel["id"] for panel in DASHBOARD["panels"]]
    expect(len(numbers) == len(set(numbers)), "the dashboard: two panels have one number")


def check_variables():
    """Everything asks the source that one chooses, and what is hidden is what Grafana fills in."""
    variables = DASHBOARD["templating"]["list"]
    [source] = [variable["name"] for variable in variables if variable["type"] == "datasource"]
    for asking in [*DASHBOARD["panels"], *(variable for variable in variables if variable["type"] == "query")]:
        expect(asking["datasource"] == {"type": "prometheus", "uid": f"${{{source}}}"},
               f"the dashboard: {asking.get('title', asking.get('name'))} asks another source than it lets one choose")
    for variable in variables:
        if variable["type"] == "constant":
            expect(variable["current"]["value"] == variable["query"], f"the dashboard: ${variable['name']} is two")


def main():
    [_, monitor] = sys.argv
    with exporters.Children() as children, socket.socket() as closed:
        closed.bind(("127.0.0.1", 0))  # an exporter that does not answer
        failing = children.folder / "failing.json"
        failing.write_text(json.dumps(FAILING))
        started = [children.start([monitor, "--listen", "0", "--interval", "0.2", "--machine", machine])
                   for machine in [*exporters.machines(monitor), failing]]
        addresses = [child.address for child in started]
        prometheus = children.start_prometheus(
            {"halvermonte": [*addresses, f"127.0.0.1:{closed.getsockname()[1]}"]})
        exporters.await_value(
            lambda: len(prometheus.query("increase(halvermonte_passes_total[10s]) > 0")) == len(addresses),
            "Prometheus to scrape all exporters twice")
        check_names("".join(exporters.get(address, "/metrics") for address in addresses))
        check_layout()
        check_variables()
        stop_if_failed()
        check_answers(prometheus)
        check_groups(prometheus, addresses)
    stop_if_failed()


main()
