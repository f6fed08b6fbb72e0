#pragma once

// What the game takes for the same pose, and from which visibility on a node is shown.
inline constexpr float kPositionTolerance = 0.001F;    // metres, per component
inline constexpr float kRotationTolerance = 0.00001F;  // per component of the quaternion
inline constexpr float kVisible = 0.5F;
