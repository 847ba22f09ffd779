// class_to_wide_format.cpp: an object as an argument of a wide format.
// says: deleted
#include <kelgen/text/WStr.h>

void Check(CWStr& text, const CWStr& name)
{
    text.Format(u"%s"_w, name);
}
