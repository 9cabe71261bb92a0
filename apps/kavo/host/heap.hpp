// The heap that kavo puts behind the library.
#pragma once

namespace kavo_app {

/// Takes back every block that the library has not given back, which it does not in two rare cases:
/// a process that answers requests without end must not grow with them. Between calls only.
void ReclaimHeap();

}  // namespace kavo_app
