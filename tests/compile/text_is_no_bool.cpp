// text_is_no_bool.cpp: a text as a result of type bool.
// says: deleted
#include <kelgen/text/WStr.h>

bool Check(const CWStr& text)
{
    return text;
}
