#pragma once

#include <string>

#include "cli/terminal/terminal_language.h"
#include "mesh/strips/mesh_order.h"
#include "messages/utf8_words.h"
#include "platform/file_events.h"

namespace cli {

// Lines on standard error, as the messages of a run look; text in UTF-8, in the terminal's language behind
// the word that scripts look for.
void TellError(const eBilingual& text);
void TellWarning(const eBilingual& text);

template <class... Values>
void TellError(ePhrase id, const Values&... values) {
    TellError(Utf8Words(id, values...));
}

// A line on standard output in the terminal's language, at once.
void Print(const eBilingual& line);

// A line on standard output for a file of the run.
void TellFile(platform::eFileAction action, const std::string& path);

// A line on standard output for what the order for the vertex cache has done for a mesh.
void TellMeshOrder(const eMeshOrder& order);

// The word of a report for what happened to a file.
const char* ActionWord(platform::eFileAction action);

}  // namespace cli
