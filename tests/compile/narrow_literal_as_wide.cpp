// narrow_literal_as_wide.cpp: a narrow literal where 16-bit text is wanted.
// says: CWStr holds 16-bit text
#include <kelgen/text/WStr.h>

const CWStr text("narrow");
