// Rows.h: tables of cases, and names for the rows of parameterised tests.
#pragma once

#include <gtest/gtest.h>

#include <tuple>
#include <vector>

namespace kelgen::test {

/// Names each row by its member `name`: INSTANTIATE_TEST_SUITE_P(, Suite, testing::Values(...), RowName).
struct RowNamer
{
    template <class Info>
    std::string operator()(const Info& row) const
    {
        return row.param.name;
    }
};
inline constexpr RowNamer RowName{};

/// Cases to walk: for (const auto& [name, text, expected] : Table<const char*, const char*, int>{{"empty", "", 0}, ...}).
template <class... Columns>
using Table = std::vector<std::tuple<Columns...>>;

}  // namespace kelgen::test
