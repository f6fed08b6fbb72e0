#!/usr/bin/env python3
"""Writes the small scene files of the tests, one of each format that the import library reads.

Usage: make_files.py; the files stand beside the script. All show a triangle or a little more, built lopsided, so
that a turn, a mirror or a unit gone wrong shows.
"""

import pathlib
import struct

HERE = pathlib.Path(__file__).parent
TICKS_PER_FRAME = 46186158000 // 24


def array(name, values):
    return f"{name}: *{len(values)} {{\n a: {','.join(str(value) for value in values)}\n}}\n"


def layer(kind, number, mapping, fields):
    return (f'LayerElement{kind}: {number} {{\n Version: 101\n Name: "set{number}"\n'
            f' MappingInformationType: "{mapping}"\n {fields}}}\n')


def prop(name, kind, flags, *values):
    told = ", ".join('"' + value.replace('"', "&quot;") + '"' if isinstance(value, str) else str(value) for value in values)
    return f'P: "{name}", "{kind}", "", "{flags}",{told}\n'


def record(kind, number, name, sub, body):
    return f'{kind}: {number}, "{name}", "{sub}" {{\n{body}}}\n'


def properties(*lines):
    return "Properties70: {\n" + "".join(lines) + "}\n"


# A pentagon in the ground, of the first material, and a triangle on its first edge, of the second.
POINTS = [(0, 0, 0), (20, 0, 0), (30, 10, 0), (10, 20, 0), (0, 10, 0), (0, 0, 30)]
POLYGONS = [(0, 1, 2, 3, 4), (0, 1, 5)]


def geometry():
    corners = [corner for polygon in POLYGONS for corner in polygon]
    ends = [corner if place + 1 < len(polygon) else -corner - 1
            for polygon in POLYGONS for place, corner in enumerate(polygon)]
    normals = [part for polygon, normal in zip(POLYGONS, ((0, 0, 1), (0, -1, 0))) for _ in polygon for part in normal]
    def uv(scale):
        return [part for corner in corners for part in (POINTS[corner][0] * scale, POINTS[corner][1] * scale)]
    colors = [part for corner in corners for part in (corner / 10, 0, 0, 1)]
    layers = "Layer: 0 {\n Version: 100\n" + "".join(
        f' LayerElement: {{\n  Type: "LayerElement{kind}"\n  TypedIndex: 0\n }}\n'
        for kind in ("Normal", "UV", "Color", "Material")) + "}\n"
    layers += 'Layer: 1 {\n Version: 100\n LayerElement: {\n  Type: "LayerElementUV"\n  TypedIndex: 1\n }\n}\n'
    return record("Geometry", 400, "Geometry::plate", "Mesh",
                  array("Vertices", [part for point in POINTS for part in point]) +
                  array("PolygonVertexIndex", ends) +
                  layer("Normal", 0, "ByPolygonVertex",
                        'ReferenceInformationType: "Direct"\n' + array("Normals", normals)) +
                  "".join(layer("UV", number, "ByPolygonVertex", 'ReferenceInformationType: "IndexToDirect"\n' +
                                array("UV", uv(scale)) + array("UVIndex", list(range(len(corners)))))
                          for number, scale in enumerate((0.01, 0.1))) +
                  layer("Color", 0, "ByPolygonVertex", 'ReferenceInformationType: "Direct"\n' +
                        array("Colors", colors)) +
                  layer("Material", 0, "ByPolygon", 'ReferenceInformationType: "IndexToDirect"\n' +
                        array("Materials", [0, 1])) + layers)


HELD, STRAIGHT = 2, 4


def curve(number, frames, values, flag=STRAIGHT):
    return record("AnimationCurve", number, "AnimCurve::", "",
                  f"Default: {values[0]}\nKeyVer: 4008\n" +
                  array("KeyTime", [frame * TICKS_PER_FRAME for frame in frames]) +
                  array("KeyValueFloat", values) + array("KeyAttrFlags", [flag]) +
                  array("KeyAttrDataFloat", [0, 0, 0, 0]) + array("KeyAttrRefCount", [len(frames)]))


def take(number, name, frames):
    """Objects and connections."""
    time = [prop(key, "KTime", "", frame * TICKS_PER_FRAME) for key, frame in
            (("LocalStart", frames[0]), ("LocalStop", frames[-1]))]
    return (record("AnimationStack", number, f"AnimStack::{name}", "", properties(*time)) +
            record("AnimationLayer", number + 1, "AnimLayer::base", "", ""), [("OO", number + 1, number)])


def motion(number, layer, model, part, axis, frames, values, flag=STRAIGHT):
    """Moves an axis of a part of a node in the layer of a take. Objects and connections."""
    axes = ("X", "Y", "Z") if axis in "XYZ" else (axis,)
    objects = record("AnimationCurveNode", number, "AnimCurveNode::N", "", properties(
        *(prop(f"d|{each}", "Number", "A", values[0] if each == axis else 0) for each in axes)))
    return objects + curve(number + 1, frames, values, flag), [
        ("OO", number, layer), ("OP", number, model, part), ("OP", number + 1, number, f"d|{axis}")]


def fbx():
    vector = lambda name, *values: prop(name, "Vector3D", "A", *values)
    arm = record("Model", 100, "Model::arm", "Null", properties(
        prop("UDP3DSMAX", "KString", "U", "Model = tests/arm&cr;&lf;Hold=claw"),
        prop("crew", "int", "A+U", 4), prop("Hold", "KString", "A+U", "nothing"),
        prop("armour", "double", "A+U", 0.5), prop("Кисть", "KString", "A+U", "правая"),
        prop("InheritType", "enum", "", 1)))
    claw = record("Model", 200, "Model::claw", "Mesh", properties(
        prop("Poly", "KString", "A+U", ""), prop("Ground", "bool", "A+U", 1), prop("Land", "bool", "A+U", 0),
        prop("Tags", "KString", "A+U", "['left, low', \"it's\", 'c:\\\\d']"), prop("Max", "KString", "A+U", "[0.0, 45.5]"),
        prop("Odd", "KString", "A+U", "['a', 1]"), prop("Empty", "KString", "A+U", "[]"),
        vector("Lcl Translation", 0, 0, 100), vector("Lcl Rotation", 0, 0, 90), vector("RotationPivot", 10, 0, 0),
        vector("GeometricTranslation", 0, 0, 5), prop("RotationActive", "bool", "", 1)))
    twin = record("Model", 300, "Model::twin", "Mesh", properties(
        vector("Lcl Translation", 0, 50, 0), vector("Lcl Scaling", -1, 1, 1),
        vector("GeometricTranslation", 0, 0, 5), prop("Visibility Inheritance", "Visibility Inheritance", "", 0)))
    bolts = "".join(record("Model", number, "Model::bolt", "Null", properties(vector("Lcl Translation", x, 0, 0)))
                    for number, x in ((310, 1), (311, 2)))
    wood = record("Material", 500, "Material::wood", "", properties(
        prop("DiffuseColor", "Color", "A", 0.5, 0.25, 0.125)))
    glass = record("Material", 501, "Material::glass", "", properties(prop("Opacity", "double", "A", 0.25)))
    texture = record("Texture", 600, "Texture::wood", "", "FileName: \"C:\\art\\maps\\wood.bmp\"\n"
                     "RelativeFilename: \"..\\maps\\wood.bmp\"\n")
    video = record("Video", 601, "Video::unused", "Clip", 'Type: "Clip"\nContent: ,\n "Qk0="\n')
    takes = [take(700, "swing", (10, 20)), take(800, "grab", (0, 4)), take(900, "blink", (0, 6)),
             motion(702, 701, 200, "Lcl Rotation", "Z", (10, 20), (90, 180)),
             motion(704, 701, 310, "Lcl Translation", "X", (10, 20), (1, 3)),
             motion(706, 701, 311, "Lcl Translation", "X", (10, 20), (2, 6)),
             motion(802, 801, 200, "Lcl Rotation", "Z", (0, 4), (90, 50)),
             motion(804, 801, 100, "Visibility", "Visibility", (0, 2, 4), (1, 0, 1), HELD),
             motion(902, 901, 200, "Visibility", "Visibility", (0, 6), (1, 0))]
    links = [("OO", 100, 0), ("OO", 200, 100), ("OO", 300, 100), ("OO", 310, 100), ("OO", 311, 200),
             ("OO", 400, 200), ("OO", 400, 300),
             ("OO", 500, 200), ("OO", 501, 200), ("OO", 501, 300), ("OO", 500, 300),
             ("OP", 600, 500, "DiffuseColor")] + [link for _, own in takes for link in own]
    told = "".join("C: " + ", ".join(f'"{word}"' if isinstance(word, str) else str(word) for word in link) + "\n"
                   for link in links)
    settings = properties(*(prop(key, "int", "", value) for key, value in (
        ("UpAxis", 2), ("UpAxisSign", 1), ("FrontAxis", 1), ("FrontAxisSign", -1), ("CoordAxis", 0),
        ("CoordAxisSign", 1))), prop("UnitScaleFactor", "double", "", 1), prop("TimeMode", "enum", "", 11))
    return ("; FBX 7.4.0 project file\n"
            "FBXHeaderExtension: {\n FBXHeaderVersion: 1003\n FBXVersion: 7400\n}\n"
            "GlobalSettings: {\n Version: 1000\n" + settings + "}\n"
            "Objects: {\n" + arm + claw + twin + bolts + geometry() + wood + glass + texture + video +
            "".join(objects for objects, _ in takes) + "}\nConnections: {\n" + told + "}\n").encode()


COLLADA = """<?xml version="1.0" encoding="utf-8"?>
<COLLADA xmlns="http://www.collada.org/2005/11/COLLADASchema" version="1.4.1">
<asset><unit name="centimeter" meter="0.01"/><up_axis>Z_UP</up_axis></asset>
<library_images><image id="i"><init_from>wood.bmp</init_from></image></library_images>
<library_effects><effect id="e"><profile_COMMON>
<newparam sid="f"><surface type="2D"><init_from>i</init_from></surface></newparam>
<newparam sid="t"><sampler2D><source>f</source></sampler2D></newparam>
<technique sid="c"><lambert><diffuse><texture texture="t" texcoord="UV1"/></diffuse></lambert></technique>
</profile_COMMON></effect></library_effects>
<library_materials><material id="m" name="wood"><instance_effect url="#e"/></material></library_materials>
<library_geometries><geometry id="g" name="plate"><mesh>
<source id="p"><float_array id="pa" count="9">0 0 0 20 0 0 0 0 30</float_array><technique_common>
<accessor source="#pa" count="3" stride="3"><param name="X" type="float"/><param name="Y" type="float"/>
<param name="Z" type="float"/></accessor></technique_common></source>
<source id="u"><float_array id="ua" count="6">0 0 1 0 0 1</float_array><technique_common>
<accessor source="#ua" count="3" stride="2"><param name="S" type="float"/><param name="T" type="float"/>
</accessor></technique_common></source>
<vertices id="v"><input semantic="POSITION" source="#p"/></vertices>
<triangles count="1" material="w"><input semantic="VERTEX" source="#v" offset="0"/>
<input semantic="TEXCOORD" source="#u" offset="0" set="0"/><input semantic="TEXCOORD" source="#u" offset="0" set="1"/>
<p>0 1 2</p></triangles>
</mesh></geometry></library_geometries>
<library_controllers><controller id="k"><skin source="#g">
<bind_shape_matrix>1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1</bind_shape_matrix>
<source id="j"><Name_array id="ja" count="1">joint</Name_array><technique_common>
<accessor source="#ja" count="1"><param name="JOINT" type="name"/></accessor></technique_common></source>
<source id="b"><float_array id="ba" count="16">1 0 0 -5 0 1 0 0 0 0 1 0 0 0 0 1</float_array><technique_common>
<accessor source="#ba" count="1" stride="16"><param name="TRANSFORM" type="float4x4"/></accessor>
</technique_common></source>
<source id="w"><float_array id="wa" count="1">1</float_array><technique_common>
<accessor source="#wa" count="1"><param name="WEIGHT" type="float"/></accessor></technique_common></source>
<joints><input semantic="JOINT" source="#j"/><input semantic="INV_BIND_MATRIX" source="#b"/></joints>
<vertex_weights count="3"><input semantic="JOINT" source="#j" offset="0"/>
<input semantic="WEIGHT" source="#w" offset="1"/><vcount>1 1 1</vcount><v>0 0 0 0 0 0</v></vertex_weights>
</skin></controller></library_controllers>
<library_visual_scenes><visual_scene id="s" name="s"><node id="node-1" name="claw">
<translate>0 0 100</translate><instance_geometry url="#g"><bind_material><technique_common>
<instance_material symbol="w" target="#m"/></technique_common></bind_material></instance_geometry></node>
<node id="skinned" name="skinned"><instance_controller url="#k"><skeleton>#joint</skeleton></instance_controller></node>
<node id="joint" name="joint" sid="joint" type="JOINT"><translate>0 0 7</translate></node>
</visual_scene></library_visual_scenes>
<scene><instance_visual_scene url="#s"/></scene>
</COLLADA>
"""

WAVEFRONT = """# y points up
mtllib small.mtl
o claw
v 0 1 0
v 0.2 1 0
v 0 1.3 0
usemtl wood
f 1 2 3
o peg
v 0 2 0
f 1 2 4
o claw
f 2 3 4
f 1 3 4
"""

MATERIALS = "newmtl wood\nKd 0.5 0.25 0.125\n"


def studio():
    def chunk(kind, *parts):
        body = b"".join(parts)
        return struct.pack("<HI", kind, len(body) + 6) + body
    points = struct.pack("<H9f", 3, 0, 0, 1, 0.2, 0, 1, 0, 0, 1.3)
    faces = struct.pack("<H4H", 1, 0, 1, 2, 0)
    mesh = chunk(0x4100, chunk(0x4110, points), chunk(0x4120, faces))
    node = chunk(0xB002, chunk(0xB030, struct.pack("<H", 0)), chunk(0xB010, b"claw\0", struct.pack("<3H", 0, 0, 0xFFFF)))
    return chunk(0x4D4D, chunk(0x0002, struct.pack("<I", 3)),
                 chunk(0x3D3D, chunk(0x4000, b"claw\0", mesh)), chunk(0xB000, node))


FILES = {"small.fbx": fbx(), "small.dae": COLLADA.encode(), "small.obj": WAVEFRONT.encode(),
         "small.mtl": MATERIALS.encode(), "small.3ds": studio()}

if __name__ == "__main__":
    for name, content in FILES.items():
        (HERE / name).write_bytes(content)
