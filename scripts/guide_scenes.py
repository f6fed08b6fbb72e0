"""The property tables of the artist's guide, and a scene for each row: its example on a node of the kind it names."""

import copy
import re
import typing

from written_models import MARKS, make_examples

HELPER, at, box, node = make_examples.HELPER, make_examples.at, make_examples.box, make_examples.node

# | `Key` | kind | `example` | what it does <br>what comes of it |
ROW = re.compile(r"^(\| `(\w+)` \| (\w+) \| `([^`]+)` \| .*?)(?: <br>.*)? \|$")

PAINT = {
    "green": {"type": "standard", "name": "green", "diffuse": [0.36, 0.43, 0.24]},
    "dark": {"type": "standard", "name": "dark", "diffuse": [0.16, 0.17, 0.18]},
    "steel": {"type": "standard", "name": "steel", "diffuse": [0.45, 0.47, 0.5]},
    "sand": {"type": "standard", "name": "sand", "diffuse": [0.72, 0.62, 0.42]},
    "wood": {"type": "standard", "name": "wood", "diffuse": [0.5, 0.34, 0.2]},
    "red": {"type": "standard", "name": "red", "diffuse": [0.7, 0.16, 0.1]},
}
QUARTER = [0, 0.70710678, 0, 0.70710678]  # about y: what stood up lies along x


def rows(guide):
    """Key, kind of node and example of each row."""
    lines = guide.read_text(encoding="utf-8").splitlines()
    return [match.group(2, 3, 4) for match in map(ROW.match, lines) if match]


def cylinder(radius, height):
    return {"type": "cylinder", "radius": radius, "height": height}


def part(name, color, shape, place=(0, 0, 0), properties=("Poly",), **keys):
    return node(name, properties, transform=at(*place), object=shape, material=color, **keys)


def scene(root, children, name="root", moving=()):
    """A model of that root and its children; those that move are the selection set of the clip, frames 0 to 10."""
    return {"scene": 1, "range": [0, 10], "materials": PAINT, "selectionSets": [{"name": "all", "nodes": list(moving)}],
            "nodes": [node(name, root, object=HELPER, children=children)]}


def tank(*beside, root=("Model=units/tank",), turret=("Poly",), aim=(), rest=("Poly",)):
    """A tank of boxes that looks along x, with what stands beside."""
    barrel = node("barrel", turret, transform={"position": [0.7, 0, 0.25], "rotation": QUARTER},
                  object=cylinder(0.09, 1.7), material="dark")
    return scene(root, [
        part("hull", "green", box(3.4, 1.5, 0.6), (0, 0, 0.45), rest),
        part("turret", "green", box(1.5, 1.2, 0.5), (-0.2, 0, 1.05), [*turret, *aim], children=[barrel]),
        part("left_track", "dark", box(4, 0.5, 0.8), (0, 1, 0), rest),
        part("right_track", "dark", box(4, 0.5, 0.8), (0, -1, 0), rest),
        *beside])


def structure(lines):
    corners = [(-0.8, -0.8), (0.8, -0.8), (0.8, 0.8), (-0.8, 0.8)]
    posts = [part(f"post_{i}", "sand", box(0.3, 0.3, 4), (x, y, 0)) for i, (x, y) in enumerate(corners)]
    tower = node("tower", ["Model=buildings/base/tower"], transform=at(2.5, 0, 0.2), object=HELPER,
                 children=[*posts, part("deck", "sand", box(2.4, 2.4, 0.3), (0, 0, 4))])
    return scene(["Model=buildings/base", *lines], [
        part("floor", "sand", box(9, 6, 0.2)), part("hut", "sand", box(3, 4, 2.4), (-2.2, 0, 0.2)), tower], name="base")


def preview(lines):
    aim = node("aim", group="member", transform=at(0, 0, 0.8), object={"type": "target"})
    # Turned to look along +y and a little down; the aim settles it.
    view = {"position": [-5, -1.5, 2], "rotation": [0.70710678, 0, 0, 0.70710678]}
    lamp = {"type": "light", "kind": "spot", "hotspot": 30, "falloff": 45}
    return tank(node("view", lines, group="head", object=HELPER, children=[
        node("camera", group="member", transform=view, object={"type": "camera", "fov": 50, "targetDistance": 5},
             target="aim"),
        aim, node("lamp", group="member", transform=at(0, 0, 3.2), object=lamp)]))


def soldier(root=(), body=()):
    made = copy.deepcopy(make_examples.soldier())
    made["nodes"][0]["properties"] = ["Model=units/soldier", *root]
    for child in made["nodes"][0]["children"]:
        if child["name"].startswith("body"):
            child["properties"] += body
    return made


def gate(lines):
    swing = [{"frame": 0, "rotation": [0, 0, 0, 1]}, {"frame": 10, "rotation": [0, 0, -0.70710678, 0.70710678]}]
    return scene(["Model=buildings/gate", *lines], [
        part("left_post", "steel", box(0.4, 0.4, 2.8), (-1.3, 0, 0)),
        part("right_post", "steel", box(0.4, 0.4, 2.8), (1.3, 0, 0)),
        node("hinge", transform=at(-1, 0, 0.1), object=HELPER, keys=swing, children=[
            part("leaf", "wood", box(1.9, 0.15, 2.2), (0.98, 0, 0))])], moving=["hinge", "leaf"])


def mill(lines):
    turn = [{"frame": 0, "rotation": [0, 0, 0, 1]}, {"frame": 10, "rotation": [0, 0.70710678, 0, 0.70710678]}]
    return scene(["Model=buildings/mill", *lines], [
        part("house", "sand", cylinder(0.9, 3)),
        node("axle", transform=at(0, -1.1, 2.6), object=HELPER, keys=turn, children=[
            part("blade_a", "wood", box(4, 0.08, 0.35), (0, 0, -0.17)),
            part("blade_b", "wood", box(0.35, 0.08, 4), (0, 0, -2))])],
        moving=["axle", "blade_a", "blade_b"])


def flag(lines):
    cloth = make_examples.waving_flag()["nodes"][0]["children"][0]["object"]
    return scene(["Model=props/flag", "animation=wave,all,0-10"], [
        part("pole", "steel", cylinder(0.08, 2.6)),
        part("cloth", "red", copy.deepcopy(cloth), (0.08, 0, 1.4), ["Poly", *lines])],
        moving=["cloth"])


def bending(lines):
    """A post that was bound to its two bones upright, at frame 10, and is bent at frame 0, where the scene is read."""
    points, faces = make_examples.block((-0.25, -0.25, 0), (0.25, 0.25, 2.4), 8)
    weights = [[[0, 1]] if z < 1.1 else [[1, 1]] if z > 1.3 else [[0, 0.5], [1, 0.5]] for _, _, z in points]
    skin = {"type": "skin", "bones": ["lower", "upper"], "weights": weights, "bindFrame": 10}
    keys = [{"frame": 0, "rotation": [0, 0.38268343, 0, 0.92387953]}, {"frame": 10, "rotation": [0, 0, 0, 1]}]
    return scene(["Model=props/post", "animation=straighten,all,0-10"], [
        node("lower", object=HELPER, children=[node("upper", transform=at(0, 0, 1.2), object=HELPER, keys=keys)]),
        part("skin", "wood", {"type": "mesh", "vertices": points, "faces": faces, "smoothing": 0, "modifiers": [skin]},
             properties=["Poly", *lines])], moving=["lower", "upper"])


def instance(lines):
    return scene(["Model=units/tank"], [
        part("hull", "green", box(3.4, 1.5, 0.6), (0, 0, 0.45)),
        part("first", "dark", box(4, 0.5, 0.8), (0, 1, 0)),
        node("second", ["Poly", *lines] if lines else [], transform=at(0, -1, 0), object=HELPER)])


def in_the_shade(lines):
    """A mast throws its shadow on the tank that has the lines."""
    own = ["Poly", *lines]
    return tank(part("mast", "red", box(0.2, 0.2, 4), (-1.5, -2, 0)), turret=own, rest=own)


def in_the_sun(lines):
    return scene(["Model=buildings/hut"], [
        part("hut", "sand", box(2, 2, 1.8), (0, 0, 0), ["Poly", *lines]),
        part("near_mast", "red", box(0.2, 0.2, 2.4), (2.4, -1.2, 0)),
        part("far_mast", "red", box(0.2, 0.2, 2.4), (-2, 0, 0))])


def stand(lines):
    """The feet lie at whole units, to which support points are cut."""
    feet = [(0, 0), (2, 0), (2, 1), (0, 1)]
    legs = [part(f"leg_{i}", "dark", box(0.12, 0.12, 1), (x, y, 0)) for i, (x, y) in enumerate(feet)]
    points = [node(f"foot_{i}", lines, transform=at(x, y, 0), object=HELPER) for i, (x, y) in enumerate(feet)]
    return scene(["Model=props/stand"], [part("deck", "wood", box(2.3, 1.3, 0.15), (1, 0.5, 1)), *legs, *points])


class Drawing(typing.NamedTuple):
    """How a row is seen: its scene by the lines that the row's node has, with the example and without; the switches of
    the preview that are on; how much of the clip has gone by; a bone, or "volume" or "zone", of which the page tells."""
    scene: typing.Callable
    show: list = []
    moment: float | None = None
    choose: str | None = None

    def of(self, page):
        """A page as draw-pages.mjs takes it."""
        return {"page": page, "show": self.show, "moment": self.moment, "choose": self.choose}


DRAWN = {
    "Model": Drawing(lambda lines: tank(root=lines)),
    "Structure": Drawing(structure),
    "Volume": Drawing(lambda lines: tank(node("armor_vol", lines, transform=at(0, 0, -0.1), object=box(4.2, 2.7, 1.2))),
                      MARKS),
    "Component": Drawing(lambda lines: tank(node("dome_vol", lines, transform=at(-0.2, 0, 1.2),
                                                 object={"type": "sphere", "radius": 1})), MARKS),
    "Obstacle": Drawing(lambda lines: tank(node("room", lines, object={"type": "circle", "radius": 2.6})), MARKS),
    "Area": Drawing(lambda lines: tank(node("yard", lines, object={"type": "rectangle", "width": 6, "length": 4.5})),
                    MARKS),
    "SupportPoint": Drawing(stand, MARKS),
    "Preview": Drawing(preview, MARKS),
    "animation": Drawing(lambda lines: soldier(root=lines), moment=0.25),
    "animationresume": Drawing(gate, moment=1),
    "animationauto": Drawing(mill, moment=0.5),
    "Poly": Drawing(lambda lines: tank(turret=lines)),
    "Mesh": Drawing(instance),
    "CommonMesh": Drawing(flag, moment=0.5),
    "NoSkin": Drawing(lambda lines: soldier(root=["animation=walk,all,0-24"], body=lines), moment=0.25),
    "OldSkin": Drawing(bending),
    "NoCastShadows": Drawing(in_the_sun, ["shadows"]),
    "NoGetShadows": Drawing(in_the_shade, ["shadows"]),
}

# Drawn once for all rows of a kind, with all their examples at one node: what the preview tells of it.
CHOSEN = {
    "joint": Drawing(lambda lines: tank(turret=["Poly"], aim=["IKType=revolute", *lines]), choose="turret"),
    "zone": Drawing(lambda lines: tank(node("yard", ["Area", *lines], object={"type": "circle", "radius": 2.6})),
                    ["zones"], choose="zone"),
    "volume": Drawing(lambda lines: tank(node("armor_vol", ["Volume=armor", *lines], transform=at(0, 0, -0.1),
                                              object=box(4.2, 2.7, 1.2))), ["volumes"],
                      choose="volume"),
}

BOX = box(1, 1, 1)


def plain(key, kind, lines):
    """A model in which the lines stand on a node of that kind, with what such a node needs to make sense."""
    on_root = lines if kind == "root" else []
    root = on_root if key == "XModel" else ["Model=guide/model", *on_root]
    beside = {
        "any": ("part", [], {"object": HELPER}),
        "bone": ("part", [], {"object": HELPER if key == "Color" else BOX}),
        "mesh": ("part", ["Poly"], {"object": BOX}),
        "joint": ("part", ["Poly", "IKType=revolute"], {"object": BOX}),
        "socket": ("part", ["Poly", "IKType=socket"], {"object": BOX}),
        "volume": ("part_vol", ["Volume"], {"object": BOX}),
        "zone": ("part", ["Area"], {"object": {"type": "circle", "radius": 1}}),
        "body": ("part", [], {"object": BOX}),
        "none": ("part", [], {"object": BOX}),
    }.get(kind)
    moved = [{"frame": 0, "position": [0, 0, 0]}, {"frame": 10, "position": [0, 0, 1]}]
    children = [node("first", ["Poly"], object=BOX, keys=moved), node("second", ["Poly"], object=copy.copy(BOX))]
    if beside:
        name, own, keys = beside
        children.append(node(name, [*own, *lines], **keys))
    if key == "LODLastOff":  # there must be a last level
        children.append(node("part_lod1", ["Poly"], object=BOX))
    return {"scene": 1, "range": [0, 200], "selectionSets": [{"name": "all", "nodes": ["first", "second"]}],
            "nodes": [node("root", root, object=HELPER, children=children)]}


def scene_of(key, kind, example=None):
    """The scene of a row, with its example or without."""
    lines = [example] if example else []
    return DRAWN[key].scene(lines) if key in DRAWN else plain(key, kind, lines)
