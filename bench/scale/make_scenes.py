#!/usr/bin/env python3
"""Makes a studio's night: small and large scene documents that share pictures, always the same.

Usage: bench/scale/make_scenes.py FOLDER [--small N] [--large N] [--frames F] [--pictures N]

    small/NNNN.scene.json       a model of three boxes, each with one of the pictures, in folders of 500 where there are
                                more; with --frames a clip of that length that moves two of them
    large/NNNN.scene.json       a model of 24 spheres of 4,000 triangles with a clip of 200 frames
    pictures/NN.bmp             64 x 64 texels
"""

import argparse
import json
import pathlib
import struct


def bmp(seed, side=64):
    rows = b"".join(bytes(((x * seed) & 255, (y * 3) & 255, (x ^ y) & 255)) for y in range(side) for x in range(side))
    head = struct.pack("<2sIHHI", b"BM", 54 + len(rows), 0, 0, 54)
    return head + struct.pack("<IiiHHIIiiII", 40, side, side, 1, 24, 0, len(rows), 2835, 2835, 0, 0) + rows


def painted(name, picture):
    return {"type": "standard", "name": name, "maps": {"diffuse": {"map": {"type": "bitmap", "file": picture}}}}


def moved(frames, step):
    return [{"frame": 0, "position": [step, 0, 0]}, {"frame": frames, "position": [step, 2, 1]}]


def model(path, parts, material, frames):
    """A root and its parts, every second one moving where there are frames."""
    children = []
    for number, shape in enumerate(parts):
        part = {"name": f"part_{number}", "properties": ["Poly", "IKType=revolute"], "object": shape,
                "material": material, "transform": {"position": [number * 2, 0, 0]}}
        if frames and number % 2 == 0:
            part["keys"] = moved(frames, number * 2)
        children.append(part)
    root = {"name": path.split("/")[-1], "properties": [f"Model={path}"], "object": {"type": "helper"},
            "children": children}
    if frames:
        root["properties"].append(f"animation=walk,all,0-{frames}")
    return root


def write(file, root, picture, frames):
    file.parent.mkdir(parents=True, exist_ok=True)
    names = [root["name"]] + [part["name"] for part in root["children"]]
    scene = {"scene": 1, "range": [0, max(frames, 1)], "selectionSets": [{"name": "all", "nodes": names}],
             "materials": {"skin": painted("skin", picture)}, "nodes": [root]}
    file.write_text(json.dumps(scene))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("--small", type=int, default=0)
    parser.add_argument("--large", type=int, default=0)
    parser.add_argument("--frames", type=int, default=0)
    parser.add_argument("--pictures", type=int, default=40)
    wanted = parser.parse_args()

    pictures = wanted.folder / "pictures"
    pictures.mkdir(parents=True, exist_ok=True)
    for number in range(wanted.pictures):
        (pictures / f"{number:02}.bmp").write_bytes(bmp(number + 1))
    for number in range(wanted.small):
        below = f"{number // 500:02}/" if wanted.small > 500 else ""
        boxes = [{"type": "box", "width": 1, "length": 1 + part, "height": 1} for part in range(3)]
        write(wanted.folder / "small" / f"{below}{number:04}.scene.json",
              model(f"small/{below}s{number:04}", boxes, "skin", wanted.frames),
              str(pictures / f"{number % wanted.pictures:02}.bmp"), wanted.frames)
    for number in range(wanted.large):
        spheres = [{"type": "sphere", "radius": 1 + part / 10, "segments": 64} for part in range(24)]
        write(wanted.folder / "large" / f"{number:04}.scene.json", model(f"large/l{number:04}", spheres, "skin", 200),
              str(pictures / f"{number % wanted.pictures:02}.bmp"), 200)


if __name__ == "__main__":
    main()
