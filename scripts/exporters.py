"""Starts exporters and a Prometheus that scrapes them. Nothing of it stays behind."""
import collections
import json
import pathlib
import re
import signal
import socket
import subprocess
import sys
import tempfile
import time
import urllib.error
import urllib.parse
import urllib.request

PATIENCE = 60  # seconds
SOURCE = pathlib.Path(__file__).resolve().parent.parent
# Its collectors that read what the monitor reads, and no series about itself.
NODE_EXPORTER = ["--collector.disable-defaults", "--collector.hwmon", "--collector.thermal_zone",
                 "--collector.diskstats", "--web.disable-exporter-metrics", "--web.listen-address=127.0.0.1:0"]
SLOW_SENSOR = 'hw_temperature_celsius{hw_id="gpu-die"'
SIGNALS = (signal.SIGINT, signal.SIGTERM, signal.SIGHUP)
LISTENING = re.compile(r'[Ll]istening on(?: http://|" address=)([^/\s]+)')


def await_value(find, what):
    """Returns what `find` returns once that is true."""
    end = time.monotonic() + PATIENCE
    while not (found := find()):
        if time.monotonic() > end:
            sys.exit(f"waited in vain for {what}")
        time.sleep(0.05)
    return found


def get(address, path):
    with urllib.request.urlopen(f"http://{address}{path}", timeout=PATIENCE) as answer:
        return answer.read().decode()


def machines(monitor):
    """The names of the simulated machines that come with it."""
    listed = subprocess.run([monitor, "--machine", "list"], check=True, capture_output=True, text=True).stdout
    return [re.split(r"  +", line)[0] for line in listed.splitlines()]


def lay_out_server(folder):
    subprocess.run([SOURCE / "scripts/lay-out-tree", SOURCE / "tests/linux/trees/server.tree", folder], check=True)
    (folder / "proc").mkdir(exist_ok=True)
    return folder


def add_slow_sensor(tree):
    """One that the library of slow drivers knows by its folder's name."""
    chip = tree / "sys/devices/platform/takes-two-seconds/hwmon/hwmon99"
    chip.mkdir(parents=True)
    (chip / "name").write_text("amdgpu\n")
    (chip / "temp1_input").write_text("50000\n")
    (chip / "device").symlink_to(chip.parents[1])
    (tree / "sys/class/hwmon/hwmon99").symlink_to(chip)


ScrapeTimes = collections.namedtuple("ScrapeTimes", "median nearly_all longest")


def scrape(scrapers, address, clients, addresses, scrapes):
    """What scrapes by so many clients at once took, in milliseconds; 99 % of them `nearly_all` or less."""
    command = [scrapers, address.rpartition(":")[2], str(clients), str(addresses), str(scrapes)]
    printed = subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout
    return ScrapeTimes(*map(float, printed.split()))


def end_on_signals():
    """Signals end this program as an exception does, so that "with" blocks end, too."""
    for number in SIGNALS:
        signal.signal(number, lambda received, _: sys.exit(128 + received))


class Child:
    """A running program. What it says is in a file."""

    def __init__(self, command, said):
        self.said = said
        with open(said, "wb") as file:
            # It has a session of its own, so that Ctrl-C is for this program alone, and ends with it.
            self.process = subprocess.Popen(["setpriv", "--pdeathsig", "KILL", *command],
                                            stdout=file, stderr=file, start_new_session=True)

    @property
    def address(self):
        """The HOST:PORT that it says that it listens on."""
        return await_value(lambda: LISTENING.search(self._text()), "an exporter to listen")[1]

    def await_metric(self, beginning):
        """Waits until a scrape has such a line."""
        await_value(lambda: "\n" + beginning in get(self.address, "/metrics"), beginning)

    def processor_seconds(self):
        tasks = pathlib.Path(f"/proc/{self.process.pid}/task").iterdir()
        return sum(int((task / "schedstat").read_text().split()[0]) for task in tasks) / 1e9

    def _text(self):
        text = self.said.read_text()
        if self.process.poll() is not None:
            sys.exit(f"{self.process.args[3]} ended with status {self.process.returncode}: {text[-1000:]}")
        return text


class Children:
    """The programs that are started in a "with" block. They end with it, also on Ctrl-C or SIGTERM."""

    def __enter__(self):
        end_on_signals()
        self._folder = tempfile.TemporaryDirectory()
        self.folder = pathlib.Path(self._folder.name)
        self._all = []
        return self

    def __exit__(self, *_):
        former = [signal.signal(number, signal.SIG_IGN) for number in SIGNALS]
        for child in self._all:
            child.process.terminate()
        for child in self._all:
            try:
                child.process.wait(10)
            except subprocess.TimeoutExpired:
                child.process.kill()
                child.process.wait()
        self._folder.cleanup()
        for number, handler in zip(SIGNALS, former):
            signal.signal(number, handler)

    def start(self, command):
        child = Child(command, self.folder / f"said-{len(self._all)}")
        self._all.append(child)
        return child

    def start_over(self, tree, monitor, slow_drivers=None):
        """The monitor over a computer that is laid out there."""
        preloaded = [f"LD_PRELOAD={slow_drivers}"] if slow_drivers else []
        return self.start(["env", *preloaded, monitor, "--listen", "0", "--machine", "host",
                           "--sys", tree / "sys", "--proc", tree / "proc"])

    def start_node_exporter(self, tree, program):
        """The same for node_exporter, but with the disks of this computer."""
        return self.start([program, *NODE_EXPORTER, f"--path.sysfs={tree}/sys"])

    def start_prometheus(self, jobs):
        """One that scrapes every second. `jobs` has the addresses of each job by its name."""
        config = {"global": {"scrape_interval": "1s"},
                  "scrape_configs": [{"job_name": name, "static_configs": [{"targets": targets}]}
                                     for name, targets in jobs.items()]}
        (self.folder / "prometheus.yml").write_text(json.dumps(config))  # which is YAML, too
        with socket.create_server(("127.0.0.1", 0)) as free:
            port = free.getsockname()[1]
        child = self.start(["prometheus", f"--config.file={self.folder}/prometheus.yml",
                            f"--storage.tsdb.path={self.folder}/data", f"--web.listen-address=127.0.0.1:{port}"])
        await_value(lambda: "Server is ready" in child._text(), "Prometheus to start")
        return Prometheus(f"http://127.0.0.1:{port}")


class Prometheus:
    def __init__(self, url):
        self._url = url

    def query(self, expression):
        """Returns the result, or exits with what Prometheus has against the expression."""
        form = urllib.parse.urlencode({"query": expression}).encode()
        try:
            with urllib.request.urlopen(f"{self._url}/api/v1/query", form, PATIENCE) as answer:
                return json.load(answer)["data"]["result"]
        except urllib.error.HTTPError as problem:
            sys.exit(f"{expression}\n{json.load(problem)['error']}")
