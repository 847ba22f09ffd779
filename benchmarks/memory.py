#!/usr/bin/env python3
"""memory.py BUILD: the bytes of one of many, the resident size of the example monitor, the sizes of the libraries, and what a program
takes from its start to main and to its end for what it is linked with. Prints the tables of docs/performance.md; ./bench --memory builds
what it needs and runs this."""
import collections
import os
import re
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

STARTS = 200
DEADLINE = 30


def objects(build):
    """Bytes by the name of what takes them, ours first."""
    lines = subprocess.run([build / "bin/kelgen_memory"], capture_output=True, text=True, check=True).stdout.splitlines()
    found = collections.defaultdict(dict)
    for line in lines:
        name, whose, size = line.split("\t")
        found[name][whose] = size
    print("| one of 10 000 | ours, bytes | others |\n|---|---|---|")
    for name, sizes in found.items():
        print("| %s | %s | %s |" % (name, sizes.pop("kelgen"), ", ".join("%s %s" % other for other in sizes.items())))


def in_kilobytes(path, fields):
    text = Path(path).read_text()
    return [int(re.search(r"^%s:\s+(\d+) kB" % field, text, re.M).group(1)) for field in fields]


def monitor(build):
    with tempfile.TemporaryDirectory(prefix="kelgen-memory-") as root:
        folder = Path(root, "folder")
        folder.mkdir()
        (folder / "file.txt").write_text("content")
        process = subprocess.Popen([build / "bin/monitor", folder], env={**os.environ, "KELGEN_HOME": root}, stdout=subprocess.PIPE, text=True)
        for line in process.stdout:
            if line.startswith("scanned 100"):
                break
        resident, own = in_kilobytes("/proc/%d/smaps_rollup" % process.pid, ["Rss", "Private_Dirty"])
        process.terminate()
        process.wait(timeout=DEADLINE)
    print("\nThe example monitor with its window and a watched folder: %.1f MB resident, of which it has written %.1f MB." % (
        resident / 1024, own / 1024))


def libraries(build):
    print("\n| library | KB, stripped | code and constants | data |\n|---|---|---|---|")
    for path in sorted((build / "lib").glob("libkelgen*.so")):
        with tempfile.NamedTemporaryFile() as stripped:
            subprocess.run(["strip", "-o", stripped.name, path], check=True)
            text, data, bss = subprocess.run(["size", path], capture_output=True, text=True, check=True).stdout.splitlines()[1].split()[:3]
            print("| %s | %d | %d | %d |" % (path.name, os.stat(stripped.name).st_size // 1024, int(text) // 1024,
                                             (int(data) + int(bss)) // 1024))


def starts(build):
    print("\n| a program that is linked with | from its start to its end | instructions to main and back | relocations |\n|---|---|---|---|")
    for path in sorted((build / "bin").glob("start_*")):
        times = []
        for _ in range(STARTS):
            begin = time.perf_counter()
            subprocess.run([path], check=True)
            times.append(time.perf_counter() - begin)
        with tempfile.TemporaryDirectory() as folder:
            ran = subprocess.run(["valgrind", "--tool=callgrind", "--callgrind-out-file=" + folder + "/out", path], capture_output=True, text=True,
                                 check=True)
        count = int(re.search(r"Collected : (\d+)", ran.stderr).group(1))
        usage = subprocess.run([path], env={**os.environ, "LD_DEBUG": "statistics"}, capture_output=True, text=True).stderr
        relocations = re.search(r"relocations: (\d+)", usage)
        print("| %s | %.2f ms | %.2f million | %s |" % (path.name.removeprefix("start_"), 1000 * statistics.median(times),
                                                                   count / 1e6, relocations.group(1) if relocations else ""))


def main():
    build = Path(sys.argv[1])
    objects(build)
    monitor(build)
    libraries(build)
    starts(build)


main()
