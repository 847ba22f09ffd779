// Rows.h: names for the rows of parameterised tests.
#pragma once

#include <gtest/gtest.h>

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

}  // namespace kelgen::test
