#include "written/played_clip.h"

namespace written {

host::DMatrix3 MatrixOf(const eBonePose& pose) {
    host::DMatrix3 matrix = Exact(MatrixFromQuat(pose.rotation));
    for (double& component : matrix.rows[2]) {
        component = pose.mirrored ? -component : component;
    }
    matrix.rows[3] = Exact(pose.position);
    return matrix;
}

}  // namespace written
