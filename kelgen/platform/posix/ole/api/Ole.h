// Ole.h: automation's strings, variants, arrays and dates.
#pragma once

#include <kelgen/platform/posix/ole/api/Apartments.h>
#include <kelgen/platform/posix/ole/api/OleTypes.h>
#include <kelgen/platform/posix/ole/api/SafeArrays.h>
#include <kelgen/platform/posix/ole/api/SystemStrings.h>
#include <kelgen/platform/posix/ole/api/VariantTime.h>
#include <kelgen/platform/posix/ole/api/Variants.h>
