// std_string_as_wide.cpp: a std::string where 16-bit text is wanted.
// says: CWStr holds 16-bit text
#include <kelgen/text/WStr.h>

#include <string>

CWStr Check(const std::string& narrow)
{
    return CWStr(narrow);
}
