// says: deleted
#include <kelgen/property/PropertySet.h>
#include <kelgen/text/WStr.h>

const gen::CPropertyValue value(u"text"_w);
