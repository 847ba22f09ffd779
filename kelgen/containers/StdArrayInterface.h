// StdArrayInterface.h: the view of an array that sorting, data exchange and other general code work through.
#pragma once

/// An array whose concrete class does not matter: its elements, its size, adding and emptying.
template <class TYPE, class ARG_TYPE = TYPE>
class CStdArrayInterface
{
public:
    virtual ~CStdArrayInterface() = default;

    /// Assigns the element at @p index. Throws: the invalid-argument exception for an index outside [0, size).
    virtual void StdArraySetAt(int index, ARG_TYPE value) = 0;
    /// The number of elements.
    virtual int StdArrayGetSize() = 0;
    /// The element at @p index. Throws: the invalid-argument exception for an index outside [0, size).
    virtual TYPE& StdArrayElementAt(int index) = 0;
    /// Appends an element.
    virtual void StdAdd(ARG_TYPE value) = 0;
    /// Empties the array; its storage is kept for reuse.
    virtual void StdRemoveAll() = 0;
};
