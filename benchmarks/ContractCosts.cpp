// ContractCosts.cpp: where a promised behaviour costs time: the pivot of a sort, the room that a format reserves.
#include "Bench.h"

#include <kelgen/text/WStr.h>
#include <kelgen/text/WStrArray.h>

#include <algorithm>
#include <cwchar>

using namespace bench;

namespace {

constexpr int kStrings = 2000;
constexpr int kLiterals = 1000;

std::vector<std::u16string> SortedTexts()
{
    std::vector<std::u16string> texts;
    for (int i = 0; i < kStrings; ++i) {
        const std::string digits = std::to_string(1000000 + i);
        texts.emplace_back(digits.begin(), digits.end());
    }
    return texts;
}

void SortSorted(State& st)
{
    CWStrArray sorted;
    for (const std::u16string& text : SortedTexts())
        sorted.Add(CWStr(reinterpret_cast<const unsigned short*>(text.c_str())));
    for (auto _ : st) {
        sorted.Sort(
            [](const unsigned short* left, const unsigned short* right) { return wcscmp(kelgen::AsWide(left), kelgen::AsWide(right)); });
        DoNotOptimize(sorted);
    }
}

void SortSortedStd(State& st)
{
    std::vector<std::u16string> sorted = SortedTexts();
    for (auto _ : st) {
        std::sort(sorted.begin(), sorted.end());
        DoNotOptimize(sorted);
    }
}

void FormatLiterals(State& st)
{
    const std::u16string format = std::u16string(kLiterals, u'x') + u"%d";
    for (auto _ : st) {
        CWStr text;
        text.Format(reinterpret_cast<const unsigned short*>(format.c_str()), 5);
        DoNotOptimize(text);
    }
}

void FormatLiteralsSwprintf(State& st)
{
    const std::wstring format = std::wstring(kLiterals, L'x') + L"%d";
    for (auto _ : st) {
        wchar_t buffer[2 * kLiterals];
        std::wstring text(buffer, std::swprintf(buffer, 2 * kLiterals, format.c_str(), 5));
        DoNotOptimize(text);
    }
}

COUNTED(SortSorted)->Name("StringList/SortSorted2000/kelgen");
COUNTED(SortSortedStd)->Name("StringList/SortSorted2000/u16string");
COUNTED(FormatLiterals)->Name("Format/Literals1000/kelgen");
COUNTED(FormatLiteralsSwprintf)->Name("Format/Literals1000/swprintf");

}  // namespace
