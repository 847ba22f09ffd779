// DWordStack.h: CDWordStack, the stack of numbers that the iterative sorts keep their bounds on.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/framework/collections/ArrayTypes.h>

/// A stack of 32-bit numbers; the top is the last element.
class KELGEN_API CDWordStack : public CDWordArray
{
public:
    /// Puts @p value on the stack.
    void Push(DWORD value) { Add(value); }
    /// Removes the last number and returns it. Throws: the invalid-argument exception when empty.
    DWORD Pop();
};
