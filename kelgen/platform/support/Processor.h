// Processor.h: all that depends on the processor, in one form for each and one in plain C++ for the others.
//
// A form gives, in kelgen::processor:
//   UnitVector            eight 16-bit values; ByteVector sixteen 8-bit ones
//   WideUnitVector        twice as many, when HasWideVectors(); so WideByteVector
//   Load..., Store...     from and to any address
//   FillUnits, FillBytes  one value in every lane
//   EqualUnits, ...       all bits of a lane where the condition holds, else none
//   LaneMask              two bits for each unit, set where its lane is; the first unit has the lowest
//   Narrow, Widen...      between units below 0x100 and bytes
//   Block, BlockPair      128 bits, or two times 128, for carry-less multiplication, when HasMultiplication()
//   BlockQuad             four times 128, when HasQuadMultiplication()
//   Pause                 tells the processor that this thread is waiting actively
// Functions whose names are overloaded for the wide types may be called from functions marked KELGEN_WIDE_VECTORS only, those on
// blocks from KELGEN_MULTIPLIES, those on pairs of blocks from KELGEN_MULTIPLIES_PAIRS, those on four from KELGEN_MULTIPLIES_QUADS.
// Identity.h says what the processor is.
#pragma once

#include <kelgen/platform/support/processor/Identity.h>

// A helper of these must not remain a function of its own: that would be checked by sanitizers where its caller is not.
#define KELGEN_IN_CALLER inline __attribute__((always_inline))

#if defined(__x86_64__) && !defined(KELGEN_VECTOR_PLAIN)
#include <kelgen/platform/support/processor/X86.h>
#elif defined(__aarch64__) && !defined(KELGEN_VECTOR_PLAIN)
#include <kelgen/platform/support/processor/Aarch64.h>
#else
#include <kelgen/platform/support/processor/Plain.h>
#endif
