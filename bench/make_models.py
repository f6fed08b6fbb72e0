#!/usr/bin/env python3
"""Writes the models of bench/whole_process as .glb files, always the same bytes.

Usage: bench/make_models.py FOLDER [FACTOR]

    body.glb    a skinned tube of 60,000 triangles with 40 bones and a clip of 300 frames
    parts.glb   60 meshes of 512 triangles
    field.glb   a height field of 64,800 triangles in one mesh
    town.glb    200 houses of 192 triangles, each with a mesh and a material of its own, in ten streets

FACTOR multiplies the triangles of body and field, for figures of how cost grows; up to 16. Meshes above 16-bit indices
get 32 bits. For the same end there are two more, which are made by name only (make):

    nodes.glb   1,000 nodes in a tree of ten children each; FACTOR multiplies them
    frames.glb  the body with 1,200 triangles; FACTOR multiplies its 300 frames
"""

import array
import json
import math
import pathlib
import struct
import sys

FLOAT, UINT, USHORT, UBYTE = 5126, 5125, 5123, 5121
TYPECODES = {FLOAT: "f", UINT: "I", USHORT: "H", UBYTE: "B"}
COUNTS = {"SCALAR": 1, "VEC2": 2, "VEC3": 3, "VEC4": 4, "MAT4": 16}


class Model:
    def __init__(self):
        self.bytes = bytearray()
        self.json = {"asset": {"version": "2.0"}, "scene": 0, "scenes": [{"nodes": []}], "nodes": [], "meshes": [],
                     "materials": [], "accessors": [], "bufferViews": []}

    def accessor(self, kind, component, numbers, bounds=False):
        data = array.array(TYPECODES[component], numbers).tobytes()
        self.json["bufferViews"].append({"buffer": 0, "byteOffset": len(self.bytes), "byteLength": len(data)})
        self.bytes += data + b"\0" * (-len(data) % 4)
        width = COUNTS[kind]
        entry = {"bufferView": len(self.json["bufferViews"]) - 1, "componentType": component, "type": kind,
                 "count": len(numbers) // width}
        if bounds:
            entry["min"] = [min(numbers[i::width]) for i in range(width)]
            entry["max"] = [max(numbers[i::width]) for i in range(width)]
        self.json["accessors"].append(entry)
        return len(self.json["accessors"]) - 1

    def material(self, name, color):
        self.json["materials"].append({"name": name, "pbrMetallicRoughness": {"baseColorFactor": [*color, 1]}})
        return len(self.json["materials"]) - 1

    def mesh(self, sheet, material, more=None):
        positions, normals, coordinates, indices = sheet
        wide = len(positions) // 3 > 65535
        attributes = {"POSITION": self.accessor("VEC3", FLOAT, positions, True),
                      "NORMAL": self.accessor("VEC3", FLOAT, normals),
                      "TEXCOORD_0": self.accessor("VEC2", FLOAT, coordinates), **(more or {})}
        primitive = {"attributes": attributes, "material": material,
                     "indices": self.accessor("SCALAR", UINT if wide else USHORT, indices)}
        self.json["meshes"].append({"primitives": [primitive]})
        return len(self.json["meshes"]) - 1

    def node(self, parent=None, **fields):
        number = len(self.json["nodes"])
        self.json["nodes"].append(fields)
        siblings = (self.json["scenes"][0]["nodes"] if parent is None
                    else self.json["nodes"][parent].setdefault("children", []))
        siblings.append(number)
        return number

    def write(self, path):
        if self.bytes:
            self.json["buffers"] = [{"byteLength": len(self.bytes)}]
        text = json.dumps({key: value for key, value in self.json.items() if value}).encode()
        text += b" " * (-len(text) % 4)
        chunks = struct.pack("<II", len(text), 0x4E4F534A) + text
        if self.bytes:
            chunks += struct.pack("<II", len(self.bytes), 0x004E4942) + bytes(self.bytes)
        path.write_bytes(struct.pack("<III", 0x46546C67, 2, 12 + len(chunks)) + chunks)


def sheet(columns, rows, place):
    """A surface of columns by rows quads: place(u, v) is a position, with u and v from 0 to 1."""
    step = 1e-4
    positions, normals, coordinates, indices = [], [], [], []
    for row in range(rows + 1):
        for column in range(columns + 1):
            u, v = column / columns, row / rows
            p, pu, pv = place(u, v), place(u + step, v), place(u, v + step)
            a, b = [x - y for x, y in zip(pu, p)], [x - y for x, y in zip(pv, p)]
            n = (a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0])
            length = math.hypot(*n) or 1
            positions += p
            normals += [x / length for x in n]
            coordinates += (u, v)
    for row in range(rows):
        for column in range(columns):
            corner = row * (columns + 1) + column
            below = corner + columns + 1
            indices += (corner, corner + 1, below, corner + 1, below + 1, below)
    return positions, normals, coordinates, indices


def tube(u, v, radius=1.0, height=1.0):
    angle = 2 * math.pi * u
    return (radius * math.cos(angle), height * v, -radius * math.sin(angle))


def body(factor, frames=300):
    bones, height = 40, 4.0
    columns = round(100 * math.sqrt(factor))
    rows = round(300 * math.sqrt(factor))
    skin = sheet(columns, rows, lambda u, v: tube(u, v, 0.3 + 0.1 * math.sin(9 * v), height))
    model = Model()
    joints, weights = [], []
    for y in skin[0][1::3]:
        place = min(bones - 1.001, max(0.0, y / height * (bones - 1)))
        first = int(place)
        joints += (first, first + 1, 0, 0)
        weights += (1 - (place - first), place - first, 0, 0)
    more = {"JOINTS_0": model.accessor("VEC4", UBYTE, joints), "WEIGHTS_0": model.accessor("VEC4", FLOAT, weights)}
    mesh = model.mesh(skin, model.material("skin", (0.8, 0.6, 0.5)), more)
    spine, parent = [], None
    for bone in range(bones):
        parent = model.node(parent, name=f"bone{bone}", translation=[0, height / (bones - 1) if bone else 0, 0])
        spine.append(parent)
    inverse = []
    for bone in range(bones):
        inverse += (1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, -height / (bones - 1) * bone, 0, 1)
    model.json["skins"] = [{"joints": spine, "inverseBindMatrices": model.accessor("MAT4", FLOAT, inverse)}]
    model.node(name="body", mesh=mesh, skin=0)
    times = model.accessor("SCALAR", FLOAT, [frame / 30 for frame in range(frames)], True)
    samplers, channels = [], []
    for bone, node in enumerate(spine):
        turns = []
        for frame in range(frames):
            half = 0.02 * math.sin(0.07 * frame + 0.3 * bone)
            turns += (math.sin(half), 0, 0, math.cos(half))
        samplers.append({"input": times, "output": model.accessor("VEC4", FLOAT, turns)})
        channels.append({"sampler": bone, "target": {"node": node, "path": "rotation"}})
    model.json["animations"] = [{"name": "sway", "samplers": samplers, "channels": channels}]
    return model


def parts(_):
    model = Model()
    colour = model.material("paint", (0.3, 0.4, 0.3))
    root = model.node(name="machine")
    for part in range(60):
        shape = sheet(16, 16, lambda u, v, part=part: tube(u, v, 0.2 + 0.01 * part, 0.5))
        model.node(root, name=f"part{part}", mesh=model.mesh(shape, colour),
                   translation=[part % 10, 0, part // 10])
    return model


def field(factor):
    side = round(180 * math.sqrt(factor))
    model = Model()
    ground = sheet(side, side, lambda u, v: (18 * u, math.sin(36 * u) * math.cos(23 * v), -18 * v))
    model.node(name="field", mesh=model.mesh(ground, model.material("grass", (0.2, 0.5, 0.1))))
    return model


def town(_):
    model = Model()
    for street in range(10):
        parent = model.node(name=f"street{street}", translation=[0, 0, 20 * street])
        for number in range(20):
            house = f"house{street}_{number}"
            shape = sheet(8, 12, lambda u, v, n=number: tube(u, v, 2 + 0.1 * n, 5 + street))
            colour = model.material(house, (street / 10, number / 20, 0.5))
            model.node(parent, name=house, mesh=model.mesh(shape, colour), translation=[10 * number, 0, 0])
    return model


def nodes(factor):
    model = Model()
    for number in range(round(1000 * factor)):
        model.node((number - 1) // 10 if number else None, name=f"node{number}", translation=[1, 0, 0.1 * (number % 10)])
    return model


def frames(factor):
    return body(0.02, round(300 * factor))


MODELS = (body, parts, field, town)
GROWING = (body, field, nodes, frames)


def make(folder, factor=1, builders=MODELS):
    folder = pathlib.Path(folder)
    folder.mkdir(parents=True, exist_ok=True)
    made = []
    for build in builders:
        made.append(folder / (build.__name__ + ".glb"))
        build(factor).write(made[-1])
    return made


if __name__ == "__main__":
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    make(sys.argv[1], float(sys.argv[2]) if len(sys.argv) > 2 else 1)
