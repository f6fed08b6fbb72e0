// What the stages of a run have decided, noted as they decide it, for whoever asks afterwards why a file or a
// node came out as it did. Export::journal is null in a run that nobody asks about.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/node.h"
#include "host/scene_element.h"
#include "io/name.h"
#include "scene/properties/node_kind.h"

class Export;

// Why a node, and all below it that has no note of its own, is in no file.
enum class eLeftOut {
    No,
    Hidden,
    DetailRoot,    // a root with a level of detail in its name
    NoModel,       // a root that names no model
    ModelRefused,  // a root whose model was left out, which has been told
    LoneDetail,    // a level of detail that no bone calls for
    NoNumber,      // the numbering of the bones has not come to it
    OutOfGroup,    // it hangs inside a group that it is no part of; ends the walk of its model
    NoSource,      // its properties name a node that can't serve; ends the walk of its model
    SwitchedOff,   // a zone whose "Obstacle" is 0
    NameTaken,     // a volume with the name of an earlier one
    NoTriangles,   // a volume whose object gives none
    TooLarge,      // a volume with more vertices than its numbers can tell apart
};

// What became of a node's wish for a mesh.
enum class eMeshWish { None, Granted, NotRenderable, NotSelected, Lines };

struct eSubMeshNote {
    std::string material;  // empty: none
    int triangles = 0;
    std::vector<const host::INode*> palette;  // the bones that a skinned one sees
};

struct eNodeNote {
    const host::INode* model = nullptr;  // the root of the model that it was walked in
    eLeftOut leftOut = eLeftOut::No;
    eNodeKind kind = eNodeKind::Ordinary;
    std::string decidedBy;   // the property that made it so; empty: its object
    bool isZoneToo = false;  // a volume
    bool isBone = false;
    int number = -1;                      // of its bone; of the group's, for a part of one
    const host::INode* parent = nullptr;  // the bone that it hangs from, or the root of the scene
    int level = 0;                        // of detail

    eMeshWish wish = eMeshWish::None;
    const char* wishedBy = nullptr;          // the property that asked
    const host::INode* shownMesh = nullptr;  // of the node whose mesh it shows instead of its own
    const host::INode* fedMesh = nullptr;    // of the node whose mesh its geometry went into
    int faces = 0;                           // that it gave to that mesh
    bool isMeshWritten = false;
    std::string meshName;  // as the files have it
    eName meshFolder;      // whose .mesh holds it
    eName materialFolder;  // whose .material holds its materials
    std::vector<eSubMeshNote> subMeshes;
    std::vector<std::string> animations;  // that sample it
};

// What decided about a file.
enum class eFileRule {
    EveryRun,       // it is written in every run
    FirstRunOnly,   // it was not there, and is never written again
    IsThere,        // it is there, and so is not written
    NoAnimations,   // the model has none, so the list is removed
    TargetMissing,  // a picture: there is no file yet
    TargetEmpty,    // there is a file without content
    SourceNewer,    // the picture is newer than the file
    UpToDate,       // the picture is not newer
    PlainColor,     // the material's colour, without a map; written in every run
    Procedural,     // a map without a file; written in every run
    SourceMissing,  // the picture is not there
    SourceBroken,   // the picture can't be read
};

struct eFileNote {
    eFileRule rule = eFileRule::EveryRun;
    std::vector<const host::INode*> models;  // roots of those that write it
    std::vector<std::string> materials;      // whose texture it is, or whose records it holds
    std::vector<std::string> meshes;         // that it holds
    std::string animation;
    std::string source;  // the picture, as a path of the system
};

// An animation that a model declares, as it came out.
struct eAnimationNote {
    const host::INode* model = nullptr;  // the root that declares it
    std::string name{};
    std::string selectionSet{};  // empty: none limits it
    int firstFrame = 0;          // of the timeline, inclusive
    int lastFrame = 0;
    eName file{};                            // empty: it was not written
    std::vector<std::string> bones{};        // that the file holds
    std::vector<std::string> movingBones{};  // those of them that leave the pose of the first frame
};

struct eRunJournal {
    std::map<const host::INode*, eNodeNote, host::IdentityLess> nodes;
    std::map<eName, eFileNote> files;
    std::vector<eAnimationNote> animations;  // model by model, in the order of their declarations
};

// The note of the node, a new one if there is none; null where nobody asks. So below.
eNodeNote* NoteOf(Export& run, const host::INode& node);

void NoteLeftOut(Export& run, const host::INode& node, eLeftOut why);

// Of a file that several ask for, the first rule stays: the others find what it has made.
eFileNote* NoteFile(Export& run, const eName& path, eFileRule rule);
