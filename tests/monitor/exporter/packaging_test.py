#!/usr/bin/env python3
"""packaging_test.py MONITOR: the files for launchd and for an OpenTelemetry collector fit the monitor, as far as
can be seen without either of the two."""
import pathlib
import plistlib
import re
import subprocess
import sys

import yaml

SOURCE = pathlib.Path(__file__).resolve().parents[3]
sys.path.append(str(SOURCE / "scripts"))
import exporters  # noqa: E402

PACKAGING = SOURCE / "packaging"
UNIT = (PACKAGING / "systemd/halvermonte-monitor.service.in").read_text()
LISTEN = re.search(r"^Environment=LISTEN=(.*)", UNIT, re.M)[1]  # the same on every system
# Those of launchd.plist(5) that are in use, and what they have to be.
LAUNCHD_KEYS = {"Label": str, "ProgramArguments": list, "UserName": str, "GroupName": str, "RunAtLoad": bool,
                "KeepAlive": dict, "StandardErrorPath": str}


def expect(condition, complaint):
    if not condition:
        sys.exit(f"FAIL: {complaint}")


def check_launchd(monitor):
    """launchd starts the monitor at the address of the other services, as no privileged user, and again if it
    fails."""
    [path] = (PACKAGING / "launchd").iterdir()
    job = plistlib.loads(path.read_bytes())
    types = {key: type(value) for key, value in job.items()}
    expect(types == LAUNCHD_KEYS, f"{path.name}: its keys are {types}")
    expect(path.name == f"{job['Label']}.plist", f"{path.name}: its label is {job['Label']}")
    expect((job["UserName"], job["GroupName"]) == ("nobody", "nobody"), f"{path.name}: it runs as {job['UserName']}")
    expect(job["RunAtLoad"] and job["KeepAlive"] == {"SuccessfulExit": False}, f"{path.name}: it is not kept alive")
    program, *arguments = job["ProgramArguments"]
    expect(re.fullmatch(r"/.*/halvermonte-monitor", program), f"{path.name}: it starts {program}")
    expect(LISTEN in arguments, f"{path.name}: it does not listen on {LISTEN}")
    with exporters.Children() as children:
        free = [re.sub(r":\d+$", ":0", argument) for argument in arguments]
        address = children.start([monitor, *free, "--machine", "M1"]).address
        expect(exporters.get(address, "/health") == "ok\n", f"{path.name}: its arguments start no exporter")


def check_collector():
    """The collector's receiver takes a configuration of Prometheus, which promtool checks. What else is in the
    file is a pipeline whose parts are there."""
    text = (PACKAGING / "opentelemetry/halvermonte-collector.yaml").read_text()
    page = (SOURCE / "docs/metrics.md").read_text()
    expect(f"\n```yaml\n{text}```\n" in page, "docs/metrics.md has another configuration than collector.yaml")
    config = yaml.safe_load(text)
    with exporters.Children() as children:
        scraping = children.folder / "prometheus.yml"
        scraping.write_text(yaml.safe_dump(config["receivers"]["prometheus"]["config"]))
        checked = subprocess.run(["promtool", "check", "config", scraping], capture_output=True, text=True)
        expect(checked.returncode == 0, f"collector.yaml: {checked.stdout}{checked.stderr}")
    [job] = config["receivers"]["prometheus"]["config"]["scrape_configs"]
    expect(job["job_name"] == "halvermonte", "collector.yaml: the alerts and the dashboard have another job")
    expect(job["static_configs"] == [{"targets": [LISTEN]}], f"collector.yaml: it does not scrape {LISTEN}")
    expect(job.get("metrics_path", "/metrics") == "/metrics", "collector.yaml: another path")
    expect(set(config) == {"receivers", "exporters", "service"}, f"collector.yaml: it has {set(config)}")
    for pipeline in config["service"]["pipelines"].values():
        for part in ("receivers", "exporters"):
            expect(pipeline[part] == list(config[part]), f"collector.yaml: {pipeline[part]} of {list(config[part])}")
    expect(config["exporters"]["otlp"]["endpoint"].endswith(":4317"), "collector.yaml: not the port of OTLP")


def main():
    [_, monitor] = sys.argv
    check_launchd(monitor)
    check_collector()


main()
