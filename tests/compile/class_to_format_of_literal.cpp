// class_to_format_of_literal.cpp: an object as an argument of a format that is a literal.
// says: deleted
#include <kelgen/text/WStr.h>

void Check(CWStr& text, const CWStr& name)
{
    text.Format(u"%s", name);
}
