// Shared test support: diagnostic assertions are captured, and any that a test
// does not claim fails that test.
#pragma once
#include <cstddef>
#include <gtest/gtest.h>

namespace zxtest {

/// Claims the diagnostic assertions raised while it lives.
class DiagCapture {
public:
    DiagCapture();
    ~DiagCapture();
    /// Number of records whose condition equals `condition`.
    int Count(const wchar_t* condition) const;
    bool Has(const wchar_t* condition, const wchar_t* source) const;
    size_t Size() const;
};

} // namespace zxtest
