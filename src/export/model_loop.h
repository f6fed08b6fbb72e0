#pragma once

class Export;

// Exports the models one by one until the list is done or the user cancels. A model whose bones are at fault
// is left out; its earlier files stay.
void ExportModels(Export& run);
