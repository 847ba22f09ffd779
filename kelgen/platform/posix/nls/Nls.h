// Nls.h: code pages, locale, and the runtime's text comparison, case and multibyte rules.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/Types.h>
