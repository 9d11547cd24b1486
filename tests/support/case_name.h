// The name of a parameterized case is its row's own name.
#pragma once

#include <gtest/gtest.h>

#include <string>

namespace harness {

struct CaseName {
    template <class Row>
    std::string operator()(const testing::TestParamInfo<Row>& row) const {
        return row.param.name;
    }
};

}  // namespace harness
