#pragma once

#include <cstdint>
#include <string>

#include "host/values.h"
#include "io/name.h"
#include "scene/properties/node_kind.h"
#include "scene/run_journal.h"

struct eExportResourceSet;

namespace host {
class INode;
}  // namespace host

// How the bone writer is called for a node.
enum eBoneWriteFlags : std::uint32_t {
    DetailEntry = 1,  // the view gets a `lod` entry; a node with a detail level is accepted
    LastDetail = 2,   // the `lod` entry gets the mark `last`
    RootBone = 4,     // this is the model's root
};

// What the bone writer has settled about the node of one call; filled step by step.
struct eBoneStep {
    host::INode& node;
    std::uint32_t flags;

    int index;  // number of the slot in Export::bones; -1 for a node without
    eNodeKind kind;
    int level;              // of detail
    bool isBone;            // written as a bone; else only what is below it, or beside the skeleton
    bool isLoneNode;        // ordinary, but neither a bone nor part of a group
    std::string name;       // cleaned
    std::string userProps;  // the node's text of NormalizeUserProps
    std::string decidedBy;  // the property that made it what it is; empty: its object

    host::INode* meshTarget = nullptr;        // whose mesh the view shows; null: its own
    host::INode* commonNode = nullptr;        // whose merged mesh the node feeds
    eName meshName{};                         // of meshTarget or the node
    const char* wishedBy = nullptr;           // the property by which the node asks for a mesh
    eMeshWish wish = eMeshWish::None;         // for a mesh, its own or another's
    eExportResourceSet* targetSet = nullptr;  // where the mesh of the slot is written; null: not by this call
    host::Matrix3 local{};                    // against the parent bone, scene units
    bool hasDetails = false;                  // the view has levels of detail
};
