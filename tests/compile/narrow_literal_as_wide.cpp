// says: CWStr holds 16-bit text
#include <kelgen/text/WStr.h>

const CWStr text("narrow");
