// ApplicationOperations.h: how many frames, and which items.
#pragma once

#include "Bench.h"

namespace bench {

constexpr int frameCount = 100;
constexpr int listItems = 10000;
constexpr int comboItems = 1000;

inline std::vector<std::string> itemTexts(int count)
{
    std::vector<std::string> texts;
    for (int i = 0; i < count; ++i)
        texts.push_back("item number " + std::to_string(i));
    return texts;
}

}  // namespace bench
