// text_is_no_condition.cpp: a text as a condition.
// says: deleted
#include <kelgen/text/WStr.h>

int Check(const CWStr& text)
{
    return text ? 1 : 0;
}
