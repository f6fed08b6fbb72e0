// What a run tells over the host's main window.
#pragma once

#include <utility>

#include "host/node_path.h"
#include "messages/tell.h"
#include "run/export.h"

template <class... Values>
void Tell(Export& run, eMessageId id, eMessagePlace place, const Values&... values) {
    Tell(run.host->GetMAXHWnd(), MakeMessage(id, std::move(place), values...));
}

// The common case: the place is a node, whose name is the text's only value.
inline void TellOfNode(Export& run, eMessageId id, const host::INode& node) {
    Tell(run, id, {.node = host::PathOf(node)}, node.GetName());
}
