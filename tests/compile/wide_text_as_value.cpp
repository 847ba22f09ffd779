// wide_text_as_value.cpp: 16-bit text as a property value.
// says: deleted
#include <kelgen/property/PropertySet.h>
#include <kelgen/text/WStr.h>

const gen::CPropertyValue value(u"text"_w);
