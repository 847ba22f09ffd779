// Nls.h: code pages, locale, and the runtime's text comparison, case and multibyte rules.
#pragma once

#include <kelgen/platform/posix/nls/CodePages.h>
#include <kelgen/platform/posix/nls/LetterCase.h>
#include <kelgen/platform/posix/nls/Locale.h>
#include <kelgen/platform/posix/nls/MessageFormat.h>
#include <kelgen/platform/posix/nls/MultibyteRuntime.h>
#include <kelgen/platform/posix/nls/NarrowRuntime.h>
#include <kelgen/platform/posix/nls/PlainText.h>
#include <kelgen/platform/posix/nls/WideNumbers.h>
#include <kelgen/platform/posix/nls/WidePrintf.h>
#include <kelgen/platform/posix/nls/WideRuntime.h>
