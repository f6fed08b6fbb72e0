#include "material/queries/sorrel.h"

eSorrelParameters ReadSorrelParameters(const host::Mtl* material) {
    eSorrelParameters parameters;
    if (material == nullptr || material->ClassID() != host::kSorrelClass) {
        return parameters;
    }
    if (const host::IParamBlock* block = material->GetParamBlock(0)) {
        block->GetValue(1, 0, parameters.blend);
        block->GetValue(2, 0, parameters.modulate2x);
        block->GetValue(3, 0, parameters.environment);
        block->GetValue(4, 0, parameters.strength);
        block->GetValue(5, 0, parameters.mask);
        block->GetValue(6, 0, parameters.environmentMap);
    }
    return parameters;
}
