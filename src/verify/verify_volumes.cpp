#include "verify/verify_volumes.h"

#include <algorithm>
#include <cmath>

#include "inspect/placement.h"
#include "io/clean_name.h"
#include "scene/triangle_mesh.h"
#include "verify/bone_place.h"
#include "verify/written_blocks.h"
#include "volume/polyhedron_image.h"

namespace verify {

namespace {

using inspect::eSdlBlock;

// First words of the class ids of objects that are told by their sizes.
enum eVolumeClass : std::uint32_t { kBox = 0x10, kSphere = 0x11, kCylinder = 0x12 };

const char* ShapeWord(std::uint32_t objectClass) {
    switch (objectClass) {
        case kBox:
            return "box";
        case kSphere:
            return "sphere";
        case kCylinder:
            return "cylinder";
        default:
            return "polyhedron";
    }
}

host::Box3 SolidBounds(const host::Mesh& mesh) {
    const host::Box3 bounds = host::BoundsOf(mesh);
    return bounds.IsEmpty() ? host::Box3{{0, 0, 0}, {0, 0, 0}} : bounds;
}

class eVolumeComparison {
public:
    eVolumeComparison(const eVerifiedScene& scene, host::INode& node, const eTolerances& tolerances,
                      eFindings& findings)
        : scene_(scene),
          node_(node),
          name_(CleanNodeName(node.GetName(), true)),
          bounds_(tolerances),
          findings_(findings) {}

    void Compare(const eSdlBlock& written) {
        const host::Object* const object = node_.EvalWorldState(scene_.StaticTime()).obj;
        const std::uint32_t objectClass = object != nullptr ? object->ClassID().a : 0;
        const eTriangleMesh triangles(node_, scene_.StaticTime());
        if (!triangles.IsValid()) {
            return;  // it gets an empty block, and the export tells it
        }
        const char* const shape = ShapeWord(objectClass);
        const eSdlBlock* const solid = written.Find(shape);
        if (solid == nullptr) {
            return findings_.Add("volume shape", 0, name_ + " is no " + shape);
        }
        if (std::string(shape) == "polyhedron") {
            ComparePolyhedron(*solid, triangles.Mesh());
        } else {
            CompareSizes(NumbersIn(written, shape), objectClass, SolidBounds(triangles.Mesh()).Width());
        }
        CompareBone(written);
        ComparePlace(PlaceOf(objectClass, triangles.Mesh()), inspect::PlacementOf(written));
    }

private:
    // Sizes are those of the object alone: a scale of the node stands in the place of the volume.
    void CompareSizes(const std::vector<double>& found, std::uint32_t objectClass, const host::Point3& size) {
        const double metres = scene_.MetresPerUnit();
        const std::vector<double> wanted =
            objectClass == kBox      ? std::vector{size.x * metres, size.y * metres, size.z * metres}
            : objectClass == kSphere ? std::vector{size.x * metres / 2}
                                     : std::vector{size.x * metres / 2, size.z * metres};
        if (found.size() != wanted.size()) {
            return findings_.Add("volume shape", 0, name_);
        }
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            TellIfBeyond("volume size", std::fabs(wanted[i] - found[i]), wanted[i]);
        }
    }

    void ComparePolyhedron(const eSdlBlock& written, const host::Mesh& mesh) {
        std::string problem;
        const std::vector<std::string> values = written.Values();
        const auto found = ReadPolyhedron(values.empty() ? "" : values.front(), problem);
        if (!found || found->vertices.size() != mesh.verts.size() ||
            found->sides.size() != mesh.faces.size() || found->indices.size() != 3 * mesh.faces.size()) {
            return findings_.Add("volume shape", 0, name_ + " " + problem);
        }
        const host::DMatrix3 toNode =
            Product(Exact(node_.GetObjTMAfterWSM(scene_.StaticTime())), FromWorld(node_));
        for (std::size_t i = 0; i < mesh.verts.size(); ++i) {
            eVector wanted = Through(Exact(mesh.verts[i]), toNode);
            for (double& coordinate : wanted) {
                coordinate *= scene_.MetresPerUnit();
            }
            TellIfBeyond("volume vertices", LargestDifference(wanted, Exact(found->vertices[i])),
                         Length(wanted));
        }
        CompareFaces(*found, mesh);
    }

    // The corners of a face stand in reverse order.
    void CompareFaces(const ePolyhedron& found, const host::Mesh& mesh) {
        for (std::size_t face = 0; face < mesh.faces.size(); ++face) {
            bool isSame = found.sides[face] == static_cast<std::uint8_t>(mesh.faces[face].getMatID() + 1);
            for (std::size_t c = 0; c < 3; ++c) {
                isSame = isSame && found.indices[3 * face + c] == mesh.faces[face].v[2 - c];
            }
            if (!isSame) {
                findings_.Add("volume faces", 0, name_ + ", face " + std::to_string(face));
            }
        }
    }

    void CompareBone(const eSdlBlock& written) {
        const std::string wanted = CleanNodeName(BoneAbove(node_)->GetName(), true);
        const std::string found = written.ValueOf("bone");
        if (wanted != found) {
            findings_.Add("volume bone", 0, name_ + ": " + found + " instead of " + wanted);
        }
    }

    // From the world into a node without its scale.
    host::DMatrix3 FromWorld(const host::INode& node) const {
        return host::ExactInverse(NoScale(node.GetNodeTM(scene_.StaticTime())));
    }

    // Boxes and cylinders stand at the middle of their height, spheres at their pivot; the vertices of a
    // polyhedron have the way from the object to the node in them.
    host::DMatrix3 PlaceOf(std::uint32_t objectClass, const host::Mesh& mesh) const {
        const host::TimeValue time = scene_.StaticTime();
        const bool isPrimitive = objectClass == kBox || objectClass == kSphere || objectClass == kCylinder;
        host::DMatrix3 place =
            Product(Exact(isPrimitive ? node_.GetObjTMAfterWSM(time) : NoScale(node_.GetNodeTM(time))),
                    FromWorld(*BoneAbove(node_)));
        if (isPrimitive && objectClass != kSphere) {
            const host::Box3 bounds = SolidBounds(mesh);
            place.rows[3] = Through({0, 0, (double{bounds.pmin.z} + bounds.pmax.z) / 2}, place);
        }
        for (double& coordinate : place.rows[3]) {
            coordinate *= scene_.MetresPerUnit();
        }
        return place;
    }

    void ComparePlace(const host::DMatrix3& wanted, const host::DMatrix3& found) {
        TellIfBeyond("volume position", LargestDifference(wanted.rows[3], found.rows[3]),
                     Length(wanted.rows[3]));
        if (IsRotation(wanted) && IsMirrored(wanted) == IsMirrored(found)) {
            const double degrees = AngleBetween(wanted, found);
            if (degrees > bounds_.degrees) {
                findings_.Add("volume rotation", degrees, name_);
            }
            return;
        }
        for (std::size_t row = 0; row < 3; ++row) {
            const double difference = LargestDifference(wanted.rows[row], found.rows[row]);
            TellIfBeyond("volume scale", difference, Length(wanted.rows[row]));
        }
    }

    void TellIfBeyond(const char* kind, double difference, double of) {
        if (difference > bounds_.metres + TextSlack(of)) {
            findings_.Add(kind, difference, name_);
        }
    }

    const eVerifiedScene& scene_;
    host::INode& node_;
    std::string name_;
    eTolerances bounds_;
    eFindings& findings_;
};

}  // namespace

void CompareVolumes(const eVerifiedScene& scene, const std::vector<host::INode*>& nodes,
                    const eWrittenModel& written, const eTolerances& tolerances, eFindings& findings) {
    eWrittenBlocks blocks(written.text.Find("volumes"));
    for (host::INode* node : nodes) {
        const std::string name = CleanNodeName(node->GetName(), true);
        if (const eSdlBlock* block = blocks.Take(name, "volume", findings)) {
            eVolumeComparison(scene, *node, tolerances, findings).Compare(*block);
        }
    }
    blocks.TellRest("volume", findings);
}

}  // namespace verify
