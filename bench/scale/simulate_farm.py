#!/usr/bin/env python3
"""A farm of many machines on one file server, played through: what bounds it, and from how many machines on.

Usage: bench/scale/simulate_farm.py [--cores N] [--megabytes N] [--operations N] [--cold] ...

Each core of each machine takes the next scene, asks the server for its files, computes, and writes. The server is two
queues, first come first served: one for operations (look-ups, opens, renames, locks, syncs), one for bytes. A machine
keeps the pictures that it has read, so that shared ones come over the network once a machine; --cold forgets them after
each scene. What a scene costs comes from measurements (docs/scale.md). Crude: no network between, no failures, no
memory of the server's own.
"""

import argparse
import heapq
import random

KINDS = {  # seconds of a core, operations, megabytes read of its own, pictures it uses, megabytes written
    "small": {"seconds": 0.03, "operations": 120, "read": 0.01, "pictures": 1, "written": 0.03},  # as measured
    "large": {"seconds": 0.2, "operations": 120, "read": 0.01, "pictures": 1, "written": 2.4},  # as measured
    "studio": {"seconds": 2.0, "operations": 300, "read": 20, "pictures": 15, "written": 40},  # assumed
}


class Server:
    """Two queues: when each is free again."""

    def __init__(self, operations, megabytes):
        self.rates = {"operations": operations, "bytes": megabytes}
        self.free = {"operations": 0.0, "bytes": 0.0}
        self.busy = {"operations": 0.0, "bytes": 0.0}

    def serve(self, now, queue, amount):
        spent = amount / self.rates[queue]
        self.free[queue] = max(now, self.free[queue]) + spent
        self.busy[queue] += spent
        return self.free[queue]


def play(kind, scenes, nodes, wanted):
    """Wall seconds, and how busy the two queues were."""
    numbers = random.Random(1)
    cost = KINDS[kind]
    server = Server(wanted.operations, wanted.megabytes)
    kept = [set() for _ in range(nodes)]
    # (time, order, node, phase): every phase enters the queues in the order of time.
    events = [(0.0, worker, worker % nodes, "read") for worker in range(nodes * wanted.cores)]
    heapq.heapify(events)
    begun, order, end = 0, len(events), 0.0
    while events:
        now, _, node, phase = heapq.heappop(events)
        if phase == "read":
            if begun == scenes:
                continue
            begun += 1
            used = {int(numbers.paretovariate(0.5)) % wanted.pictures for _ in range(cost["pictures"])}
            fetched = used - kept[node]
            if not wanted.cold:
                kept[node] |= used
            now = server.serve(now, "operations", cost["operations"] * 0.6)
            now = server.serve(now, "bytes", cost["read"] + len(fetched) * wanted.picture)
            event = (now + cost["seconds"] * numbers.uniform(0.7, 1.3), order, node, "write")
        else:
            now = server.serve(now, "operations", cost["operations"] * 0.4)
            now = server.serve(now, "bytes", cost["written"])
            end = max(end, now)
            event = (now, order, node, "read")
        order += 1
        heapq.heappush(events, event)
    return end, server.busy["operations"] / end, server.busy["bytes"] / end


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--cores", type=int, default=16, help="of a machine")
    parser.add_argument("--operations", type=float, default=30000, help="of the server, a second")
    parser.add_argument("--megabytes", type=float, default=1100, help="of the server, a second")
    parser.add_argument("--picture", type=float, default=4, help="megabytes of a picture")
    parser.add_argument("--pictures", type=int, default=3000, help="of the studio")
    parser.add_argument("--scenes", type=int, default=20000)
    parser.add_argument("--cold", action="store_true")
    wanted = parser.parse_args()
    print("| scenes | machines | scenes a second | of what the cores could do | operations, busy | bytes, busy |")
    print("|---" * 6 + "|")
    for kind, cost in KINDS.items():
        for nodes in (1, 5, 10, 25, 50, 100):
            seconds, operations, megabytes = play(kind, wanted.scenes, nodes, wanted)
            rate = wanted.scenes / seconds
            ideal = nodes * wanted.cores / cost["seconds"]
            print(f"| {kind} | {nodes} | {rate:.0f} | {100 * rate / ideal:.0f} % | {100 * operations:.0f} % "
                  f"| {100 * megabytes:.0f} % |")


if __name__ == "__main__":
    main()
