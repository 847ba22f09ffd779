// wide_text_assigned.cpp: 16-bit text assigned to a property value.
// says: deleted
#include <kelgen/property/PropertyValue.h>
#include <kelgen/text/WStr.h>

void Check(gen::CPropertyValue& value, const CWStr& text)
{
    value = text;
}
