// says: deleted
#include <kelgen/text/WStr.h>

void Check(CWStr& text, const CWStr& name)
{
    text.Format(u"%s"_w, name);
}
