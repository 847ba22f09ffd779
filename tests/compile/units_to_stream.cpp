// units_to_stream.cpp: 16-bit units on a stream.
// says: deleted
#include <kelgen/text/WStr.h>

#include <ostream>

void Check(std::ostream& stream)
{
    stream << u"text"_w;
}
