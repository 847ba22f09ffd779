// NullCall.h: members that may be called through a null pointer.
#pragma once

namespace kelgen::test {

/// What @p object says, which may be null. Apart from the test, since the compiler refuses a null that it sees and a sanitizer
/// looks for the type of the object before the call.
template <class Object>
__attribute__((noinline, no_sanitize("undefined"))) bool IsNull(Object* object)
{
    return object->IsThisNull();
}

}  // namespace kelgen::test
