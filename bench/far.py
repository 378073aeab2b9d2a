# SPDX-License-Identifier: GPL-2.0-or-later
"""A disk far away, on which each question takes some time, and the table of what was measured there."""

import concurrent.futures
import os
import signal
import statistics
import subprocess
import time

SLOW_DISK = os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))), "build", "release", "tests", "slow_disk")


class FarDisk:
    """Views of `photos` pictures of 12 megapixels in one folder."""

    def __init__(self, root, trees, photos):
        self.photos = photos
        self.pictures, self.view, self.counts = (os.path.join(root, name) for name in ("far", "view", "counts"))
        os.mkdir(self.view)
        for count, folder in ((photos, self.source(photos)), (19, self.source(19))):
            os.makedirs(folder, exist_ok=True)
            for path in trees.flat_photos[:count]:
                if not os.path.exists(os.path.join(folder, os.path.basename(path))):
                    os.link(path, os.path.join(folder, os.path.basename(path)))

    def source(self, photos):
        return f"{self.pictures} {photos}"

    @staticmethod
    def can_be_made():
        return subprocess.run([SLOW_DISK, "--try"], stderr=subprocess.DEVNULL).returncode == 0

    def run(self, contender, milliseconds=5, photos=None):
        """The contender's figures, with the questions about each picture by kind beside them, from a view whose answers
        are all forgotten."""
        source = self.source(photos or self.photos)
        names = sorted(os.listdir(source))
        with open(os.devnull) as nothing:
            disk = subprocess.Popen([SLOW_DISK, source, self.view, str(milliseconds), self.counts], stdin=nothing)
        try:
            while not os.path.ismount(self.view):
                time.sleep(0.05)
            paths = [os.path.join(self.view, name) for name in names]
            self.meet(paths)
            disk.send_signal(signal.SIGUSR1)
            figures = dict(contender(self.view, paths))
        finally:
            disk.terminate()
            disk.wait()
        figures["questions"] = {}
        for line in open(self.counts):
            question, count, path = line.rstrip("\n").split(" ", 2)
            # Whether a file has attributes is asked by the system for its own protection.
            if path.lstrip("/") in names and question != "getxattr":
                figures["questions"][question] = figures["questions"].get(question, 0) + int(count) / len(names)
        return figures


    @staticmethod
    def meet(paths):
        """Has each file seen once, and that forgotten. Such a view lets the names in a folder be learned one after the
        other only, which file systems of the system's own do not, and all contenders would wait for that alone."""
        with concurrent.futures.ThreadPoolExecutor(32) as threads:
            list(threads.map(os.lstat, paths))
        time.sleep(1.5)


def far_table(far):
    if far is None:
        print("\nNo disk far away: this machine lets no program make a file system (/dev/fuse).")
        return
    print(f"\n| {far['photos']} pictures of 12 megapixels, 5 ms a question | Time | Longest pause of the window | "
          "Questions a file |\n|---|---|---|---|")
    for what, runs in far["near"].items():
        row(what, runs)
    print("\n| 19 pictures, 1,000 ms a question | Time | Longest pause of the window | Questions a file |\n|---|---|---|---|")
    for what, runs in far["distant"].items():
        row(what, runs)


def row(what, runs):
    pauses = [run["longest_pause_ms"] for run in runs if "longest_pause_ms" in run]
    pause = f"{max(pauses):.0f} ms" if pauses else ""
    asked = ", ".join(f"{count:.1f} {question}" for question, count in sorted(runs[-1]["questions"].items()))
    print(f"| {what} | {statistics.median(run['seconds'] for run in runs):.2f} s | {pause} | {asked} |")
