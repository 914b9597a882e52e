// Shared test support: diagnostic assertions are captured, and any that a test
// does not claim fails that test.
#pragma once
#include <string>
#include <vector>
#include <gtest/gtest.h>

namespace zxtest {

struct DiagRecord {
    std::wstring condition;
    std::wstring source;
    int line;
};

/// Claims the diagnostic assertions raised while it lives.
class DiagCapture {
public:
    DiagCapture();
    ~DiagCapture();
    const std::vector<DiagRecord>& Records() const;
    /// Number of records whose condition equals `condition`.
    int Count(const wchar_t* condition) const;
    bool Has(const wchar_t* condition, const wchar_t* source) const;
    size_t Size() const { return Records().size(); }
    void Clear();
};

std::string Narrow(const std::wstring& w);

} // namespace zxtest
