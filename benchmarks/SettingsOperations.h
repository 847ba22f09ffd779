// SettingsOperations.h: the INI file and the look-ups that every reader is timed with.
#pragma once

#include "Bench.h"

#include <fstream>

namespace bench {

// ---- INI: 1000 sections of 10 keys

inline std::string section(int i)
{
    return "Section" + std::to_string(i);
}
inline std::string key(int i)
{
    return "key" + std::to_string(i);
}

// 64 names for one file, taken in turn: QSettings keeps the last 30 files it read, and would not parse again.
inline const std::string& iniFile()
{
    static const std::vector<std::string> names = [] {
        std::vector<std::string> v{scratch("0.ini")};
        std::ofstream f(v[0]);
        for (int s = 0; s < 1000; ++s) {
            f << '[' << section(s) << "]\n";
            for (int k = 0; k < 10; ++k)
                f << key(k) << "=some text " << s * 10 + k << '\n';
        }
        f.close();
        for (int i = 1; i < 64; ++i) {
            v.push_back(scratch(std::to_string(i) + ".ini"));
            std::filesystem::remove(v.back());
            std::filesystem::create_hard_link(v[0], v.back());
        }
        return v;
    }();
    static unsigned turn;
    return names[turn++ % 64];
}

inline std::vector<std::pair<int, int>> thousand()
{
    std::mt19937 rng(7);
    std::vector<std::pair<int, int>> v(1000);
    for (auto& [s, k] : v) {
        s = rng() % 1000;
        k = rng() % 10;
    }
    return v;
}

}  // namespace bench
