#!/usr/bin/env python3
"""Makes the example scenes, one scene document each, from the descriptions below, and their textures.

Usage: examples/make_examples.py [FOLDER]; without a folder the files beside this script are made anew.
"""

import json
import math
import pathlib
import struct
import sys

WIDTH = 100


def text_of(value, indent=0):
    """JSON that a person likes to read: what fits on a line stands on one."""
    flat = json.dumps(value, ensure_ascii=False)
    if indent + len(flat) <= WIDTH or not isinstance(value, (dict, list)):
        return flat
    inner = " " * (indent + 2)
    if isinstance(value, dict):
        parts = [f"{json.dumps(key, ensure_ascii=False)}: {text_of(item, indent + 2)}" for key, item in value.items()]
        opening, closing = "{", "}"
    else:
        parts = [text_of(item, indent + 2) for item in value]
        opening, closing = "[", "]"
    return opening + "\n" + ",\n".join(inner + part for part in parts) + "\n" + " " * indent + closing


HELPER = {"type": "helper"}


def node(name, properties=(), children=(), **keys):
    """A node with its keys in a fixed order; what is empty is left out."""
    result = {"name": name}
    if properties:
        result["properties"] = list(properties)
    result.update(keys)
    if children:
        result["children"] = list(children)
    return result


def at(x, y, z):
    return {"position": [x, y, z]}


def box(width, length, height):
    return {"type": "box", "width": width, "length": length, "height": height}


def tank():
    """Two wheels that share one object: an instance."""
    wheel = {"object": "wheel", "material": "iron"}
    joint = ["Poly", "IKType=revolute"]
    return {
        "scene": 1,
        "unitMetres": 0.01,
        "objects": {"wheel": {"type": "cylinder", "radius": 40, "height": 20}},
        "materials": {"iron": {"type": "standard", "name": "iron", "diffuse": [0.4, 0.4, 0.45]}},
        "nodes": [
            node("tank", ["Model=units/tank"], object=HELPER, children=[
                node("wheel_l", joint, transform=at(0, 90, 40), **wheel),
                node("wheel_r", joint, transform=at(0, -90, 40), **wheel),
            ]),
        ],
    }


def arm():
    """One joint with limits and a property of the game's own."""
    limits = ["Poly", "IKType=revolute", "IKMin=-1", "IKMax=1", "speed=1,5"]
    return {
        "scene": 1,
        "nodes": [
            node("root", ["Model=tests/arm"], object=HELPER, children=[
                node("arm", limits, transform=at(0, 0, 1), object=box(0.25, 0.25, 1)),
            ]),
        ],
    }


def structure():
    """A base with two models of their own, which share its folder "common"."""
    return {
        "scene": 1,
        "objects": {"mast": box(0.5, 0.5, 6)},
        "materials": {"concrete": {"type": "standard", "name": "concrete", "diffuse": [0.6, 0.6, 0.55]}},
        "nodes": [
            node("base", ["Structure", "Model=buildings/base", "Hold=mast floor"], object=HELPER, children=[
                node("mast", ["Poly"], transform=at(0, 0, 0.2), object="mast", material="concrete"),
                node("floor", ["Poly"], object=box(20, 12, 0.2), material="concrete"),
                node("gate", ["Model=buildings/base/gate"], transform=at(10, 0, 0), object=HELPER, children=[
                    node("leaf", ["Poly", "IKType=prizmatic", "IKMin=0", "IKMax=3"], object=box(0.3, 4, 3)),
                ]),
                node("tower", ["Model=buildings/base/tower"], transform=at(-8, 4, 0), object=HELPER, children=[
                    node("post", ["Poly"], object="mast", material="concrete"),
                ]),
            ]),
        ],
    }


def levels_of_detail():
    """A hull with two coarser levels, siblings of the hull named after it."""
    return {
        "scene": 1,
        "nodes": [
            node("boat", ["Model=units/boat"], object=HELPER, children=[
                node("hull", ["Poly"], object={"type": "sphere", "radius": 3, "segments": 32}),
                node("hull_lod1", ["Poly"], object={"type": "sphere", "radius": 3, "segments": 16}),
                node("hull_lod2", ["Poly"], object={"type": "sphere", "radius": 3, "segments": 8}),
                node("mast", ["Poly", "LODLastOff"], transform=at(0, 0, 3), object=box(0.2, 0.2, 4)),
            ]),
        ],
    }


def preview_group():
    """A group with a camera, what it looks at, and lights: a view for the game's tools."""
    sun = {"type": "light", "kind": "directional", "color": [1, 0.95, 0.8], "multiplier": 0.8}
    lamp = {"type": "light", "kind": "spot", "hotspot": 30, "falloff": 45, "attenuation": {"start": 4, "end": 12}}
    # Half of the square root of 2: a quarter turn about x, so that the camera looks along +y.
    quarter = {"position": [0, -8, 1], "rotation": [0.70710678, 0, 0, 0.70710678]}
    return {
        "scene": 1,
        "ambient": [0.1, 0.1, 0.12],
        "nodes": [
            node("lantern", ["Model=props/lantern"], object=HELPER, children=[
                node("glass", ["Poly"], object=box(1, 1, 2)),
                node("view", ["Preview"], group="head", object=HELPER, children=[
                    node("view_camera", group="member", transform=quarter,
                         object={"type": "camera", "fov": 40, "targetDistance": 8}, target="view_aim"),
                    node("view_aim", group="member", transform=at(0, 0, 1), object={"type": "target"}),
                    node("sun", group="member", transform=at(0, 0, 10), object=sun),
                    node("lamp", group="member", transform=at(0, 0, 5), object=lamp),
                    node("glow", group="member", object={"type": "light", "kind": "ambient", "multiplier": 0.2}),
                ]),
            ]),
        ],
    }


def gameplay():
    """Collision volumes, zones and support points."""
    wedge = {
        "type": "mesh",
        "vertices": [[-1, -1, 0], [1, -1, 0], [1, 1, 0], [-1, 1, 0], [0, 0, 1.5]],
        "faces": [[0, 2, 1], [0, 3, 2], [0, 1, 4], [1, 2, 4], [2, 3, 4], [3, 0, 4]],
        "smoothing": 0,
    }
    lawn = {"type": "line", "splines": [{"points": [[-6, -6, 0], [6, -6, 0], [6, 6, 0], [-6, 6, 0]]}]}
    return {
        "scene": 1,
        "nodes": [
            node("house", ["Model=buildings/house", "Land"], object=HELPER, children=[
                node("walls", ["Poly"], object=box(8, 6, 3)),
                node("walls_vol", ["Volume=stone", "Thickness=0,4", "bullet", "overlap", "Tags=wall,stone"],
                     object=box(8, 6, 3)),
                node("roof_vol", ["Volume=roof", "visible"], transform=at(0, 0, 3), object=wedge),
                node("well_vol", ["Volume", "Obstacle", "Static"], transform=at(5, 5, 0),
                     object={"type": "cylinder", "radius": 0.8, "height": 1}),
                node("yard", ["Area", "Tags=yard"], object={"type": "rectangle", "width": 20, "length": 16}),
                node("lawn", ["Area"], object=lawn),
                node("hearth", ["Obstacle=1", "Permit=cat"], transform=at(2, 0, 0),
                     object={"type": "circle", "radius": 0.5}),
                node("step", ["SupportPoint"], transform=at(0, -3, 0), object=HELPER),
                node("door", ["SupportPoint"], transform=at(0, -4, 0), object=HELPER),
            ]),
        ],
    }


def skinned_strip():
    """A strip of six vertices on two bones; the upper one bends."""
    sin, cos = 0.25881905, 0.96592583
    weights = [[[0, 1]], [[0, 1]], [[0, 0.5], [1, 0.5]], [[0, 0.5], [1, 0.5]], [[1, 1]], [[1, 1]]]
    strip = {
        "type": "mesh",
        "vertices": [[-0.5, 0, 0], [0.5, 0, 0], [-0.5, 0, 1], [0.5, 0, 1], [-0.5, 0, 2], [0.5, 0, 2]],
        "faces": [[0, 1, 2], [2, 1, 3], [2, 3, 4], [4, 3, 5]],
        "maps": {
            "1": {
                "vertices": [[0, 0, 0], [1, 0, 0], [0, 0.5, 0], [1, 0.5, 0], [0, 1, 0], [1, 1, 0]],
                "faces": [[0, 1, 2], [2, 1, 3], [2, 3, 4], [4, 3, 5]],
            }
        },
        "modifiers": [{"type": "skin", "bones": ["lower", "upper"], "weights": weights}],
    }
    bend = [{"frame": 0, "rotation": [0, 0, 0, 1]}, {"frame": 10, "rotation": [sin, 0, 0, cos]}]
    return {
        "scene": 1,
        "range": [0, 10],
        "selectionSets": [{"name": "all", "nodes": ["strip", "lower", "upper"]}],
        "nodes": [
            node("flag", ["Model=props/flag", "animation=wave,all,0-10"], object=HELPER, children=[
                node("lower", object=HELPER, children=[
                    node("upper", transform=at(0, 0, 1), keys=bend, object=HELPER),
                ]),
                node("strip", ["Poly"], object=strip),
            ]),
        ],
    }


# The soldier stands at the origin and faces -y; metres, z up. Part: its bone, the box that it fills (lower and upper
# corner), and the bone whose weight it shares at its upper end.
SOLDIER_PARTS = [
    ("hips", (-0.16, -0.10, 0.86), (0.16, 0.10, 1.04), None),
    ("chest", (-0.20, -0.12, 1.04), (0.20, 0.12, 1.46), None),
    ("head", (-0.10, -0.11, 1.52), (0.10, 0.11, 1.78), None),
    ("arm_l", (0.21, -0.06, 0.84), (0.33, 0.06, 1.44), "chest"),
    ("arm_r", (-0.33, -0.06, 0.84), (-0.21, 0.06, 1.44), "chest"),
    ("thigh_l", (0.02, -0.08, 0.48), (0.16, 0.08, 0.88), "hips"),
    ("thigh_r", (-0.16, -0.08, 0.48), (-0.02, 0.08, 0.88), "hips"),
    ("shin_l", (0.03, -0.07, 0.08), (0.15, 0.07, 0.50), "thigh_l"),
    ("shin_r", (-0.15, -0.07, 0.08), (-0.03, 0.07, 0.50), "thigh_r"),
    ("shin_l", (0.03, -0.22, 0.00), (0.15, 0.07, 0.08), None),
    ("shin_r", (-0.15, -0.22, 0.00), (-0.03, 0.07, 0.08), None),
]
SOLDIER_BONES = ["hips", "chest", "head", "arm_l", "arm_r", "thigh_l", "shin_l", "thigh_r", "shin_r"]


def block(lower, upper, cuts):
    """The points and outward faces of a box that is cut into slices from bottom to top; a corner stands once a level."""
    levels = [lower[2] + (upper[2] - lower[2]) * cut / cuts for cut in range(cuts + 1)]
    ring = [(lower[0], lower[1]), (upper[0], lower[1]), (upper[0], upper[1]), (lower[0], upper[1])]
    points = [[x, y, round(z, 4)] for z in levels for x, y in ring]
    faces = [[0, 2, 1], [0, 3, 2]]
    for first in range(0, 4 * cuts, 4):
        for corner in range(4):
            a, b = first + corner, first + (corner + 1) % 4
            faces += [[a, b, b + 4], [a, b + 4, a + 4]]
    top = 4 * cuts
    return points, faces + [[top, top + 1, top + 2], [top, top + 2, top + 3]]


def soldier_mesh(cuts):
    """All parts in one skinned mesh; more cuts are a finer level of detail."""
    points, faces, weights, materials = [], [], [], []
    for bone, lower, upper, above in SOLDIER_PARTS:
        part_points, part_faces = block(lower, upper, cuts)
        faces += [[len(points) + corner for corner in face] for face in part_faces]
        materials += [1 if bone == "head" else 0] * len(part_faces)
        for point in part_points:
            shared = above is not None and point[2] == upper[2]
            own = SOLDIER_BONES.index(bone)
            weights.append([[own, 0.5], [SOLDIER_BONES.index(above), 0.5]] if shared else [[own, 1]])
        points += part_points
    return {
        "type": "mesh",
        "vertices": points,
        "faces": faces,
        "smoothing": 0,
        "materialIds": materials,
        "modifiers": [{"type": "skin", "bones": SOLDIER_BONES, "weights": weights}],
    }


def swing(degrees):
    """Keys of a pace from the stand in which the skin is bound: forward, back, and home, about the axis across."""
    def turned(angle):
        half = math.radians(angle) / 2
        return [round(math.sin(half), 6), 0, 0, round(math.cos(half), 6)]

    angles = [0, degrees, 0, -degrees, 0]
    return [{"frame": 6 * step, "rotation": turned(angle)} for step, angle in enumerate(angles)]


def soldier():
    """A soldier of one skinned mesh in two levels of detail, with a rifle, a walk, and what the game asks of him."""
    def bone(name, place, children=(), **keys):
        return node(name, transform=at(*place), object=HELPER, children=children, **keys)

    def leg(side, x, degrees):
        return bone(f"thigh_{side}", (x, 0, -0.08), keys=swing(degrees), children=[
            bone(f"shin_{side}", (0, 0, -0.38), keys=swing(-degrees / 3)),
        ])

    rifle = node("rifle", ["Poly"], transform=at(0, -0.1, -0.56), object=box(0.05, 0.8, 0.08), material="steel")
    helmet = {"type": "sphere", "radius": 0.16, "segments": 8}
    head = bone("head", (0, 0, 0.48), children=[
        node("head_vol", ["Volume=head", "bullet", "Thickness=1"], transform=at(0, 0, 0.13), object=helmet),
    ])
    chest = bone("chest", (0, 0, 0.08), children=[
        head,
        bone("arm_l", (0.27, 0, 0.38), keys=swing(-20)),
        bone("arm_r", (-0.27, 0, 0.38), keys=swing(20), children=[rifle]),
        node("chest_vol", ["Volume=body", "bullet", "contact"], object=box(0.4, 0.24, 0.44)),
    ])
    body = {"material": "uniform"}
    return {
        "scene": 1,
        "range": [0, 24],
        "selectionSets": [{"name": "all", "nodes": SOLDIER_BONES}],
        "materials": {
            "cloth": {"type": "standard", "name": "cloth", "diffuse": [0.33, 0.38, 0.22]},
            "skin": {"type": "standard", "name": "skin", "diffuse": [0.85, 0.65, 0.5]},
            "uniform": {"type": "multi", "name": "uniform", "materials": ["cloth", "skin"]},
            "steel": {"type": "standard", "name": "steel", "diffuse": [0.2, 0.2, 0.22]},
        },
        "nodes": [
            node("soldier", ["Model=units/soldier", "animation=walk,all,0-24,100"], object=HELPER, children=[
                bone("hips", (0, 0, 0.96), children=[chest, leg("l", 0.09, 25), leg("r", -0.09, -25)]),
                node("body", ["Poly"], object=soldier_mesh(3), **body),
                node("body_lod1", ["Poly"], object=soldier_mesh(1), **body),
                node("stand", ["Obstacle", "Move"], object={"type": "circle", "radius": 0.4}),
            ]),
        ],
    }


def materials():
    """Every kind of material and map, on a wall of three faces with a material each."""
    def bitmap(file, **keys):
        return {"type": "bitmap", "file": file, **keys}

    bump = {"type": "normalBump", "normal": bitmap("textures/bricks_normal.tga")}
    mixed = {
        "type": "mix",
        "maps": [bitmap("textures/bricks.tga"), bitmap("textures/moss.tga"), {"type": "vertexColor"}],
    }
    shaded = {"type": "rgbMultiply", "maps": [{"type": "checker", "colors": [[1, 1, 1], [0.2, 0.2, 0.2]]}, None]}
    wall = {
        "type": "mesh",
        "vertices": [[0, 0, 0], [1, 0, 0], [1, 0, 1], [0, 0, 1], [2, 0, 0]],
        "faces": [[0, 1, 2], [0, 2, 3], [1, 4, 2]],
        "materialIds": [0, 1, 2],
        "maps": {
            "1": {
                "vertices": [[0, 0, 0], [1, 0, 0], [1, 1, 0], [0, 1, 0], [2, 0, 0]],
                "faces": [[0, 1, 2], [0, 2, 3], [1, 4, 2]],
            },
            "0": {"vertices": [[1, 1, 1], [0.5, 0.5, 0.5]], "faces": [[0, 0, 1], [0, 1, 1], [0, 0, 1]]},
        },
    }
    return {
        "scene": 1,
        "materials": {
            "bricks": {
                "type": "standard",
                "name": "bricks",
                "specular": [0.2, 0.2, 0.2],
                "shininess": 0.3,
                "maps": {
                    "diffuse": {"map": bitmap("textures/bricks.tga", uv={"tiling": [2, 2], "angle": 45})},
                    "bump": {"map": bump, "amount": 0.5},
                },
            },
            "mossy": {"type": "standard", "name": "mossy", "maps": {"diffuse": {"map": mixed}}},
            "chalk": {"type": "standard", "name": "chalk", "maps": {"diffuse": {"map": shaded, "amount": 0.8}}},
            "layers": {"type": "twoLayer", "name": "layers", "materials": ["bricks", "mossy"]},
            "glow": {
                "type": "sorrel",
                "name": "glow",
                "material": "chalk",
                "blend": 2,
                "strength": 0.5,
                "mask": bitmap("textures/mask.tga", invert=True),
            },
            "wall": {"type": "multi", "name": "wall", "materials": ["bricks", "layers", "glow"]},
        },
        "nodes": [
            node("ruin", ["Model=buildings/ruin"], object=HELPER, children=[
                node("wall", ["Poly"], object=wall, material="wall"),
            ]),
        ],
    }


def roof(smoothing):
    """A gable of two slopes; with one smoothing group its ridge is round, with two it is an edge."""
    return {
        "type": "mesh",
        "vertices": [[-1, -1, 0], [1, -1, 0], [-1, 0, 1], [1, 0, 1], [-1, 1, 0], [1, 1, 0]],
        "faces": [[0, 1, 3], [0, 3, 2], [2, 3, 5], [2, 5, 4]],
        "smoothing": smoothing,
    }


def yard():
    """What becomes of meshes: hard edges by smoothing groups, a mirrored node, light baked into the vertices of
    all but the node that the lamp leaves out, and a fence whose parts are merged into one mesh."""
    lamp = {"type": "light", "kind": "omni", "color": [1, 0.9, 0.7], "exclude": ["sign"]}
    arrow = {
        "type": "mesh",
        "vertices": [[0, 0, 0], [1, 0, 0], [0, 0, 2]],
        "faces": [[0, 1, 2]],
        "maps": {"1": {"vertices": [[0, 0, 0], [1, 0, 0], [0, 1, 0]], "faces": [[0, 1, 2]]}},
    }
    post = ["CommonMesh=fence"]
    return {
        "scene": 1,
        "ambient": [0.4, 0.4, 0.5],
        "materials": {"wood": {"type": "standard", "name": "wood", "diffuse": [0.5, 0.35, 0.2], "twoSided": True}},
        "nodes": [
            node("yard", ["Model=buildings/yard"], object=HELPER, children=[
                node("round_roof", ["Poly"], transform=at(0, 0, 3), object=roof(1), material="wood"),
                node("sharp_roof", ["Poly"], transform=at(3, 0, 3), object=roof([1, 1, 2, 2]), material="wood"),
                node("sign", ["Poly"], transform=at(-4, 0, 0), object=arrow, material="wood"),
                node("sign_left", ["Poly"], transform={"position": [-5, 0, 0], "scale": [-1, 1, 1]},
                     object=arrow, material="wood"),
                node("fence", ["CommonMesh"], transform=at(0, 5, 0), object=box(6, 0.1, 0.1), material="wood",
                     children=[
                         node("post_left", post, transform=at(-2.5, 0, 0), object=box(0.2, 0.2, 1.5)),
                         node("post_right", post, transform=at(2.5, 0, 0), object=box(0.2, 0.2, 1.5)),
                     ]),
                node("lamp", transform=at(0, -3, 4), object=lamp),
            ]),
        ],
    }


def waving_flag():
    """A mesh that is animated by frames: its vertices move, and every frame of the animation holds them."""
    columns = 4
    rest = [[0.5 * x, 0, 0.5 * z] for z in (0, 1) for x in range(columns + 1)]
    bent = [[0.5 * x, 0.2 * (x if x % 2 else -x), 0.5 * z] for z in (0, 1) for x in range(columns + 1)]
    faces = []
    for x in range(columns):
        above = x + columns + 1
        faces += [[x, x + 1, above + 1], [x, above + 1, above]]
    cloth = {
        "type": "mesh",
        "vertices": rest,
        "faces": faces,
        "vertexKeys": [
            {"frame": 0, "vertices": rest},
            {"frame": 5, "vertices": bent},
            {"frame": 10, "vertices": rest},
        ],
    }
    return {
        "scene": 1,
        "range": [0, 10],
        "selectionSets": [{"name": "cloth", "nodes": ["cloth"]}],
        "nodes": [
            node("flagpole", ["Model=props/flagpole", "animation=wave,cloth,0-10"], object=HELPER, children=[
                node("cloth", ["CommonMesh"], transform=at(0, 0, 3), object=cloth),
            ]),
        ],
    }


def animations():
    """Two animations of one timeline, each for the nodes of a selection set."""
    turn = [
        {"frame": 0, "rotation": [0, 0, 0, 1]},
        {"frame": 15, "rotation": [0, 0, 1, 0]},
        {"frame": 30, "rotation": [0, 0, 0, -1]},
    ]
    lift = [{"frame": 30, "position": [0, 0, 2]}, {"frame": 50, "position": [0, 0, 5], "scale": [1, 1, 2]}]
    return {
        "scene": 1,
        "range": [0, 50],
        "selectionSets": [{"name": "top", "nodes": ["rotor"]}, {"name": "lift", "nodes": ["cabin", "rotor"]}],
        "nodes": [
            node("mill", ["Model=buildings/mill", "animationauto=turn,top,0-30", "animation=rise,lift,30-50,up,150"],
                 object=HELPER, children=[
                     node("cabin", ["Poly"], transform=at(0, 0, 2), keys=lift, object=box(1, 1, 1), children=[
                         node("rotor", ["Poly"], transform=at(0, 0.6, 0.5), keys=turn,
                              visibility=[[0, 1], [40, 0]], object=box(4, 0.1, 0.3)),
                     ]),
                 ]),
        ],
    }


def russian_names():
    """Names and values in Cyrillic letters; letter case does not matter to references."""
    return {
        "scene": 1,
        "selectionSets": [{"name": "Башня", "nodes": ["башня", "ОРУДИЕ"]}],
        "materials": {"сталь": {"type": "standard", "name": "Сталь", "diffuse": [0.5, 0.5, 0.5]}},
        "nodes": [
            node("Танк", ["Model=units/tank_ru", "Экипаж=три человека"], object=HELPER, children=[
                node("Башня", ["Poly", "Layer=top"], transform=at(0, 0, 1), object=box(2, 2, 1), material="сталь",
                     children=[
                         node("Орудие", ["Poly", "IKType=revolute", "IKMin=-0,1", "IKMax=0,3"],
                              transform=at(0, 1, 0.5), object=box(0.2, 3, 0.2), material="сталь"),
                     ]),
            ]),
        ],
    }


def cube(size):
    """A box as a mesh, so that it can be spoilt: two triangles for each side."""
    low, high = -size / 2, size / 2
    corners = [[x, y, z] for z in (low, high) for y in (low, high) for x in (low, high)]
    faces = [[0, 2, 1], [1, 2, 3], [4, 5, 6], [5, 7, 6], [0, 1, 4], [1, 5, 4], [2, 6, 3], [3, 6, 7], [0, 4, 2],
             [2, 4, 6], [1, 3, 5], [3, 7, 5]]
    return {"type": "mesh", "vertices": corners, "faces": faces}


def mistakes():
    """Slips that artists make, for `zyrexport lint`: each stands at a node that is named after it."""
    dented = cube(2)
    dented["vertices"].append([0, 0, 0])
    dented["faces"] = [face for face in dented["faces"] if min(face) < 4]
    dented["faces"] += [[4, 5, 8], [5, 7, 8], [7, 6, 8], [6, 4, 8]]
    folded = cube(1)
    folded["faces"] = [[0, 2, 1], [0, 2, 1], [1, 1, 3], [4, 5, 6]]
    fields = {"type": "line", "splines": [
        {"points": [[0, 0, 0], [2, 0, 0], [2, 2, 0]]}, {"points": [[5, 0, 0], [7, 0, 0], [7, 2, 0]]},
    ]}
    bones = [f"finger_{number}" for number in range(26)]
    weights = [[[vertex % 26, 1]] for vertex in range(26)] + [[[0, 0.5], [1, 0.2]], [], [[0, 0.4], [1, 0.3], [2, 0.2], [3, 0.1]]]
    comb = {
        "type": "mesh",
        "vertices": [[vertex % 2, vertex // 2, 0] for vertex in range(29)],
        "faces": [[first, first + 1, first + 2] for first in range(27)],
        "modifiers": [{"type": "skin", "bones": bones, "weights": weights}],
    }

    def textured(name, file, slot="diffuse"):
        picture = {"type": "bitmap", "name": f"map of {name}", "file": file}
        if slot == "bump":
            picture = {"type": "normalBump", "normal": picture}
        return {"type": "standard", "name": name, "maps": {slot: {"map": picture}}}

    return {
        "scene": 1,
        "range": [0, 100],
        "selectionSets": [{"name": "all", "nodes": ["turning"]}, {"name": "held", "nodes": ["rusty"]}],
        "materials": {
            "rust": {"type": "standard", "name": "rust"},
            "other rust": {"type": "standard", "name": "Rust", "diffuse": [0.5, 0.2, 0.1]},
            "lost": textured("lost", "textures/not_there.tga"),
            "uneven": textured("uneven", "textures/uneven_normal.tga", "bump"),
        },
        "nodes": [
            node("crane", ["Model=units/crane", "animation=back,all,50-20", "animation=nobody,everyone,0-10",
                           "animation=late,all,90-140", "animation=first,all,20-30,same",
                           "animation=second,all,40-50,same", "animation=climb,all,60-70,../up",
                           "animation=near,alll,80-82", "animation=slip,all,84-8G",
                           "animation=frozen,held,10-18"],
                 object=HELPER, children=[
                     node("turning", keys=[{"frame": 0, "position": [0, 0, 0]}, {"frame": 100, "position": [0, 0, 9]}],
                          object=HELPER),
                     node("misspelled_poly", ["Pol"], object=box(1, 1, 1)),
                     node("misspelled_joint", ["IKTyp=revolute"], object=HELPER),
                     node("russian_poly", ["Роly"], object=box(1, 1, 1)),
                     node("unknown_joint", ["IKType=hinge"], object=HELPER),
                     node("speed_with_unit", ["IKType=revolute", "IKSpeed=2 rad"], object=HELPER),
                     node("open_brace", ["Color={1 0 0"], object=HELPER),
                     node("voxels", ["Voxels=1"], object=box(1, 1, 1)),
                     node("empty_poly", ["Poly"], object=HELPER),
                     node("сab", object=HELPER),
                     node("folded", ["Poly"], object=folded),
                     node("hidden_yard", hidden=True, children=[
                         node("fence", ["Volume"], object=box(9, 9, 1)),
                     ]),
                     node("stretched", transform={"scale": [1, 1, 3], "rotation": [0, 0.5, 0, 0.8660254]},
                          object=HELPER, children=[
                              node("sheared", transform={"rotation": [0.3, 0.2, 0.1, 0.9]}, object=HELPER),
                          ]),
                     node("load", group="head", object=HELPER, children=[
                         node("crate", ["Poly"], group="member", object=box(1, 1, 1)),
                     ]),
                     node("rusty", ["Poly"], object=box(1, 1, 1), material="rust"),
                     node("rusty_too", ["Poly"], object=box(1, 1, 1), material="other rust"),
                     node("bare", ["Poly"], object=box(1, 1, 1), material="lost"),
                     node("uneven", ["Poly"], object=box(1, 1, 1), material="uneven"),
                     node("dented_vol", ["Volume"], object=dented),
                     node("large_vol", ["Volume"], transform={"scale": [3, 3, 3]}, object=box(1, 1, 1)),
                     node("same_vol", ["Volume"], object=box(1, 1, 1)),
                     node("same_vol", ["Volume"], object=box(2, 2, 2)),
                     node("two_fields", ["Area"], object=fields),
                     node("view", ["Preview"], object=HELPER),
                     node("old_body", ["Body"], object=box(1, 1, 1)),
                     node("comb", ["Poly"], object=comb),
                     node("shadowless", ["Poly", "NoCastShadows=0"], object=box(1, 1, 1)),
                     node("limit_of_another", ["IKType=revolute", "IKLimit=1"], object=HELPER),
                     node("thick_bone", ["Thickness=1"], object=HELPER),
                     node("spaced_key", ["LODLastOff = 1"], object=HELPER),
                     node("two_layers", ["Layer=top", "Layer=bottom"], object=HELPER),
                     node("no_layer", ["Layer"], object=HELPER),
                     node("cut_key", ["Экипаж_max=3"], object=HELPER),
                     node("cut_value", ["title=броня"], object=HELPER),
                     node("odd_key", ["rate?=3"], object=HELPER),
                     node("no_ammo", ["ammo="], object=HELPER),
                     node("tagged_vol", ["Volume", "Tags=wall, stone"], object=box(1, 1, 1)),
                     node("swapped", ["IKType=revolute", "IKMin=1", "IKMax=-1"], object=HELPER),
                     node("list_of_names", ["CollideWith=swapped,turnnig"], object=HELPER),
                     node("solid_helper_vol", ["Volume"], object=HELPER),
                     *(node(name, object=HELPER) for name in bones),
                 ]),
            node("twins", ["Model=units/twins"], object=HELPER, children=[
                node("leg", object=HELPER, children=[node("leg", object=HELPER)]),
            ]),
            node("levels", ["Model=units/levels"], object=HELPER, children=[
                node("hull", ["Poly"], object=box(4, 4, 4)),
                node("hull_lod2", ["Poly"], object=box(3, 3, 3)),
            ]),
            node("dust", ["Model=units/dust"], object=HELPER, children=[
                node("speck", ["Poly"], object=box(0.001, 0.001, 0.001)),
            ]),
            node("no_model", ["Poly"], object=box(1, 1, 1)),
            node("lamp", ["Model=units/lamp"], object=HELPER, children=[
                node("shade", ["Poly", "Mesh=shades"], object=box(1, 1, 1)),
            ]),
            node("my_disk", ["Model=C:/models/my_disk"], object=HELPER),
        ],
    }


def tga(size, color_at):
    """An uncompressed image of 24 bits; color_at(x, y) gives red, green and blue, y runs upward."""
    header = struct.pack("<BBBHHBHHHHBB", 0, 0, 2, 0, 0, 0, 0, 0, size, size, 24, 0)
    pixels = [color_at(x, y) for y in range(size) for x in range(size)]
    return header + b"".join(bytes((blue, green, red)) for red, green, blue in pixels)


def is_mortar(x, y):
    """The joints of a wall of bricks, 8 by 4 pixels each."""
    return y % 4 == 0 or (x + (y // 4 % 2) * 4) % 8 == 0


TEXTURES = {
    "bricks.tga": tga(16, lambda x, y: (190, 190, 180) if is_mortar(x, y) else (150, 60 + x, 40)),
    "bricks_normal.tga": tga(16, lambda x, y: (128, 90, 240) if is_mortar(x, y) else (128, 128, 255)),
    "moss.tga": tga(8, lambda x, y: (40, 90 + 10 * ((x * 3 + y * 5) % 7), 30)),
    "mask.tga": tga(8, lambda x, y: (32 * x, 32 * x, 32 * x)),
}

# Pictures that stand beside the scene of mistakes.
FAULTY_TEXTURES = {"uneven_normal.tga": tga(6, lambda x, y: (128, 128, 255))}

EXAMPLES = [
    tank, arm, structure, levels_of_detail, preview_group, gameplay, skinned_strip, materials, yard, waving_flag,
    animations, russian_names, soldier,
]


def write_scene(folder, example):
    path = folder / f"{example.__name__}.scene.json"
    path.write_bytes((text_of(example()) + "\n").encode("utf-8"))


def write_textures(folder, textures):
    (folder / "textures").mkdir(parents=True, exist_ok=True)
    for name, content in textures.items():
        (folder / "textures" / name).write_bytes(content)


def main():
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else pathlib.Path(__file__).resolve().parent
    write_textures(folder, TEXTURES)
    for example in EXAMPLES:
        write_scene(folder, example)
    write_textures(folder / "mistakes", FAULTY_TEXTURES)
    write_scene(folder / "mistakes", mistakes)


if __name__ == "__main__":
    main()
