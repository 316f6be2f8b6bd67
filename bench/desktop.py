"""What the measurements of the running program share: a private desktop, a library, the processes."""
import glob
import os
import re
import subprocess
import sys
import tempfile
import time
from contextlib import contextmanager

ROOT = os.path.dirname(os.path.dirname(os.path.realpath(__file__)))
BUILD = os.path.join(ROOT, "build", "release")
MAKER = os.path.join(BUILD, "bench", "bin", "library_maker")


def enter_private_desktop():
    """Starts the calling script anew on a private desktop, unless it is there already."""
    if "TESSARY_BENCH_DESKTOP" in os.environ:
        return
    os.environ["TESSARY_BENCH_DESKTOP"] = "1"
    rig = os.path.join(ROOT, "tests", "rig", "x11-session")
    os.execv(rig, [rig, os.path.realpath(sys.argv[0]), *sys.argv[1:]])


def read(path):
    try:
        with open(path, encoding="utf-8", errors="replace") as stream:
            return stream.read()
    except OSError:  # the process or thread has just ended
        return ""


def processes(root):
    """The process and everything below it."""
    found = [root]
    for pid in found:
        for path in glob.glob(f"/proc/{pid}/task/*/children"):
            found += [int(child) for child in read(path).split()]
    return found


def peak_megabytes(pid):
    found = re.search(r"^VmHWM:\s+(\d+)", read(f"/proc/{pid}/status"), re.M)
    return int(found.group(1)) / 1024 if found else 0


def wait_for(what, condition, seconds=120, interval=0.1):
    deadline = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > deadline:
            sys.exit(f"{os.path.basename(sys.argv[0])}: {what} did not come within {seconds} s")
        time.sleep(interval)  # lint-allow(sleep): the interval of asking, up to the deadline


class Tessary:
    """The program with folders of its own. It has started once `wait_until_monitoring` returns."""

    def __init__(self, folder, process):
        self.log, self.process, self.pid = f"{folder}/log", process, process.pid
        self.database = f"{folder}/data/Tessary/Tessary.metadata.sqlite3"

    def wait_until_monitoring(self, interval=0.1):
        wait_for("monitoring", lambda: "monitoring started" in read(self.log), interval=interval)


@contextmanager
def library(items):
    """A folder with a library of so many items, gone afterwards."""
    with tempfile.TemporaryDirectory(dir=os.environ["RIG_DIR"]) as folder:
        if items > 0:
            subprocess.run([MAKER, str(items), f"{folder}/data/Tessary"], check=True)
        yield folder


@contextmanager
def running(folder):
    environment = dict(os.environ, XDG_DATA_HOME=f"{folder}/data", XDG_CONFIG_HOME=f"{folder}/config")
    with open(f"{folder}/log", "w", encoding="utf-8") as log, subprocess.Popen(
            [os.path.join(BUILD, "bin", "tessary")], env=environment, stdout=log, stderr=log) as process:
        try:
            yield Tessary(folder, process)
        finally:
            process.terminate()


def item_counts(arguments, default, usage):
    """The numbers of items to measure with; the empty library only while there is no library_maker."""
    if not all(argument.isdigit() for argument in arguments):
        sys.exit(usage)
    counts = [int(argument) for argument in arguments] or default
    if any(counts) and not os.path.exists(MAKER):
        print("library_maker is not built; the empty library only", flush=True)
        return [0]
    return counts
