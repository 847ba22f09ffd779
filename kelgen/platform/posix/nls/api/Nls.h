// Nls.h: code pages, locale, and the runtime's text comparison, case and multibyte rules.
#pragma once

#include <kelgen/platform/posix/nls/api/CodePages.h>
#include <kelgen/platform/posix/nls/api/LetterCase.h>
#include <kelgen/platform/posix/nls/api/Locale.h>
#include <kelgen/platform/posix/nls/api/MessageFormat.h>
#include <kelgen/platform/posix/nls/api/MultibyteRuntime.h>
#include <kelgen/platform/posix/nls/api/NarrowRuntime.h>
#include <kelgen/platform/posix/nls/api/PlainText.h>
#include <kelgen/platform/posix/nls/api/WideNumbers.h>
#include <kelgen/platform/posix/nls/api/WidePrintf.h>
#include <kelgen/platform/posix/nls/api/WideRuntime.h>
