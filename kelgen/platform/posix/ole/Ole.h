// Ole.h: automation's strings, variants, arrays and dates.
#pragma once

#include <kelgen/platform/posix/ole/Apartments.h>
#include <kelgen/platform/posix/ole/OleTypes.h>
#include <kelgen/platform/posix/ole/SafeArrays.h>
#include <kelgen/platform/posix/ole/SystemStrings.h>
#include <kelgen/platform/posix/ole/VariantTime.h>
#include <kelgen/platform/posix/ole/Variants.h>
