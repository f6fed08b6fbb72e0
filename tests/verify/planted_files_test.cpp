#include <gmock/gmock.h>

#include <cstring>
#include <functional>

#include "animation/animation_reader.h"
#include "animation/export_frame.h"
#include "geometry/vertex_layout.h"
#include "mesh/file/mesh_reader.h"
#include "support/pictures.h"
#include "verify/verify_run.h"

namespace {

using namespace verify_test;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kMeshes[] = "units/tank/.mesh";
constexpr char kModel[] = "units/tank/tank.mdl";
constexpr char kClip[] = "units/tank/drive.anm";
constexpr char kHouse[] = "units/house/house.mdl";
constexpr char kHouseEntity[] = "units/house/house.def";

// Pictures that lie beside all scenes of this file.
std::string Picture(const char* name) {
    static const support::eTempFolder art;
    if (!art.Has(name)) {
        support::ePicture picture{4, 4, 3, {}};
        for (int i = 0; i < 48; ++i) {
            picture.values.push_back(static_cast<std::uint8_t>(i % 3 == 2 ? 250 : 110 + i / 2));
        }
        art.Write("rust.tga", support::Tga(picture));
        art.Write("dents.png", support::Png(picture));
    }
    return art / name;
}

// A tank with what a file can hold: two materials, colours, a mirrored and a skinned mesh, a bone that turns,
// one that hides, and a flag that waves by frames.
standalone::eSceneData Tank() {
    support::eSceneBuilder scene;
    scene.Settings().lastFrame = 10;
    standalone::eStandardMaterial dented;
    dented.maps[host::kBumpMap].map = scene.Map(standalone::eNormalBumpMap{
        .normal = scene.Map(standalone::eBitmapMap{.file = Picture("dents.png")})});
    const int iron = scene.Material("Iron", dented);
    const int map =
        scene.Map(standalone::eBitmapMap{.file = Picture("rust.tga")}, {.offset = {0.25F, 0}, .angle = 30});
    standalone::eStandardMaterial painted;
    painted.maps[host::kDiffuseMap] = {.map = map};
    const int paint = scene.Material("paint", painted);

    support::eNode tank = scene.Node("tank").Property("Model=units/tank").Property("animation=drive,,0-10");
    tank.Object(standalone::eHelperObject{});
    tank.Child("hull").Property("Poly").Material(paint).Position(0, 0, 1).Object(
        standalone::eMeshObject{support::GridMesh(3, 2)});
    tank.Child("twin").Property("Poly").Material(iron).Scale(-1, 2, 1).Object(
        standalone::eMeshObject{support::GridMesh(2, 2)});
    support::eNode turret = tank.Child("turret").Object(standalone::eHelperObject{});
    turret.VisibilityKey(5, 1).VisibilityKey(6, 0);
    for (int frame = 0; frame <= 10; ++frame) {
        const auto far = static_cast<float>(frame);
        turret.Key({.frame = far,
                    .position = host::Point3{far * far / 10, 0, 2},
                    .rotation = support::RotationAbout({0, 0, 1}, far * 9)});
    }
    support::eNode tip = turret.Child("tip").Object(standalone::eHelperObject{}).Position(1, 0, 0);
    tank.Child("hose")
        .Property("Poly")
        .Material(iron)
        .Object(standalone::eMeshObject{support::GridMesh(1, 1)})
        .Skin({turret, tip}, {{{0, 1}}, {{0, 0.75F}, {1, 0.25F}}, {{1, 1}}, {{0, 0.5F}, {1, 0.5F}}});
    standalone::eMeshObject flag{support::GridMesh(1, 1)};
    std::vector<host::Point3> waved = flag.mesh.verts;
    flag.vertexKeys.push_back({0, waved});
    waved[3].z = 1;
    flag.vertexKeys.push_back({10, waved});
    tank.Child("flag").Property("CommonMesh").Material(iron).Object(flag);
    return scene.Build();
}

// What hangs on bones beside meshes, each at an odd place: primitives and a polyhedron as volumes, zones of
// all figures, support points, a view with camera and lights.
standalone::eSceneData House() {
    support::eSceneBuilder scene;
    scene.Settings().unitMetres = 0.5;
    scene.Settings().lastFrame = 9;
    scene.Settings().ambient = {0.1F, 0.1F, 0.1F};
    support::eNode house = scene.Node("house")
                               .Property("Model=units/house")
                               .Property("Hold=mast floor")
                               .Property("animation=open,all,0-9,door,50");
    house.Object(standalone::eHelperObject{}).Position(3, 4, 0).Rotation({0, 0, 1}, 20);
    support::eNode wall = house.Child("wall")
                              .Property("IKType=socket")
                              .Property("IKLimit=1,5")
                              .Property("speed=1,5")
                              .Property("Color=3");
    wall.Object(standalone::eHelperObject{}).Position(1, 2, 3).Rotation({1, 0, 0}, 30);
    wall.Child("plate_vol")
        .Property("Volume=armor")
        .Property("bullet=2")
        .Property("Thickness=0,4")
        .Property("Tags=a,b")
        .Position(0, 1, 2)
        .Rotation({0, 1, 0}, 40)
        .Object(standalone::eBoxObject{2, 3, 4});
    wall.Child("ball_vol")
        .Property("Volume")
        .Property("Clear")
        .Object(standalone::eSphereObject{.radius = 2});
    wall.Child("barrel_vol").Property("Volume").Position(1, 0, 0).Object(standalone::eCylinderObject{1, 5});
    house.Child("roof_vol")
        .Property("Volume")
        .Property("Obstacle")
        .Property("Land")
        .Scale(1, 2, 1)
        .Position(0, 0, 6)
        .Object(standalone::eMeshObject{support::TriangleMesh({{0, 0, 0}, {2, 0, 0}, {0, 2, 0}, {0, 0, 2}},
                                                              {{0, 2, 1}, {0, 1, 3}, {0, 3, 2}, {1, 2, 3}})});
    house.Child("yard")
        .Property("Area")
        .Property("Proper=cat")
        .Rotation({0, 0, 1}, 33)
        .Object(standalone::eBoxObject{8, 5, 1});
    house.Child("pool")
        .Property("Obstacle")
        .Property("Move")
        .Position(5, 1, 0)
        .Scale(2, 2, 1)
        .Object(standalone::eCircleObject{3});
    house.Child("gate")
        .Property("Area")
        .Position(-3, 2, 0)
        .Rotation({0, 0, 1}, 15)
        .Object(standalone::eRectangleObject{4, 2});
    house.Child("lawn").Property("Area").Position(1, 1, 0).Object(
        standalone::eLineObject{.splines = {{.points = {{-6, -6, 0}, {6, -5, 0}, {4, 6, 0}}}}});
    wall.Child("step").Property("SupportPoint").Position(3, -4, 9).Object(standalone::eHelperObject{});
    wall.Child("rung").Property("SupportPoint").Position(0, 7, 2).Object(standalone::eHelperObject{});
    support::eNode view = house.Child("view").Property("Preview").GroupHead();
    view.Object(standalone::eHelperObject{});
    support::eNode aim = view.Child("aim").GroupMember().Position(1, 9, 2);
    aim.Object(standalone::eTargetObject{});
    view.Child("eye")
        .GroupMember()
        .Target(aim)
        .Position(0, -8, 3)
        .Rotation({1, 0.2F, 0}, 70)
        .Object(standalone::eCameraObject{.fov = 50});
    view.Child("lamp")
        .GroupMember()
        .Position(0, 0, 8)
        .Rotation({1, 0, 0}, 25)
        .Object(standalone::eLightObject{.kind = standalone::eLightKind::Spot, .color = {1, 0.5F, 0}});
    view.Child("sun").GroupMember().Object(
        standalone::eLightObject{.kind = standalone::eLightKind::Directional});
    return scene.Build();
}

std::span<const std::uint8_t> BytesOf(const std::string& file) {
    return {reinterpret_cast<const std::uint8_t*>(file.data()), file.size()};
}

// The mesh of that name, its places those in the file.
eFileMesh MeshIn(const std::string& file, const std::string& name) {
    std::string problem;
    const std::vector<eFileMesh> meshes = ReadMeshFile(BytesOf(file), problem).value().meshes;
    return *std::ranges::find(meshes, name, &eFileMesh::name);
}

// Changes the fields of a vertex of the mesh.
void ChangeVertex(std::string& file, const char* name, std::size_t number,
                  const std::function<void(eExportVertex&)>& change) {
    const eFileMesh mesh = MeshIn(file, name);
    eExportVertex vertex = mesh.Vertex(mesh.subMeshes.front(), number);
    change(vertex);
    PackVertex(vertex, mesh.subMeshes.front().format,
               reinterpret_cast<std::uint8_t*>(file.data() + mesh.verticesPlace + number * mesh.stride));
}

// Where the position of a bone's key stands; it is in the file once. Its flags stand before it.
std::size_t KeyPlace(const std::string& file, const char* bone, int frame) {
    std::string problem;
    const eAnimation clip = ReadAnimation(BytesOf(file), problem).value();
    const auto number = std::ranges::find(clip.bones, bone) - clip.bones.begin();
    const auto record = std::ranges::find(clip.frames, frame, &eAnimationFrame::frame);
    const auto key = std::ranges::find(record->keys, static_cast<int>(number), &eAnimationKey::bone);
    const std::string position(reinterpret_cast<const char*>(&key->position), sizeof key->position);
    EXPECT_EQ(file.find(position), file.rfind(position));
    return file.find(position);
}

void MoveKey(std::string& file, const char* bone, int frame, float x) {
    float moved = 0;
    char* const place = file.data() + KeyPlace(file, bone, frame);
    std::memcpy(&moved, place, sizeof moved);
    moved += x;
    std::memcpy(place, &moved, sizeof moved);
}

void SwapIndices(std::string& file, const char* name) {
    const std::size_t place = MeshIn(file, name).indicesPlace;
    std::swap_ranges(file.begin() + static_cast<std::ptrdiff_t>(place),
                     file.begin() + static_cast<std::ptrdiff_t>(place + 2),
                     file.begin() + static_cast<std::ptrdiff_t>(place + 2));
}

void Replace(std::string& file, const std::string& before, const std::string& after) {
    ASSERT_NE(file.find(before), std::string::npos);
    file.replace(file.find(before), before.size(), after);
}

// The number that stands behind the text, so much greater.
void AddTo(std::string& file, const std::string& text, double more, std::size_t from = 0) {
    const std::size_t place = file.find(text, from);
    ASSERT_NE(place, std::string::npos) << file;
    std::size_t length = 0;
    const double number = std::stod(file.substr(place + text.size()), &length);
    file.replace(place + text.size(), length, " " + std::to_string(number + more));
}

// Other numbers behind the text, in place of two.
void SetTwo(std::string& file, const std::string& text, const std::string& numbers, std::size_t from) {
    const std::size_t place = file.find(text, from);
    ASSERT_NE(place, std::string::npos) << file;
    file.replace(place, file.find('}', place) - place, text + " " + numbers);
}

struct ePlantedFile {
    const char* name;
    const char* file;
    std::function<void(std::string&)> plant;
    std::vector<std::string> findings;
};

class PlantedFile : public testing::TestWithParam<ePlantedFile> {};

// Catches a verification that is blind to a fault, tells it as another one, or tells what is no fault.
TEST_P(PlantedFile, IsTold) {
    eVerifyRun run(std::string(GetParam().file).starts_with("units/house/") ? House() : Tank());
    run.Do();
    ASSERT_THAT(run.Findings(), IsEmpty());
    std::string content = run.Read(GetParam().file);
    GetParam().plant(content);
    run.Write(GetParam().file, content);
    EXPECT_EQ(run.Findings(), GetParam().findings);
}

const ePlantedFile kPlantedFiles[] = {
    {"TurnedTriangle", kMeshes, [](std::string& f) { SwapIndices(f, "hull"); }, {"hull: turned triangle 1"}},
    {"MovedVertex",
     kMeshes,
     [](std::string& f) { ChangeVertex(f, "twin", 0, [](auto& v) { v.position.y += 0.002F; }); },
     {"twin: moved triangle 3"}},
    {"LostTriangle",
     kMeshes,
     [](std::string& f) { ChangeVertex(f, "twin", 0, [](auto& v) {
                              v.position = {0.5F, 1, 0};
                          }); },
     {"twin: missing triangle 3", "twin: foreign triangle 3"}},
    {"MapCoordinates",
     kMeshes,
     [](std::string& f) { ChangeVertex(f, "hull", 0, [](auto& v) { v.uv0.y += 0.01F; }); },
     {"hull: map coordinates 3"}},
    {"Normal",
     kMeshes,
     [](std::string& f) { ChangeVertex(f, "hull", 0, [](auto& v) {
                              v.normal = {0, 0.01F, 0.99995F};
                          }); },
     {"hull: normal 3"}},
    {"Weight",
     kMeshes,
     [](std::string& f) {
         for (std::size_t i = 0; i < 4; ++i) {
             ChangeVertex(f, "hose", i,
                          [](auto& v) { v.weights[0] = v.weights[0] == 0.75F ? 0.74F : v.weights[0]; });
         }
     },
     {"hose: weights 1"}},
    {"SkinBone",
     kMeshes,
     [](std::string& f) { Replace(f, "\6turret", "\6turreT"); },
     {"hose: skin 1", "hose: weights 2"}},
    {"Material",
     kMeshes,
     [](std::string& f) { Replace(f, "\5paint", "\5point"); },
     {"hull: material 12", "hull: material reference 1"}},
    {"MeshName",
     kMeshes,
     [](std::string& f) { Replace(f, "\4hull", "\4hall"); },
     {"tank: view 1", "tank: foreign mesh 1", "hull: missing mesh 1"}},
    {"CutFile",
     kMeshes,
     [](std::string& f) { f.resize(f.size() - 1); },
     {"tank: view 4", "hull: missing mesh 1", "twin: missing mesh 1", "hose: missing mesh 1",
      "flag: missing mesh 1"}},
    {"View", kModel, [](std::string& f) { Replace(f, "poly \"hull\"", "poly \"hall\""); }, {"tank: view 1"}},
    {"BonePlace",
     kModel,
     [](std::string& f) { Replace(f, "{Position 0 \t 0 \t 1}", "{Position 0 \t 0 \t 1.003}"); },
     {"tank: bone position 1"}},
    {"BoneName",
     kModel,
     [](std::string& f) { Replace(f, "{bone \"tip\"", "{bone \"top\""); },
     {"tank: missing bone 1", "tank: foreign bone 1"}},
    {"KeyTwoMillimetresOff",
     kClip,
     [](std::string& f) { MoveKey(f, "turret", 5, 0.002F); },
     {"drive: position 1"}},
    {"Visibility",
     kClip,
     [](std::string& f) { f[KeyPlace(f, "turret", 6) - 2] ^= kFrameVisible | kFrameHidden; },
     {"drive: visibility 4"}},
    {"SwappedPicture",
     "units/tank/rust.tga",
     [](std::string& f) { f.back() ^= 1; },
     {"rust.tga: other picture 1"}},
    {"NormalMap",
     "units/tank/dents.dds",
     [](std::string& f) { std::fill(f.begin() + 128, f.end(), '\0'); },
     {"dents.dds: picture quality 1"}},
    {"PictureName",
     "units/tank/.material",
     [](std::string& f) { Replace(f, "{diffuse \"rust\"", "{diffuse \"dust\""); },
     {"hull: picture reference 1"}},
    {"ClipName",
     kClip,
     [](std::string& f) { Replace(f, "\3tip", "\3top"); },
     {"drive: missing bone 1", "drive: foreign bone 1"}},
    {"VolumeScaled", kHouse, [](std::string& f) { AddTo(f, "{box 1 1.5", 0.1); }, {"house: volume size 1"}},
    {"VolumeMoved",
     kHouse,
     [](std::string& f) { AddTo(f, "{Position", 0.003, f.find("{\"barrel\"")); },
     {"house: volume position 1"}},
    {"VolumeTurned",
     kHouse,
     [](std::string& f) { AddTo(f, "{matrix34", -0.01, f.find("{\"plate\"")); },
     {"house: volume rotation 1"}},
    {"PolyhedronCorner",
     kHouse,
     [](std::string& f) { Replace(f, "0000803f", "0000903f"); },
     {"house: volume vertices 1"}},
    {"VolumeBone",
     kHouse,
     [](std::string& f) { Replace(f, "{bone \"wall\"}", "{bone \"hall\"}"); },
     {"house: volume bone 1"}},
    {"ZoneCorner", kHouse, [](std::string& f) { AddTo(f, "{vertex", 0.003); }, {"house: zone position 1"}},
    {"ZoneTurned", kHouse, [](std::string& f) { AddTo(f, "{axis", 0.01); }, {"house: zone axis 1"}},
    {"ZoneLoose",
     kHouse,
     [](std::string& f) { AddTo(f, "{extent", 0.01, f.find("\"yard\"")); },
     {"house: zone size 1"}},
    {"ZoneAxis",
     kHouse,
     [](std::string& f) { SetTwo(f, "{axis", "1 0", f.find("\"yard\"")); },
     {"house: zone size 1", "house: zone axis 1"}},
    {"ZoneRadius",
     kHouse,
     [](std::string& f) { AddTo(f, "{radius", 0.003, f.find("{circle2")); },
     {"house: zone size 1"}},
    {"ZoneKind",
     kHouse,
     [](std::string& f) { Replace(f, "{area \"yard\"", "{obstacle \"yard\""); },
     {"house: zone kind 1"}},
    {"ZoneTag", kHouse, [](std::string& f) { Replace(f, "{move}", ""); }, {"house: zone property 1"}},
    {"SupportRenamed",
     kHouse,
     [](std::string& f) { f[f.find("\"wall\"", f.find("SupportPoints")) + 1] = 'h'; },
     {"house: missing support points 1", "house: foreign support points 1"}},
    {"SupportMoved", kHouse, [](std::string& f) { AddTo(f, "{point", 1); }, {"house: support point 1"}},
    {"CameraMoved", kHouse, [](std::string& f) { AddTo(f, "{origin", 0.003); }, {"house: camera position 1"}},
    {"CameraTurned", kHouse, [](std::string& f) { AddTo(f, "{horizon", 1); }, {"house: camera angle 1"}},
    {"LightTurned",
     kHouse,
     [](std::string& f) { AddTo(f, "{direction", 0.01); },
     {"house: light direction 1"}},
    {"LightColour", kHouse, [](std::string& f) { AddTo(f, "{diffuse", 2); }, {"house: light colour 1"}},
    {"AmbientLost",
     kHouse,
     [](std::string& f) { Replace(f, "{ambient", "{was"); },
     {"house: light colour 1"}},
    {"BoneProperty",
     kHouse,
     [](std::string& f) { Replace(f, "speed=1.5", "speed=2.5"); },
     {"house: bone property 2"}},
    {"JointLost",
     kHouse,
     [](std::string& f) { Replace(f, "bone socket", "bone"); },
     {"house: bone property 1"}},
    {"JointLimit",
     kHouse,
     [](std::string& f) { Replace(f, "limits 1.5", "limits 2.5"); },
     {"house: bone property 2"}},
    {"ClipSpeed",
     kHouseEntity,
     [](std::string& f) { Replace(f, "{speed 0.5}", ""); },
     {"house: entity property 1"}},
    {"VolumeProperty",
     kHouseEntity,
     [](std::string& f) { Replace(f, "{bullet 2}", ""); },
     {"house: volume property 1"}},
    {"EntityMark",
     kHouseEntity,
     [](std::string& f) { Replace(f, "\"mast\"", "\"mist\""); },
     {"house: entity property 2"}},
    {"DefinitionOfOthers",
     kHouseEntity,
     [](std::string& f) { Replace(f, "{entity", "{entity {gun 1}"); },
     {}},
};

INSTANTIATE_TEST_SUITE_P(Verify, PlantedFile, testing::ValuesIn(kPlantedFiles),
                         [](const auto& planted) { return planted.param.name; });

// Catches triangles left out by a rule that are told as faults, and faults that pass for such triangles.
TEST(Verify, CountsWhatTheRulesLeaveOut) {
    support::eSceneBuilder scene;
    host::Mesh mesh = support::TriangleMesh({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0.0004F, 1, 0}, {5, 5, 0}},
                                            {{0, 1, 2}, {0, 1, 2}, {0, 3, 2}, {1, 4, 2}});
    mesh.faces.back().flags |= host::Face::kHidden;
    support::eNode tank = scene.Node("tank").Property("Model=units/tank");
    tank.Object(standalone::eHelperObject{});
    tank.Child("hull").Property("Poly").Object(standalone::eMeshObject{mesh});
    tank.Child("ghost").Property("Poly").NotRenderable().Object(standalone::eMeshObject{mesh});
    eVerifyRun run(scene.Build());
    run.Do();
    const verify::eModelVerdict model = run.Verify().models.at(0);
    const verify::eMeshVerdict& hull = model.meshes.at(0);
    EXPECT_THAT(run.Findings(), IsEmpty());
    EXPECT_EQ(std::tuple(hull.triangles, hull.found, hull.hidden, hull.repeated, hull.degenerate),
              std::tuple(3, 1, 1, 1, 1));
    EXPECT_THAT(model.lostNodes, ElementsAre(testing::Pair("it is not rendered", 1)));
}

}  // namespace
