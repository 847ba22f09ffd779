// ResourceLibrary.cpp: the code of a library with resources.
#include "support/framework/ResourceLibrary.h"

#include <kelgen/framework/program/ModuleState.h>

AFX_MODULE_STATE* KELGEN_RESOURCE_LIBRARY()
{
    return AfxGetStaticModuleState();
}
