#pragma once

class Export;

namespace host {
class INode;
}  // namespace host

// Samples every animation of the table that touches the node into the frame table, with key reduction, and
// reports it on animWriter. `target` is the node whose merged mesh the node feeds, or null; a node whose bone
// has no number is not sampled.
void SampleNode(Export& run, host::INode& node, host::INode* target);
