// The records of materials, as the text of the file.
#include "material/write_materials.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "base/ansi.h"
#include "material/run_materials.h"
#include "run/resource_sets.h"
#include "support/export_run.h"
#include "support/scene_builder.h"

namespace {

using namespace standalone;
using support::eExportRun;
using support::eNode;
using support::eSceneBuilder;
using testing::ElementsAre;

// A triangle with the material; none with -1.
void AddTriangle(eNode parent, const std::string& name, int material) {
    eNode node = parent.Child(name).Property("Poly").Object(
        eMeshObject{support::TriangleMesh({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 2}})});
    if (material >= 0) {
        node.Material(material);
    }
}

// Materials of a scene whose maps show files that do not exist: their names come out all the same.
class eMaterialMaker {
public:
    explicit eMaterialMaker(eSceneBuilder& builder) : scene(builder) {}

    int File(const char* title) { return scene.Map(eBitmapMap{.file = std::string(title) + ".png"}); }
    int Mix() { return Mix(File("first")); }
    int Mix(int first) { return scene.Map(eMixMap{.maps = {first, File("second"), File("third")}}); }
    int Product() { return scene.Map(eRgbMultiplyMap{.maps = {File("first"), File("second")}}); }

    static eStandardMaterial Standard(int diffuse) {
        eStandardMaterial material;
        material.maps[host::kDiffuseMap].map = diffuse;
        return material;
    }
    eStandardMaterial Plain() { return Standard(File("wall")); }
    eStandardMaterial Bumped(eStandardMaterial material, float amount = 0.5F) {
        material.maps[host::kBumpMap] = {.map = File("dents"), .amount = amount};
        return material;
    }
    eStandardMaterial Shiny(eStandardMaterial material) {
        material.maps[host::kSpecularLevelMap] = {.map = File("gloss"), .amount = 0.25F};
        material.specular = {2, 0.5F, 0.25F};
        material.shininess = 0.999F;
        return material;
    }
    // Wrapped in a Sorrel material.
    eSorrelMaterial In(eSorrelMaterial sorrel, eStandardMaterial inner) {
        sorrel.material = scene.Material("inside", inner);
        return sorrel;
    }
    eTwoLayerMaterial Layers() {
        return {{scene.Material("lower", Standard(File("first"))),
                 scene.Material("upper", Standard(File("second")))}};
    }

private:
    eSceneBuilder& scene;
};

struct eMaterialCase {
    std::function<eMaterialKind(eMaterialMaker&)> make;
    std::string record;  // type and keys
};

using eMaker = eMaterialMaker;

eStandardMaterial Clear(eStandardMaterial material) {
    material.opacity = 0.5F;
    return material;
}

eStandardMaterial WithBumpOff(eStandardMaterial material) {
    material.maps[host::kBumpMap].enabled = false;
    return material;
}

// The first and second layers, then slots behind the second layer's that take its place; last the kinds of
// envmap.
const std::vector<eMaterialCase> kMaterials = {
    {[](eMaker& m) { return m.Plain(); }, R"(simple {diffuse "wall"} {blend none})"},
    {[](eMaker& m) { return m.Bumped(m.Plain(), 0); }, R"(simple {diffuse "wall"} {blend none})"},
    {[](eMaker& m) { return WithBumpOff(m.Bumped(Clear(m.Plain()))); },
     R"(simple {diffuse "wall"} {blend blend})"},
    {[](eMaker& m) {
         return eOtherMaterial{.classId = {77, 0}, .maps = m.Bumped(m.Plain()).maps};
     },
     R"(simple {diffuse "wall"} {blend none})"},
    {[](eMaker&) { return eSorrelMaterial{}; }, R"(simple {diffuse "tex4_0"} {blend none})"},
    {[](eMaker& m) { return m.Bumped(m.Plain()); }, R"(bump {diffuse "wall"} {bump "dents"} {blend none})"},
    {[](eMaker& m) { return m.Shiny(m.Plain()); },
     R"(bump {diffuse "wall"} {specular "gloss"} {color 0xfeff8040} {blend none})"},
    {[](eMaker& m) { return m.In({.blend = 1}, m.Shiny(m.Bumped(m.Plain()))); },
     R"(bump {diffuse "wall"} {bump "dents"} {specular "gloss"} {color 0xfeff8040} {blend test})"},
    {[](eMaker& m) { return eMaker::Standard(m.Product()); },
     R"(multiply {diffuse "first"} {diffuse1 "second"} {blend none})"},
    {[](eMaker& m) { return m.In({.blend = 4, .modulate2x = 1}, eMaker::Standard(m.Product())); },
     R"(multiply {diffuse "first"} {diffuse1 "second"} {blend sub} {modulate2x})"},
    {[](eMaker& m) { return m.In({.blend = 2, .modulate2x = 1}, eMaker::Standard(m.Mix())); },
     R"(blend {diffuse "first"} {diffuse1 "second"} {blend blend})"},
    {[](eMaker& m) { return m.Layers(); }, R"(blend {diffuse "first"} {diffuse1 "second"} {blend none})"},
    {[](eMaker& m) { return m.Shiny(eMaker::Standard(m.Product())); },
     R"(blend {diffuse "first"} {diffuse1 "gloss"} {blend none})"},
    {[](eMaker& m) { return m.Bumped(eMaker::Standard(m.Mix())); },
     R"(blend {diffuse "first"} {diffuse1 "third"} {blend none})"},
    {[](eMaker& m) {
         return m.In({.blend = 3, .environment = 1, .strength = 1.0F / 3}, m.Shiny(m.Bumped(m.Plain())));
     },
     R"(envmap {diffuse "wall"} {amount 0.333333} {blend add})"},
    {[](eMaker& m) {
         return m.In({.blend = 9, .environment = 1, .strength = 0.25F, .environmentMap = m.File("sky")},
                     m.Plain());
     },
     R"(envmap {diffuse "wall"} {envmap "sky"} {amount 0.25} {blend none})"},
    {[](eMaker& m) { return m.In({.environment = 1, .strength = 0.25F, .mask = m.File("rust")}, m.Plain()); },
     R"(envmap {diffuse "wall"} {mask "rust"} {blend none})"},
    {[](eMaker& m) {
         const int rust = m.File("rust");
         return m.In({.blend = 0, .environment = 1, .mask = rust, .environmentMap = m.File("sky")},
                     Clear(m.Plain()));
     },
     R"(envmap {diffuse "wall"} {envmap "sky"} {mask "rust"} {blend none})"},
    // A product inside a mix.
    {[](eMaker& m) { return eMaker::Standard(m.Mix(m.Product())); },
     R"(blend {diffuse "first"} {diffuse1 "second"} {blend none})"},
};

// A record as the file has it, a key a line.
std::string RecordText(const std::string& name, std::string record) {
    record.insert(record.find(' '), " \"" + name + '"');
    for (std::size_t at = record.find(" {"); at != std::string::npos; at = record.find(" {", at)) {
        record.replace(at, 2, "\n\t{");
    }
    return "{" + record + "\n}\n";
}

// Catches every choice of type, slot, blend and key, numbers of another form, and names that are not sorted
// as numbers or keep their capitals.
TEST(WriteMaterials, EachKindOfMaterialHasItsText) {
    eSceneBuilder scene;
    eMaterialMaker maker(scene);
    eNode root = scene.Node("root").Property("Model=m").Object(eHelperObject{});
    // A face without material has a record too, the first for its empty name.
    std::string expected = RecordText("", R"(simple {diffuse "tex19_0"} {blend none})");
    for (std::size_t i = 0; i < kMaterials.size(); ++i) {
        const std::string number = std::to_string(i);
        AddTriangle(root, "part" + number, scene.Material("Mat " + number, kMaterials[i].make(maker)));
        expected += RecordText("mat_" + number, kMaterials[i].record);
    }
    AddTriangle(root, "bare", -1);
    eExportRun run(scene.Build());
    run.Do();
    EXPECT_EQ(run.Text("m/.material"), expected);
    EXPECT_THAT(run.Messages(), testing::Each(testing::HasSubstr(") нет на диске")));
    EXPECT_THAT(run.Messages(), testing::Contains(testing::HasSubstr("wall.png (материал mat_0, карта )")));
    EXPECT_EQ(run.Read("m/tex19_0.bmp").size(), 54U + 2 * 8U) << "2 by 2 texels of the plain colour";
}

// Catches an empty file.
TEST(WriteMaterials, NoMeshNoFile) {
    eSceneBuilder scene;
    scene.Node("root").Property("Model=m").Object(eHelperObject{});
    eExportRun run(scene.Build());
    run.Do();
    EXPECT_TRUE(run.Has("m/m.mdl"));
    EXPECT_FALSE(run.Has("m/.material"));
}

TEST(WriteMaterials, TellsEqualNamesOfDifferentMaterials) {
    eSceneBuilder scene;
    eNode root = scene.Node("root").Property("Model=m").Object(eHelperObject{});
    AddTriangle(root, "a", scene.Material("skin", eStandardMaterial{}));
    AddTriangle(root, "b", scene.Material("SKIN", eStandardMaterial{.opacity = 0.5F}));
    eExportRun run(scene.Build());
    run.Do();
    EXPECT_THAT(run.Messages(), ElementsAre("Ошибка: Повторяющееся имя материала 'skin'!"));
    EXPECT_EQ(run.Text("m/.material"), "{simple \"skin\"\n\t{diffuse \"tex0_0\"}\n\t{blend none}\n}\n");
    EXPECT_TRUE(run.Has("m/tex1_0.bmp"));
}

// A pass over a map of materials as skinned meshes leave it.
class ePass {
public:
    ePass() : host(Scene()) {
        run.host = &host;
        run.resources->commonFolder = eName(folder.Path());
    }
    static eSceneData Scene() {
        eSceneBuilder scene;
        eNode node = scene.Node("arm");
        for (const char* name : {"a", "b", "c"}) {
            node.Child(name).Material(scene.Material(name, eStandardMaterial{}));
        }
        return scene.Build();
    }
    void Use(const char* material, int group) {
        host::Mtl* const used = host.GetINodeByName(material)->GetMtl();
        run.materials->materialMap[{used, group}] = {.node = host.GetINodeByName("arm")};
    }
    std::vector<std::string> Records(bool useCommon) {
        WriteMaterials(run, useCommon);
        std::vector<std::string> names;
        for (const eExportMaterial& record :
             (useCommon ? run.resources->commonResources : run.resources->modelResources).materials) {
            names.push_back(record.name);
        }
        return names;
    }

    support::eTempFolder folder;
    support::eMessageCollector messages;
    StandaloneHost host;
    Export run;
};

// Catches records of later palettes, one loss told twice, and the wrong set.
TEST(WriteMaterials, OnlyTheFirstPaletteHasRecords) {
    ePass pass;
    pass.Use("a", 0);
    pass.Use("a", 2);
    pass.Use("b", 1);
    pass.Use("b", 2);
    EXPECT_THAT(pass.Records(true), ElementsAre("a"));
    EXPECT_THAT(pass.run.resources->modelResources.materials, ElementsAre());
    EXPECT_THAT(
        pass.messages.Lines(),
        ElementsAre("Предупреждение: Материал 'b' мэша 'arm' не записан: он используется только в "
                    "дополнительных палитрах костей.\nНеобходимо упростить скиннинг или разделить мэш."));
}

// Catches a cancel that is not asked for, or takes back what was done.
TEST(WriteMaterials, ACancelLeavesWhatWasDone) {
    ePass pass;
    for (const char* name : {"a", "b", "c"}) {
        pass.Use(name, 0);
    }
    int polls = 0;
    pass.host.SetCancelSource([&polls] { return ++polls == 2; });
    EXPECT_THAT(pass.Records(false), ElementsAre("a", "b"));
}

}  // namespace
