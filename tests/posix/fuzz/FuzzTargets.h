// FuzzTargets.h: the fuzz targets that this program was built with.
#pragma once

#include <cstddef>
#include <vector>

struct FuzzTarget
{
    const char* name;
    const char* corpus;
    int (*run)(const unsigned char* data, std::size_t size);
};

extern const std::vector<FuzzTarget> fuzzTargets;
