// wide_text_set.cpp: 16-bit text set in a property set.
// says: deleted
#include <kelgen/property/PropertySet.h>
#include <kelgen/text/WStr.h>

void Check(gen::CPropertySet& set)
{
    set.Set("title", u"text"_w);
}
