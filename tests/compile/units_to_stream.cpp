// says: deleted
#include <kelgen/text/WStr.h>

#include <ostream>

void Check(std::ostream& stream)
{
    stream << u"text"_w;
}
