// narrow_view_compared.cpp: 16-bit text compared with a narrow view.
// says: CWStr holds 16-bit text
#include <kelgen/text/WStr.h>

#include <string_view>

bool Check(const CWStr& text, std::string_view narrow)
{
    return text == narrow;
}
