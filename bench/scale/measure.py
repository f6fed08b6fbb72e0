#!/usr/bin/env python3
"""Measures a batch over many scenes: a first call, a second one with nothing changed, memory, and how both grow.

Usage: bench/scale/measure.py PROGRAM FOLDER [--small N...] [--large N] [--jobs N...]

FOLDER is filled with scenes by make_scenes.py and removed at the end. For each number of scenes and each number of
jobs a row is printed: wall and processor seconds of the first and of the second call, processor seconds of `zyrexport
batch` and `ninja` themselves, scenes a second, and the most memory that the two ever held.
"""

import argparse
import os
import pathlib
import shutil
import subprocess
import sys
import threading
import time

HERE = pathlib.Path(__file__).resolve().parent
TICKS = os.sysconf("SC_CLK_TCK")


class Watch(threading.Thread):
    """The largest memory and the processor time of a process and of the first ninja below it."""

    def __init__(self, pid):
        super().__init__(daemon=True)
        self.pid, self.memory, self.own_time, self.ended = pid, {}, {}, threading.Event()

    def look(self, pid, name):
        try:
            status = pathlib.Path(f"/proc/{pid}/status").read_text()
            fields = pathlib.Path(f"/proc/{pid}/stat").read_text().rsplit(")", 1)[1].split()
        except (OSError, IndexError):
            return
        for line in status.splitlines():
            if line.startswith("VmHWM:"):
                self.memory[name] = max(self.memory.get(name, 0), int(line.split()[1]))
        self.own_time[name, pid] = (int(fields[11]) + int(fields[12])) / TICKS

    def run(self):
        while not self.ended.wait(0.02):
            self.look(self.pid, "batch")
            try:
                children = pathlib.Path(f"/proc/{self.pid}/task/{self.pid}/children").read_text().split()
            except OSError:
                return
            for child in children:
                self.look(child, "ninja")

    def time_of(self, name):
        return sum(seconds for (of, _), seconds in self.own_time.items() if of == name)


def call(program, folder, jobs):
    words = [program, "batch", str(folder / "art"), "--resource-root", str(folder / "game"), "--config",
             str(folder / "config"), "--build", str(folder / "build"), "--quiet", "-j", str(jobs)]
    before, begin = os.times(), time.monotonic()
    process = subprocess.Popen(words, stdout=subprocess.PIPE, text=True)
    watch = Watch(process.pid)
    watch.start()
    last = process.communicate()[0].splitlines()[-1]
    watch.ended.set()
    after = os.times()
    if process.returncode != 0:
        sys.exit(f"{' '.join(words)}: exit status {process.returncode}: {last}")
    spent = after.children_user + after.children_system - before.children_user - before.children_system
    return time.monotonic() - begin, spent, watch, last


def measure(program, folder, small, large, jobs):
    shutil.rmtree(folder, ignore_errors=True)
    subprocess.run([str(HERE / "make_scenes.py"), str(folder / "art"), "--small", str(small), "--large", str(large)],
                   check=True)
    (folder / "game").mkdir()
    first_wall, first_spent, first, _ = call(program, folder, jobs)
    second_wall, second_spent, second, told = call(program, folder, jobs)
    count = small + large
    if f"0 exported, {count} up to date" not in told:
        sys.exit(f"the second call: {told}")
    print(f"| {small} small, {large} large | {jobs} | {first_wall:.1f} | {first_spent:.1f} | {count / first_wall:.1f} "
          f"| {second_wall:.2f} | {second_spent:.2f} "
          f"| {second.time_of('batch') * 1e3 / count:.2f} / {second.time_of('ninja') * 1e3 / count:.2f} "
          f"| {max(first.memory['batch'], second.memory['batch']) / 1024:.0f} "
          f"| {max(first.memory.get('ninja', 0), second.memory.get('ninja', 0)) / 1024:.0f} |", flush=True)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program")
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("--small", type=int, nargs="*", default=[100, 1000, 10000])
    parser.add_argument("--large", type=int, default=0)
    parser.add_argument("--jobs", type=int, nargs="*", default=[2])
    wanted = parser.parse_args()
    print("| scenes | jobs | first call, s | processor, s | scenes a second | second call, s | processor, s "
          "| ms a scene, batch / ninja | batch, MB | ninja, MB |\n" + "|---" * 10 + "|", flush=True)
    for small in wanted.small:
        for jobs in wanted.jobs:
            measure(str(pathlib.Path(wanted.program).resolve()), wanted.folder.resolve(), small, wanted.large, jobs)
    shutil.rmtree(wanted.folder, ignore_errors=True)


if __name__ == "__main__":
    main()
