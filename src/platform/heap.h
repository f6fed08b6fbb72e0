// The memory that the process works in.
#pragma once

namespace platform {

// Sets the heap up for a process that runs once and ends: memory that has been given back is kept for the
// next mesh instead of being returned to the system page by page and cleared again, and pages are large where
// the system has large ones. For a program alone, never for a module in the process of another. Call it
// first.
void KeepHeap();

}  // namespace platform
