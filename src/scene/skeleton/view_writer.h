#pragma once

class Export;
struct eBoneStep;

// Writes the view of a bone or of one of its detail levels on mdlWriter: which mesh it shows, its level and
// how it is drawn. A mesh of another node is remembered, to be told if nobody writes it.
void WriteView(Export& run, const eBoneStep& step);
