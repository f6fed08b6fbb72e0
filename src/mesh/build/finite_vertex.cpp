#include "mesh/build/finite_vertex.h"

bool IsFinite(const eExportVertex& v) {
    // Nothing times a number is nothing; times what is none it is none either, and stays so in the sum.
    float sum = 0;
    for (const float value : {v.position.x, v.position.y, v.position.z, v.weights[0], v.weights[1],
                              v.normal.x, v.normal.y, v.normal.z, v.uv0.x, v.uv0.y, v.uv1.x, v.uv1.y,
                              v.tangent.x, v.tangent.y, v.tangent.z, v.tangent.w}) {
        sum += value * 0.0F;
    }
    return sum == 0;
}
