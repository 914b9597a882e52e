// Shared test support: diagnostic assertions are captured, and any that a test
// does not claim fails that test.
#pragma once
#include <chrono>
#include <cstddef>
#include <gtest/gtest.h>
#include <thread>

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

/// Polls `done` every 10 ms for about five seconds; whether it came true, so a
/// stuck wait fails, never hangs.
template <class F>
bool WaitFor(F done)
{
    for (int i = 0; i < 500 && !done(); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    return done();
}

} // namespace zxtest
