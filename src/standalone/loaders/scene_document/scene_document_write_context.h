#pragma once

#include <string>
#include <vector>

#include "standalone/load_message.h"
#include "standalone/loaders/json/json_writer.h"
#include "standalone/scene_data.h"

namespace standalone {

// What the writers of a document's sections share.
struct eDocumentOutput {
    const eSceneData& scene;
    eJsonWriter json{};
    std::vector<eLoadMessage> warnings{};

    // By index. A name or id refers to just this record.
    std::vector<std::string> nodeNames{};
    std::vector<std::string> materialIds{};
    std::vector<std::string> objectIds{};  // empty for an object that stands at its node
    // Put in front of relative bitmap files.
    std::string bitmapFolder{};
};

// Settles names and ids.
void SettleNames(eDocumentOutput& output);

void WriteNodeReferences(eDocumentOutput& output, const std::vector<int>& nodes);

}  // namespace standalone
