// says: CWStr holds 16-bit text
#include <kelgen/text/WStr.h>

#include <string>

CWStr Check(const std::string& narrow)
{
    return CWStr(narrow);
}
