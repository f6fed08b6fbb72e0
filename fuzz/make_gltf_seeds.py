#!/usr/bin/env python3
"""Writes the seeds of the glTF fuzz target: small files which together use every section that the import reads."""
import base64
import json
import pathlib
import struct

OUT = pathlib.Path(__file__).parent / "corpus" / "gltf"
FLOAT, SHORT, BYTE = 5126, 5123, 5121
FORMATS = {FLOAT: "f", SHORT: "H", BYTE: "B"}
COUNTS = {"SCALAR": 1, "VEC2": 2, "VEC3": 3, "VEC4": 4, "MAT4": 16}
PIXEL_PNG = ("iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9QDwADhgGAWjR9awAAAABJRU5ErkJggg==")
IDENTITY = [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1]


class Buffer:
    def __init__(self):
        self.bytes, self.views, self.accessors = b"", [], []

    def add(self, kind, component, numbers, **more):
        data = struct.pack(f"<{len(numbers)}{FORMATS[component]}", *numbers)
        self.views.append({"buffer": 0, "byteOffset": len(self.bytes), "byteLength": len(data)})
        self.bytes += data + b"\0" * (-len(data) % 4)
        self.accessors.append({"bufferView": len(self.views) - 1, "componentType": component, "type": kind,
                               "count": len(numbers) // COUNTS[kind], **more})
        return len(self.accessors) - 1


def skinned_and_animated():
    b = Buffer()
    points = b.add("VEC3", FLOAT, [0, 0, 0, 1, 0, 0, 0, 1, 0], min=[0, 0, 0], max=[1, 1, 0])
    faces = b.add("SCALAR", SHORT, [0, 1, 2])
    joints = b.add("VEC4", BYTE, [0, 1, 0, 0] * 3)
    weights = b.add("VEC4", FLOAT, [0.5, 0.5, 0, 0] * 3)
    bind = b.add("MAT4", FLOAT, IDENTITY * 2)
    times = b.add("SCALAR", FLOAT, [0, 1], min=[0], max=[1])
    moves = b.add("VEC3", FLOAT, [0, 0, 0, 1, 2, 3])
    spline = b.add("VEC4", FLOAT, [0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0] * 2)
    blend = b.add("SCALAR", FLOAT, [0, 1])
    return b, {
        "scenes": [{"nodes": [0, 1], "extras": {"host.fps": 25, "host.range": [0, 20], "host.selection.all": "a,b"}}],
        "nodes": [{"name": "a", "mesh": 0, "skin": 0, "extras": {"Model": "units/a", "group": "head"}},
                  {"name": "b", "children": [2], "rotation": [0, 0, 0.6, 0.8]},
                  {"name": "c", "scale": [1, -1, 1], "extras": {"tags": ["x", "y"], "n": [1, 2]}}],
        "meshes": [{"primitives": [{"attributes": {"POSITION": points, "JOINTS_0": joints, "WEIGHTS_0": weights},
                                    "indices": faces, "targets": [{"POSITION": points}]}]}],
        "skins": [{"joints": [1, 2], "inverseBindMatrices": bind}],
        "animations": [{"name": "go", "samplers": [{"input": times, "output": moves},
                                                   {"input": times, "output": spline, "interpolation": "CUBICSPLINE"},
                                                   {"input": times, "output": blend, "interpolation": "STEP"}],
                        "channels": [{"sampler": 0, "target": {"node": 1, "path": "translation"}},
                                     {"sampler": 1, "target": {"node": 2, "path": "rotation"}},
                                     {"sampler": 2, "target": {"node": 0, "path": "weights"}}]}]}


def looks():
    b = Buffer()
    points = b.add("VEC3", FLOAT, [0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0], min=[0, 0, 0], max=[1, 1, 0])
    normals = b.add("VEC3", FLOAT, [0, 0, 1] * 4)
    places = b.add("VEC2", FLOAT, [0, 0, 1, 0, 1, 1, 0, 1])
    colors = b.add("VEC4", BYTE, [255, 0, 128, 255] * 4, normalized=True)
    texture = {"index": 0, "extensions": {"KHR_texture_transform": {"offset": [0.5, 0], "scale": [2, 2], "rotation": 1}}}
    attributes = {"POSITION": points, "NORMAL": normals, "TEXCOORD_0": places, "COLOR_0": colors}
    return b, {
        "extensionsUsed": ["KHR_texture_transform", "KHR_lights_punctual"],
        "extensions": {"KHR_lights_punctual": {"lights": [
            {"type": "spot", "range": 5, "spot": {"innerConeAngle": 0.1, "outerConeAngle": 0.5}}]}},
        "nodes": [{"mesh": 0, "extras": {"Poly": True}}, {"camera": 0, "extras": {"targetDistance": 3}},
                  {"extensions": {"KHR_lights_punctual": {"light": 0}}, "matrix": IDENTITY}],
        "cameras": [{"type": "perspective", "perspective": {"yfov": 0.7, "znear": 0.1, "aspectRatio": 1.5}}],
        "meshes": [{"primitives": [{"attributes": attributes, "mode": 5, "material": 0},
                                   {"attributes": attributes, "mode": 3, "material": 1}]}],
        "materials": [{"name": "m", "pbrMetallicRoughness": {"baseColorTexture": texture}, "alphaMode": "MASK",
                       "doubleSided": True, "normalTexture": {"index": 0, "scale": 0.5}},
                      {"alphaMode": "BLEND", "extras": {"blend": 3}}],
        "textures": [{"source": 0}],
        "images": [{"uri": "data:image/png;base64," + PIXEL_PNG}]}


def sparse():
    b = Buffer()
    b.add("VEC3", FLOAT, [0, 0, 0, 1, 0, 0, 0, 1, 0], min=[0, 0, 0], max=[1, 1, 0])
    b.add("SCALAR", SHORT, [1])
    b.add("VEC3", FLOAT, [2, 2, 2])
    b.accessors[0]["sparse"] = {"count": 1, "indices": {"bufferView": 1, "componentType": SHORT},
                                "values": {"bufferView": 2}}
    return b, {"nodes": [{"mesh": 0}], "meshes": [{"primitives": [{"attributes": {"POSITION": 0}}]}]}


def document(b, sections, uri):
    buffer = {"byteLength": len(b.bytes), **({"uri": uri} if uri else {})}
    return json.dumps({"asset": {"version": "2.0"}, "buffers": [buffer], "bufferViews": b.views,
                       "accessors": b.accessors, **sections}).encode()


def text_file(b, sections):
    return document(b, sections, "data:application/octet-stream;base64," + base64.b64encode(b.bytes).decode())


def binary_file(b, sections):
    text = document(b, sections, None)
    text += b" " * (-len(text) % 4)
    chunks = struct.pack("<I4s", len(text), b"JSON") + text + struct.pack("<I4s", len(b.bytes), b"BIN\0") + b.bytes
    return struct.pack("<4sII", b"glTF", 2, 12 + len(chunks)) + chunks


OUT.mkdir(parents=True, exist_ok=True)
(OUT / "skinned").write_bytes(text_file(*skinned_and_animated()))
(OUT / "skinned_binary").write_bytes(binary_file(*skinned_and_animated()))
(OUT / "looks").write_bytes(text_file(*looks()))
(OUT / "sparse").write_bytes(text_file(*sparse()))
