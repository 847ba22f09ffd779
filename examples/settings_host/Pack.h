// Pack.h: the settings as the bytes of an archive.
#pragma once

#include <kelgen/property/PropertySet.h>

/// Writes names and values into an archive in memory, prints a line on it with the checksum of its bytes, and reads them back.
void PackAndReport(gen::CPropertySet& settings);
