// std_string_sought.cpp: a std::string sought in 16-bit text.
// says: CWStr holds 16-bit text
#include <kelgen/text/WStr.h>

#include <string>

int Check(const CWStr& text, const std::string& narrow)
{
    return text.Find(narrow);
}
