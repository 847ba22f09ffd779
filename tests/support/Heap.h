// Heap.h: whether the program's heap is whole.
#pragma once

namespace kelgen::test {

/// Walks the heaps that programs and their runtime allocate from; false when one is damaged. On Linux always true: there the sanitizer
/// watches.
bool IsHeapSound();

}  // namespace kelgen::test
