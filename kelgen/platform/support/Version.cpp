// Version.cpp: the version that the libraries are built as.
#include <kelgen/Version.h>

int kelgen::Version() noexcept
{
    return KELGEN_VERSION;
}
