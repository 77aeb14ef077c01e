// Where the XML library keeps its trees: in large blocks, each of which is given back when the last tree in
// it is gone.
#pragma once

namespace svg {

// To be called before the process makes its first tree: the library has one allocator for all of them. True.
bool useLargeXmlMemory();
// What this thread has started to fill goes with the last tree in it, and no other tree is put there. Call it before
// a thread ends that made trees.
void releaseXmlMemory();

}  // namespace svg
