// std_string_appended.cpp: a std::string appended to 16-bit text.
// says: CWStr holds 16-bit text
#include <kelgen/text/WStr.h>

#include <string>

void Check(CWStr& text, const std::string& narrow)
{
    text += narrow;
}
